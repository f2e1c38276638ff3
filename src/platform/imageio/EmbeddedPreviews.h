#pragma once

#include "platform/foundation/Data.h"
#include "platform/imageio/PixelCoder.h"

#include <optional>
#include <vector>

namespace exifcard {

/// A finished JPEG that a file holds beside its picture: the thumbnail of a JPEG's Exif block, the previews
/// of a raw file.
struct EmbeddedPreview {
    Data jpeg; ///< A slice of the file.
    PixelSize size;
};

/// All of them, the smallest first. Reads headers alone, and those that lie wholly in the file.
std::vector<EmbeddedPreview> embeddedPreviews(const Data& file);

/// Whether a preview shows the whole picture, with at least as many pixels as wanted; the shorter side may
/// lack one.
/// @param stored  The picture's size, turned like the preview. Thumbnails of another shape have black bars.
/// @param wanted  Nothing: any size will do.
bool isSufficient(PixelSize preview, PixelSize stored, std::optional<PixelSize> wanted);

/// The smallest sufficient one; the largest where no size is wanted.
std::optional<EmbeddedPreview> embeddedPreview(
    const Data& file, PixelSize stored, std::optional<PixelSize> wanted);

/// What a JPEG's header tells; nothing for what is none.
std::optional<PixelSize> sizeOfJpeg(const Data& jpeg);

/// The smallest whole pixels that hold a size; nothing for one that no picture has.
std::optional<PixelSize> wholePixels(CGSize size);

} // namespace exifcard

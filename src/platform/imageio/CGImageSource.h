#pragma once

#include "platform/foundation/Data.h"
#include "platform/foundation/Dictionary.h"
#include "platform/foundation/URL.h"
#include "platform/imageio/XmpPacket.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace exifcard {

/// An image file or its bytes, from which properties are read without decoding a pixel.
class CGImageSource;
using CGImageSourcePtr = std::shared_ptr<const CGImageSource>;

/// Never null: any bytes make a source, even none.
CGImageSourcePtr CGImageSourceCreateWithData(const Data& data);
/// Null when the file cannot be opened or is no regular file.
CGImageSourcePtr CGImageSourceCreateWithURL(const URL& url);

/// The number of images: pages of a TIFF, frames of a GIF, 1 for a JPEG or PNG, 0 for what is no image.
std::size_t CGImageSourceGetCount(const CGImageSource& source);
/// The type identifier of the content ("public.jpeg"), whatever the name; empty for what is no image.
const std::string& CGImageSourceGetType(const CGImageSource& source);
/// The bytes that the source was made of.
const Data& CGImageSourceGetData(const CGImageSource& source);

/// The image properties dictionary of one image, made anew at each call: top
/// level entries ("PixelWidth", "Orientation") and sub-dictionaries ("{Exif}",
/// "{TIFF}", "{GPS}", "{IPTC}", "{ExifAux}", …).
/// @return Null for what is no image or is broken beyond reading; one log line tells why.
DictionaryPtr CGImageSourceCopyPropertiesAtIndex(const CGImageSource& source, std::size_t index);

/// What a photo library keeps of an image.
struct LibraryMetadata {
    /// As `CGImageSourceCopyPropertiesAtIndex`, but without makers' notes other than Apple's, and without
    /// those values of the packet that no library keeps. Null as there.
    DictionaryPtr properties;
    std::vector<XmpProperty> packet; ///< Whole, where it tells something that a library keeps; else empty.
};

/// Reads the first image much faster than all of its properties. No call of the platform's.
LibraryMetadata CGImageSourceCopyLibraryMetadata(const CGImageSource& source);

} // namespace exifcard

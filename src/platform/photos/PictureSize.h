#pragma once

#include "platform/photos/PHImageRequestOptions.h"
#include "platform/uivalues/CGGeometry.h"

namespace exifcard {

/// How a picture is to be delivered.
struct WantedPicture {
    CGSize targetSize = {}; ///< Pixels; without area, or negative: as large as it is.
    PHImageContentMode contentMode = PHImageContentMode::AspectFit;
    PHImageRequestOptionsResizeMode resizeMode = PHImageRequestOptionsResizeMode::Fast;
    PHImageRequestOptionsVersion version = PHImageRequestOptionsVersion::Current;
    CGRect crop = {}; ///< In 0 … 1 of the picture; without area: all of it.
    bool operator==(const WantedPicture&) const = default;
};

/// A canvas in pixels and where the whole picture goes on it.
struct PicturePlacement {
    CGSize canvas;
    CGRect picture;
};

/// Where a picture of that size goes: its shape is kept and it is never enlarged.
/// @param natural  Upright pixels.
PicturePlacement placementOf(CGSize natural, const WantedPicture& wanted);

} // namespace exifcard

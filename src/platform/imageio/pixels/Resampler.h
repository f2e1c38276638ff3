#pragma once

#include "platform/imageio/PixelCoder.h"
#include "platform/imageio/pixels/AlignedBytes.h"

#include <array>
#include <cstddef>
#include <optional>

namespace exifcard {

/// A JPEG's own planes: brightness, and two of colour that may be smaller.
struct YuvPlanes {
    PixelSize size;                ///< Of the brightness; whole multiples of the subsampling.
    int horizontalSubsampling = 0; ///< Binary logarithm.
    int verticalSubsampling = 0;   ///< Binary logarithm.
    std::array<AlignedBytes, 3> planes;
    std::array<std::size_t, 3> strides = {};
};

/// Scales the picture and turns it into RGB.
std::optional<Bitmap> resampledRgb(const YuvPlanes& planes, PixelSize size);

/// See `BitmapScaler::resampled`.
std::optional<Bitmap> resampledBitmap(const Bitmap& bitmap, const CGRect& region, PixelSize size);

} // namespace exifcard

#pragma once

#include "platform/imageio/PixelCoder.h"

#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace exifcard {

/// Whether there is a coder for that type, told without loading it.
bool canDecode(std::string_view type);

/// See `PixelCoder` and its kin. Each loads the module that it needs when it is first called; one that is
/// missing is logged once and decodes, scales or encodes nothing. Any thread; they block.
std::optional<Bitmap> decodedBitmap(
    std::span<const std::uint8_t> bytes, std::string_view type, std::optional<PixelSize> wanted);
std::vector<std::uint8_t> encodedBitmap(
    const Bitmap& bitmap, std::string_view type, const EncodingOptions& options);
std::optional<Bitmap> scaledBitmap(const Bitmap& bitmap, const CGRect& region, PixelSize size);
std::optional<Bitmap> transformedBitmap(
    const Bitmap& bitmap, const CGAffineTransform& toCanvas, PixelSize canvas);

} // namespace exifcard

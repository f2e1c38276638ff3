#pragma once

#include "platform/imageio/PixelCoder.h"

namespace exifcard {

/// BMP through FFmpeg: libvips has no reader for it. Writes nothing.
// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): final, and never deleted through its base.
class BmpCoder final : public PixelCoder {
public:
    std::optional<Bitmap> decode(std::span<const std::uint8_t> bytes,
        std::string_view type,
        std::optional<PixelSize> wanted) const override;
    std::vector<std::uint8_t> encode(
        const Bitmap& bitmap, std::string_view type, const EncodingOptions& options) const override;
};

} // namespace exifcard

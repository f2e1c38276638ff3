#pragma once

#include "platform/imageio/PixelCoder.h"

namespace exifcard {

/// PNG, TIFF, WebP, GIF, HEIF and AVIF through libvips, and the JPEGs that
/// `JpegCoder` leaves. Writes PNG. Turns bitmaps by any angle.
// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): final, and never deleted through its base.
class VipsCoder final : public PixelCoder, public BitmapTransformer {
public:
    /// Null when the library does not start.
    static const VipsCoder* start();

    std::optional<Bitmap> decode(std::span<const std::uint8_t> bytes,
        std::string_view type,
        std::optional<PixelSize> wanted) const override;
    std::vector<std::uint8_t> encode(
        const Bitmap& bitmap, std::string_view type, const EncodingOptions& options) const override;
    std::optional<Bitmap> transformed(
        const Bitmap& bitmap, const CGAffineTransform& toCanvas, PixelSize canvas) const override;

private:
    VipsCoder() = default;
};

} // namespace exifcard

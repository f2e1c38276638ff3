#include "platform/imageio/PixelModules.h"

#include "platform/foundation/LoadableModule.h"

#include <algorithm>

namespace exifcard {
namespace {

constexpr std::string_view kJpegType = "public.jpeg";
constexpr std::string_view kBmpType = "com.microsoft.bmp";

constexpr std::string_view kTypes[] = {kJpegType, "public.png", "public.tiff", "com.compuserve.gif",
    "org.webmproject.webp", "public.heic", "public.heif", "public.avif", kBmpType};

const PixelCoder* jpegCoder() {
    static const auto* const coder = moduleService<PixelCoderEntry>("pixels", kPixelCoderEntry);
    return coder;
}

const BitmapScaler* scaler() {
    static const auto* const scaler = moduleService<BitmapScalerEntry>("pixels", kBitmapScalerEntry);
    return scaler;
}

const PixelCoder* generalCoder() {
    static const auto* const coder = moduleService<PixelCoderEntry>("pixels-vips", kPixelCoderEntry);
    return coder;
}

const PixelCoder* bmpCoder() {
    static const auto* const coder = moduleService<PixelCoderEntry>("pixels-bmp", kPixelCoderEntry);
    return coder;
}

const BitmapTransformer* transformer() {
    static const auto* const transformer =
        moduleService<BitmapTransformerEntry>("pixels-vips", kBitmapTransformerEntry);
    return transformer;
}

} // namespace

bool canDecode(std::string_view type) {
    return std::ranges::count(kTypes, type) > 0;
}

std::optional<Bitmap> decodedBitmap(
    std::span<const std::uint8_t> bytes, std::string_view type, std::optional<PixelSize> wanted) {
    if (!canDecode(type)) {
        return std::nullopt;
    }
    if (const PixelCoder* const coder = type == kJpegType ? jpegCoder() : nullptr; coder != nullptr) {
        if (auto bitmap = coder->decode(bytes, type, wanted)) {
            return bitmap;
        }
    }
    const PixelCoder* const coder = type == kBmpType ? bmpCoder() : generalCoder();
    return coder != nullptr ? coder->decode(bytes, type, wanted) : std::nullopt;
}

std::vector<std::uint8_t> encodedBitmap(
    const Bitmap& bitmap, std::string_view type, const EncodingOptions& options) {
    const PixelCoder* const coder = type == kJpegType ? jpegCoder() : generalCoder();
    return coder != nullptr ? coder->encode(bitmap, type, options) : std::vector<std::uint8_t>();
}

std::optional<Bitmap> scaledBitmap(const Bitmap& bitmap, const CGRect& region, PixelSize size) {
    return scaler() != nullptr ? scaler()->resampled(bitmap, region, size) : std::nullopt;
}

std::optional<Bitmap> transformedBitmap(
    const Bitmap& bitmap, const CGAffineTransform& toCanvas, PixelSize canvas) {
    return transformer() != nullptr ? transformer()->transformed(bitmap, toCanvas, canvas) : std::nullopt;
}

} // namespace exifcard

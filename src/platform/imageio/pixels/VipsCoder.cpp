#include "platform/imageio/pixels/VipsCoder.h"

#include "platform/imageio/pixels/TargetSize.h"

#include <vips/vips.h>

#include <algorithm>
#include <memory>

namespace exifcard {
namespace {

struct Unreference {
    void operator()(VipsImage* image) const { g_object_unref(image); }
};
using Image = std::unique_ptr<VipsImage, Unreference>;

struct FreeMemory {
    void operator()(void* memory) const { g_free(memory); }
};
using Memory = std::unique_ptr<void, FreeMemory>;

/// What failed is told by an absent result; the library's own text of it would only gather.
struct ErrorCleaner {
    ErrorCleaner() = default;
    ~ErrorCleaner() { vips_error_clear(); }
    ErrorCleaner(const ErrorCleaner&) = delete;
    ErrorCleaner& operator=(const ErrorCleaner&) = delete;
};

struct Loader {
    std::string_view type;
    int (*load)(void* bytes, std::size_t size, VipsImage** image, ...);
};

// Each type is read by its own loader and never by a guess. Animations and documents give their first
// picture.
constexpr Loader kLoaders[] = {
    {"public.jpeg", vips_jpegload_buffer},
    {"public.png", vips_pngload_buffer},
    {"public.tiff", vips_tiffload_buffer},
    {"com.compuserve.gif", vips_gifload_buffer},
    {"org.webmproject.webp", vips_webpload_buffer},
    {"public.heic", vips_heifload_buffer},
    {"public.heif", vips_heifload_buffer},
    {"public.avif", vips_heifload_buffer},
};

Image load(std::span<const std::uint8_t> bytes, std::string_view type) {
    const auto* const loader = std::ranges::find(kLoaders, type, &Loader::type);
    if (loader == std::end(kLoaders)) {
        return nullptr;
    }
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): the loaders only read, but take no const.
    auto* const memory = const_cast<std::uint8_t*>(bytes.data());
    VipsImage* image = nullptr;
    loader->load(memory, bytes.size(), &image, "access", VIPS_ACCESS_SEQUENTIAL, nullptr);
    Image result(image);
    const bool isInReason = image != nullptr && pixelCount({vips_image_get_width(image),
                                                    vips_image_get_height(image)}) <= kMaximumDecodedPixels;
    return isInReason ? std::move(result) : nullptr;
}

/// The result of an operation on an image; passes a missing image on.
template<typename Operation, typename... Options>
Image applied(Operation operation, const Image& image, Options... options) {
    VipsImage* result = nullptr;
    if (image) {
        operation(image.get(), &result, options..., nullptr);
    }
    return Image(result);
}

std::span<const std::uint8_t> profileOf(const Image& image) {
    const void* bytes = nullptr;
    std::size_t size = 0;
    if (vips_image_get_typeof(image.get(), VIPS_META_ICC_NAME) == 0 ||
        vips_image_get_blob(image.get(), VIPS_META_ICC_NAME, &bytes, &size) != 0) {
        return {};
    }
    return {static_cast<const std::uint8_t*>(bytes), size};
}

struct Decoded {
    Image image;              ///< 1, 3 or 4 bands of 8 bits, or null.
    bool keepsColors = false; ///< Whether the file's profile describes it still.
};

/// Through the profile to sRGB. What has none takes the usual one for its colours.
Decoded convertedToRgb(const Image& image) {
    return {applied(vips_icc_transform, image, "srgb", "embedded", TRUE, "input_profile", "cmyk"), false};
}

Decoded withPlainColors(const Image& image) {
    const auto interpretation = vips_image_guess_interpretation(image.get());
    const bool hasAlpha = vips_image_hasalpha(image.get()) != 0;
    const bool isGrey = vips_image_get_bands(image.get()) < 3;
    if (interpretation == VIPS_INTERPRETATION_CMYK) {
        return convertedToRgb(image);
    }
    if (isGrey && hasAlpha && !profileOf(image).empty()) {
        return convertedToRgb(image); // A profile for grey does not fit RGB.
    }
    if (isGrey) {
        return {
            applied(vips_colourspace, image, hasAlpha ? VIPS_INTERPRETATION_sRGB : VIPS_INTERPRETATION_B_W),
            !hasAlpha};
    }
    const bool isRgb = interpretation == VIPS_INTERPRETATION_sRGB ||
                       interpretation == VIPS_INTERPRETATION_RGB ||
                       interpretation == VIPS_INTERPRETATION_RGB16;
    return {applied(vips_colourspace, image, VIPS_INTERPRETATION_sRGB), isRgb};
}

/// With as many bands as a bitmap can have, 8 bits each.
Image withPlainBands(const Image& image) {
    if (!image) {
        return nullptr;
    }
    const int bands = vips_image_get_bands(image.get());
    const int wanted = bands == 2 ? 1 : std::min(bands, 4);
    const Image kept = applied(vips_extract_band, image, 0, "n", wanted);
    return applied(vips_cast, kept, VIPS_FORMAT_UCHAR);
}

Image scaled(Image image, PixelSize target) {
    const double horizontal = double(target.width) / vips_image_get_width(image.get());
    const double vertical = double(target.height) / vips_image_get_height(image.get());
    if (horizontal == 1 && vertical == 1) {
        return image;
    }
    if (vips_image_get_bands(image.get()) < 4) {
        return applied(vips_resize, image, horizontal, "vscale", vertical);
    }
    // What is transparent has no say in the colours around it.
    const Image premultiplied = applied(vips_premultiply, image);
    const Image resized = applied(vips_resize, premultiplied, horizontal, "vscale", vertical);
    return applied(vips_cast, applied(vips_unpremultiply, resized), VIPS_FORMAT_UCHAR);
}

std::optional<Bitmap> bitmapOf(const Image& image) {
    std::size_t size = 0;
    const Memory memory(image ? vips_image_write_to_memory(image.get(), &size) : nullptr);
    if (!memory) {
        return std::nullopt;
    }
    Bitmap bitmap;
    bitmap.width = vips_image_get_width(image.get());
    bitmap.height = vips_image_get_height(image.get());
    bitmap.channels = vips_image_get_bands(image.get());
    const auto* const pixels = static_cast<const std::uint8_t*>(memory.get());
    bitmap.pixels.assign(pixels, pixels + size);
    return bitmap;
}

/// The bitmap's pixels, which must outlive it.
Image imageOf(const Bitmap& bitmap) {
    const Image pixels(vips_image_new_from_memory(bitmap.pixels.data(), bitmap.pixels.size(), bitmap.width,
        bitmap.height, bitmap.channels, VIPS_FORMAT_UCHAR));
    return applied(vips_copy, pixels, "interpretation",
        bitmap.channels == 1 ? VIPS_INTERPRETATION_B_W : VIPS_INTERPRETATION_sRGB);
}

/// With transparency, in which the colours are multiplied by it.
Image premultiplied(const Image& image) {
    const bool isGrey = image && vips_image_get_bands(image.get()) == 1;
    const Image colors = isGrey ? applied(vips_colourspace, image, VIPS_INTERPRETATION_sRGB) : nullptr;
    const Image& rgb = isGrey ? colors : image;
    const bool isOpaque = rgb && vips_image_hasalpha(rgb.get()) == 0;
    const Image opaque = isOpaque ? applied(vips_bandjoin_const1, rgb, 255.0) : nullptr;
    return applied(vips_premultiply, isOpaque ? opaque : rgb);
}

} // namespace

const VipsCoder* VipsCoder::start() {
    static const VipsCoder coder;
    static const bool isStarted = [] {
        if (vips_init("exifcard") != 0) {
            return false;
        }
        vips_block_untrusted_set(TRUE);
        vips_concurrency_set(1); // Pictures are decoded side by side already.
        vips_cache_set_max(0);   // No picture is decoded twice in the same way.
        // A damaged file's warnings would go to standard error.
        const auto ignore = [](const char*, GLogLevelFlags, const char*, void*) {};
        g_log_set_handler("VIPS", GLogLevelFlags(G_LOG_LEVEL_WARNING | G_LOG_LEVEL_INFO), ignore, nullptr);
        return true;
    }();
    return isStarted ? &coder : nullptr;
}

std::optional<Bitmap> VipsCoder::decode(
    std::span<const std::uint8_t> bytes, std::string_view type, std::optional<PixelSize> wanted) const {
    const ErrorCleaner cleaner;
    const Image image = load(bytes, type);
    if (!image) {
        return std::nullopt;
    }
    const Decoded decoded = withPlainColors(image);
    Image plain = withPlainBands(decoded.image);
    if (!plain) {
        return std::nullopt;
    }
    const PixelSize stored = {vips_image_get_width(image.get()), vips_image_get_height(image.get())};
    auto bitmap = bitmapOf(scaled(std::move(plain), targetSize(stored, wanted)));
    if (bitmap && decoded.keepsColors) {
        const auto profile = profileOf(image);
        bitmap->iccProfile.assign(profile.begin(), profile.end());
    }
    return bitmap;
}

std::vector<std::uint8_t> VipsCoder::encode(
    const Bitmap& bitmap, std::string_view type, const EncodingOptions& /*options*/) const {
    const ErrorCleaner cleaner;
    if (type != "public.png" || bitmap.isEmpty()) {
        return {};
    }
    const Image image = imageOf(bitmap);
    if (!image) {
        return {};
    }
    if (!bitmap.iccProfile.empty()) {
        vips_image_set_blob_copy(
            image.get(), VIPS_META_ICC_NAME, bitmap.iccProfile.data(), bitmap.iccProfile.size());
    }
    void* buffer = nullptr;
    std::size_t size = 0;
    vips_pngsave_buffer(image.get(), &buffer, &size, nullptr);
    const Memory memory(buffer);
    const auto* const png = static_cast<const std::uint8_t*>(buffer);
    return {png, png + size};
}

std::optional<Bitmap> VipsCoder::transformed(
    const Bitmap& bitmap, const CGAffineTransform& toCanvas, PixelSize canvas) const {
    const ErrorCleaner cleaner;
    constexpr double kMiddle = 0.5; // The library counts from the middle of a pixel.
    const bool isInReason =
        canvas.width > 0 && canvas.height > 0 && pixelCount(canvas) <= kMaximumDecodedPixels;
    if (bitmap.isEmpty() || !isInReason) {
        return std::nullopt;
    }
    VipsInterpolate* const bilinear = vips_interpolate_new("bilinear");
    const int area[] = {0, 0, canvas.width, canvas.height};
    VipsArrayInt* const canvasArea = vips_array_int_new(area, 4);
    VipsImage* turned = nullptr;
    const Image source = premultiplied(imageOf(bitmap));
    if (source) {
        vips_affine(source.get(), &turned, toCanvas.a, toCanvas.c, toCanvas.b, toCanvas.d, "oarea",
            canvasArea, "interpolate", bilinear, "idx", kMiddle, "idy", kMiddle, "odx", toCanvas.tx - kMiddle,
            "ody", toCanvas.ty - kMiddle, nullptr);
    }
    vips_area_unref(VIPS_AREA(canvasArea));
    g_object_unref(bilinear);
    const Image plain = applied(vips_unpremultiply, Image(turned));
    auto result = bitmapOf(applied(vips_cast, plain, VIPS_FORMAT_UCHAR));
    if (result && bitmap.channels > 1) {
        result->iccProfile = bitmap.iccProfile; // A profile for grey does not fit RGB.
    }
    return result;
}

} // namespace exifcard

#include "platform/imageio/pixels/JpegCoder.h"

#include "platform/imageio/pixels/JpegSegments.h"
#include "platform/imageio/pixels/Resampler.h"
#include "platform/imageio/pixels/TargetSize.h"

#include <turbojpeg.h>

#include <array>
#include <memory>

namespace exifcard {
namespace {

constexpr std::string_view kJpegType = "public.jpeg";

// The decoder keeps every coefficient of a progressive picture, 3 to 6 bytes a pixel.
constexpr std::size_t kMaximumProgressivePixels = kMaximumDecodedPixels / 2;
// Each block of 8 × 8 pixels takes at least a bit. A file with far fewer bits only claims its size, to make
// the decoder take memory; an eighth of them still passes as a picture cut short.
constexpr std::size_t kMaximumPixelsPerByte = std::size_t(8) * 8 * 8 * 8;

// Decoding to a half, a quarter or an eighth saves work. The steps between are slower than the full size:
// libjpeg-turbo has no vector code for them.
constexpr int kReductions[] = {8, 4, 2, 1};

// From this quality on the colours are not halved in size.
constexpr int kFullColorQuality = 95;

constexpr int kDecodingFlags =
    TJFLAG_LIMITSCANS; // A progressive file with thousands of scans would take minutes.

struct DestroyHandle {
    void operator()(void* handle) const { tjDestroy(handle); }
};
using Handle = std::unique_ptr<void, DestroyHandle>;

struct FreeBuffer {
    void operator()(unsigned char* buffer) const { tjFree(buffer); }
};

struct JpegFrame {
    PixelSize size;
    int sampling = TJSAMP_444;
    int colors = TJCS_YCbCr;

    int channels() const { return colors == TJCS_GRAY ? 1 : 3; }
};

struct Subsampling {
    int horizontal; ///< Binary logarithm.
    int vertical;   ///< Binary logarithm.
};

/// Indexed by TJSAMP.
constexpr std::array<Subsampling, TJ_NUMSAMP> kSubsamplings = {
    {{0, 0}, {1, 0}, {1, 1}, {0, 0}, {0, 1}, {2, 0}},
};

PixelSize reducedSize(PixelSize size, int reduction) {
    const tjscalingfactor factor = {1, reduction};
    return {TJSCALED(size.width, factor), TJSCALED(size.height, factor)};
}

/// The smallest size that the decoder makes cheaply and that has at least the sides of `target`.
PixelSize decodedSize(PixelSize stored, PixelSize target) {
    for (const int reduction : kReductions) {
        const PixelSize reduced = reducedSize(stored, reduction);
        if (reduced.width >= target.width && reduced.height >= target.height) {
            return reduced;
        }
    }
    return stored;
}

/// A file that ends too early or is damaged further on leaves a warning, and the rest grey.
bool hasPicture(tjhandle decoder, int result) {
    return result == 0 || tjGetErrorCode(decoder) == TJERR_WARNING;
}

std::optional<JpegFrame> readFrame(tjhandle decoder, std::span<const std::uint8_t> bytes) {
    JpegFrame frame;
    const int result = tjDecompressHeader3(decoder, bytes.data(), bytes.size(), &frame.size.width,
        &frame.size.height, &frame.sampling, &frame.colors);
    const bool isKnown = frame.colors == TJCS_YCbCr || frame.colors == TJCS_RGB || frame.colors == TJCS_GRAY;
    if (result != 0 || !isKnown || frame.size.width <= 0 || frame.size.height <= 0) {
        return std::nullopt;
    }
    return frame;
}

std::optional<Bitmap> decodeBitmap(
    tjhandle decoder, std::span<const std::uint8_t> bytes, const JpegFrame& frame, PixelSize size) {
    Bitmap bitmap;
    bitmap.width = size.width;
    bitmap.height = size.height;
    bitmap.channels = frame.channels();
    bitmap.pixels.resize(pixelCount(size) * static_cast<std::size_t>(bitmap.channels));
    const int format = bitmap.channels == 1 ? TJPF_GRAY : TJPF_RGB;
    const int result = tjDecompress2(decoder, bytes.data(), bytes.size(), bitmap.pixels.data(), size.width, 0,
        size.height, format, kDecodingFlags);
    return hasPicture(decoder, result) ? std::optional(std::move(bitmap)) : std::nullopt;
}

bool hasWholeSubsampling(const JpegFrame& frame, PixelSize size) {
    const Subsampling subsampling = kSubsamplings[static_cast<std::size_t>(frame.sampling)];
    return size.width % (1 << subsampling.horizontal) == 0 && size.height % (1 << subsampling.vertical) == 0;
}

std::optional<YuvPlanes> decodePlanes(
    tjhandle decoder, std::span<const std::uint8_t> bytes, const JpegFrame& frame, PixelSize size) {
    YuvPlanes result;
    const Subsampling subsampling = kSubsamplings[static_cast<std::size_t>(frame.sampling)];
    result.size = size;
    result.horizontalSubsampling = subsampling.horizontal;
    result.verticalSubsampling = subsampling.vertical;
    std::array<unsigned char*, 3> planes = {};
    std::array<int, 3> strides = {};
    for (std::size_t index = 0; index < planes.size(); ++index) {
        const int component = static_cast<int>(index);
        const auto width = static_cast<std::size_t>(tjPlaneWidth(component, size.width, frame.sampling));
        const auto height = static_cast<std::size_t>(tjPlaneHeight(component, size.height, frame.sampling));
        result.strides[index] = AlignedBytes::stride(width);
        result.planes[index] = AlignedBytes(result.strides[index] * height);
        planes[index] = result.planes[index].get();
        strides[index] = static_cast<int>(result.strides[index]);
        if (planes[index] == nullptr) {
            return std::nullopt;
        }
    }
    const int outcome = tjDecompressToYUVPlanes(decoder, bytes.data(), bytes.size(), planes.data(),
        size.width, strides.data(), size.height, kDecodingFlags);
    return hasPicture(decoder, outcome) ? std::optional(std::move(result)) : std::nullopt;
}

std::optional<Bitmap> decodeScaled(
    tjhandle decoder, std::span<const std::uint8_t> bytes, const JpegFrame& frame, PixelSize target) {
    const PixelSize size = decodedSize(frame.size, target);
    if (pixelCount(size) > kMaximumDecodedPixels) {
        return std::nullopt;
    }
    if (size == target) {
        return decodeBitmap(decoder, bytes, frame, size);
    }
    // Scaling the planes as they are stored saves half the work: the colours are smaller, and are widened and
    // turned into RGB at the target's size only.
    if (frame.colors == TJCS_YCbCr && hasWholeSubsampling(frame, size)) {
        const auto planes = decodePlanes(decoder, bytes, frame, size);
        return planes ? resampledRgb(*planes, target) : std::nullopt;
    }
    const auto bitmap = decodeBitmap(decoder, bytes, frame, size);
    const CGRect whole = {{}, {double(size.width), double(size.height)}};
    return bitmap ? resampledBitmap(*bitmap, whole, target) : std::nullopt;
}

/// The same picture on white.
Bitmap withoutAlpha(const Bitmap& bitmap) {
    Bitmap result;
    result.width = bitmap.width;
    result.height = bitmap.height;
    result.pixels.reserve(bitmap.pixels.size() / 4 * 3);
    for (std::size_t index = 0; index + 3 < bitmap.pixels.size(); index += 4) {
        const int alpha = bitmap.pixels[index + 3];
        for (std::size_t channel = 0; channel < 3; ++channel) {
            const int blended = bitmap.pixels[index + channel] * alpha + 255 * (255 - alpha);
            result.pixels.push_back(static_cast<std::uint8_t>((blended + 127) / 255));
        }
    }
    return result;
}

std::vector<std::uint8_t> compress(const Bitmap& bitmap, int quality) {
    const Handle encoder(tjInitCompress());
    const int colorSampling = quality >= kFullColorQuality ? TJSAMP_444 : TJSAMP_420;
    unsigned char* buffer = nullptr;
    unsigned long size = 0;
    const int result = tjCompress2(encoder.get(), bitmap.pixels.data(), bitmap.width, 0, bitmap.height,
        bitmap.channels == 1 ? TJPF_GRAY : TJPF_RGB, &buffer, &size,
        bitmap.channels == 1 ? TJSAMP_GRAY : colorSampling, quality, 0);
    const std::unique_ptr<unsigned char, FreeBuffer> owner(buffer);
    return result == 0 ? std::vector<std::uint8_t>(buffer, buffer + size) : std::vector<std::uint8_t>();
}

} // namespace

std::optional<Bitmap> JpegCoder::decode(
    std::span<const std::uint8_t> bytes, std::string_view type, std::optional<PixelSize> wanted) const {
    const Handle decoder(tjInitDecompress());
    const auto frame = type == kJpegType && decoder ? readFrame(decoder.get(), bytes) : std::nullopt;
    if (!frame || pixelCount(frame->size) / kMaximumPixelsPerByte > bytes.size()) {
        return std::nullopt;
    }
    JpegHeader header = readJpegHeader(bytes);
    if (header.isProgressive && pixelCount(frame->size) > kMaximumProgressivePixels) {
        return std::nullopt;
    }
    auto bitmap = decodeScaled(decoder.get(), bytes, *frame, targetSize(frame->size, wanted));
    if (bitmap) {
        bitmap->iccProfile = std::move(header.iccProfile);
    }
    return bitmap;
}

std::vector<std::uint8_t> JpegCoder::encode(
    const Bitmap& bitmap, std::string_view type, const EncodingOptions& options) const {
    if (type != kJpegType || bitmap.isEmpty()) {
        return {};
    }
    auto jpeg = bitmap.channels == 4 ? compress(withoutAlpha(bitmap), options.jpegQuality)
                                     : compress(bitmap, options.jpegQuality);
    if (!jpeg.empty()) {
        insertJpegSegments(jpeg, options.exif, bitmap.iccProfile);
    }
    return jpeg;
}

} // namespace exifcard

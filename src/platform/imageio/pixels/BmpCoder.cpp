#include "platform/imageio/pixels/BmpCoder.h"

#include "platform/imageio/pixels/TargetSize.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavutil/imgutils.h>
#include <libavutil/log.h>
#include <libswscale/swscale.h>
}

#include <array>
#include <cstring>
#include <limits>
#include <memory>
#include <utility>

namespace exifcard {
namespace {

// A run of two bytes makes 255 pixels at most. A file with far fewer bytes only claims its size.
constexpr std::size_t kMostPixelsPerByte = 1024;
constexpr int kRowAlignment = 64;

struct FreeCodec {
    void operator()(AVCodecContext* codec) const { avcodec_free_context(&codec); }
};
struct FreeFrame {
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
};
struct FreePacket {
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};
struct FreeScaler {
    void operator()(SwsContext* scaler) const { sws_freeContext(scaler); }
};
struct FreeMemory {
    void operator()(std::uint8_t* memory) const { av_free(memory); }
};
using Codec = std::unique_ptr<AVCodecContext, FreeCodec>;
using Frame = std::unique_ptr<AVFrame, FreeFrame>;
using Packet = std::unique_ptr<AVPacket, FreePacket>;

Packet packetOf(std::span<const std::uint8_t> bytes) {
    Packet packet(av_packet_alloc());
    const bool fits = bytes.size() <= std::size_t(std::numeric_limits<int>::max()) / 2;
    // The library wants room behind the bytes.
    if (!packet || !fits || av_new_packet(packet.get(), static_cast<int>(bytes.size())) < 0) {
        return nullptr;
    }
    std::memcpy(packet->data, bytes.data(), bytes.size());
    return packet;
}

Frame decodedFrame(std::span<const std::uint8_t> bytes) {
    av_log_set_level(AV_LOG_QUIET);
    const AVCodec* const decoder = avcodec_find_decoder(AV_CODEC_ID_BMP);
    const Codec codec(decoder != nullptr ? avcodec_alloc_context3(decoder) : nullptr);
    const Packet packet = packetOf(bytes);
    Frame frame(av_frame_alloc());
    if (!codec || !packet || !frame) {
        return nullptr;
    }
    const std::size_t most = std::min(kMaximumDecodedPixels, bytes.size() * kMostPixelsPerByte);
    codec->max_pixels = static_cast<std::int64_t>(most);
    codec->thread_count = 1;
    const bool isDecoded = avcodec_open2(codec.get(), decoder, nullptr) == 0 &&
                           avcodec_send_packet(codec.get(), packet.get()) == 0 &&
                           avcodec_receive_frame(codec.get(), frame.get()) == 0;
    return isDecoded && frame->width > 0 && frame->height > 0 ? std::move(frame) : nullptr;
}

std::optional<Bitmap> bitmapOf(const AVFrame& frame, PixelSize size) {
    const auto format = static_cast<AVPixelFormat>(frame.format);
    const bool hasAlpha = format == AV_PIX_FMT_BGRA;
    const AVPixelFormat wanted = hasAlpha ? AV_PIX_FMT_RGBA : AV_PIX_FMT_RGB24;
    const std::unique_ptr<SwsContext, FreeScaler> scaler(sws_getContext(frame.width, frame.height, format,
        size.width, size.height, wanted, SWS_AREA | SWS_ACCURATE_RND, nullptr, nullptr, nullptr));
    std::array<std::uint8_t*, 4> planes = {};
    std::array<int, 4> strides = {};
    if (!scaler ||
        av_image_alloc(planes.data(), strides.data(), size.width, size.height, wanted, kRowAlignment) < 0) {
        return std::nullopt;
    }
    const std::unique_ptr<std::uint8_t, FreeMemory> memory(planes[0]);
    sws_scale(scaler.get(), frame.data, frame.linesize, 0, frame.height, planes.data(), strides.data());
    Bitmap bitmap;
    bitmap.width = size.width;
    bitmap.height = size.height;
    bitmap.channels = hasAlpha ? 4 : 3;
    const auto rowSize = static_cast<std::size_t>(size.width) * static_cast<std::size_t>(bitmap.channels);
    for (int row = 0; row < size.height; ++row) {
        const std::uint8_t* const pixels = planes[0] + std::ptrdiff_t(strides[0]) * row;
        bitmap.pixels.insert(bitmap.pixels.end(), pixels, pixels + rowSize);
    }
    return bitmap;
}

} // namespace

std::optional<Bitmap> BmpCoder::decode(
    std::span<const std::uint8_t> bytes, std::string_view type, std::optional<PixelSize> wanted) const {
    const Frame frame = type == "com.microsoft.bmp" ? decodedFrame(bytes) : nullptr;
    return frame ? bitmapOf(*frame, targetSize({frame->width, frame->height}, wanted)) : std::nullopt;
}

std::vector<std::uint8_t> BmpCoder::encode(
    const Bitmap& /*bitmap*/, std::string_view /*type*/, const EncodingOptions& /*options*/) const {
    return {};
}

} // namespace exifcard

#include "platform/avfoundation/ffmpeg/VideoFrames.h"

#include "platform/uivalues/ShrunkSize.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/imgutils.h>
#include <libswscale/swscale.h>
}

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <memory>

namespace exifcard {
namespace {

// The largest frames of cameras, 8K wide.
constexpr std::int64_t kMostPixels = std::int64_t(8192) * 4352;
// Sound and other tracks lie between the frames, and a decoder may hold a frame back.
constexpr int kMostPackets = 2048;
constexpr int kRgbChannels = 3;
constexpr int kRowAlignment = 64;

struct FreeCodec {
    void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
};
struct FreeFrame {
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
};
struct FreePacket {
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};
struct FreeScaler {
    void operator()(SwsContext* context) const { sws_freeContext(context); }
};
struct FreeMemory {
    void operator()(std::uint8_t* memory) const { av_free(memory); }
};
using Codec = std::unique_ptr<AVCodecContext, FreeCodec>;
using Frame = std::unique_ptr<AVFrame, FreeFrame>;

Codec openCodec(const AVStream& stream) {
    const AVCodec* const decoder = avcodec_find_decoder(stream.codecpar->codec_id);
    Codec codec(decoder != nullptr ? avcodec_alloc_context3(decoder) : nullptr);
    if (!codec || avcodec_parameters_to_context(codec.get(), stream.codecpar) < 0) {
        return nullptr;
    }
    codec->max_pixels = kMostPixels;
    codec->thread_count = 1; // Videos are read side by side already.
    codec->skip_frame = AVDISCARD_NONKEY;
    codec->pkt_timebase = stream.time_base;
    return avcodec_open2(codec.get(), decoder, nullptr) == 0 ? std::move(codec) : nullptr;
}

bool takeFrame(AVCodecContext& codec, const AVPacket* packet, AVFrame& frame) {
    return avcodec_send_packet(&codec, packet) >= 0 && avcodec_receive_frame(&codec, &frame) == 0;
}

/// The next key frame from where the file stands.
Frame nextFrame(const VideoFile& file, const AVStream& stream, AVCodecContext& codec) {
    Frame frame(av_frame_alloc());
    const std::unique_ptr<AVPacket, FreePacket> packet(av_packet_alloc());
    if (!frame || !packet) {
        return nullptr;
    }
    for (int count = 0; count < kMostPackets; ++count) {
        if (av_read_frame(file.context(), packet.get()) < 0) {
            break;
        }
        const bool isTaken = packet->stream_index == stream.index && takeFrame(codec, packet.get(), *frame);
        av_packet_unref(packet.get());
        if (isTaken) {
            return frame;
        }
    }
    return takeFrame(codec, nullptr, *frame) ? std::move(frame) : nullptr; // What the decoder held back.
}

void seekTo(const VideoFile& file, const AVStream& stream, double seconds) {
    if (seconds > 0 && stream.time_base.num > 0) {
        const double start = stream.start_time != AV_NOPTS_VALUE ? static_cast<double>(stream.start_time) : 0;
        const double time = start + std::min(seconds, 1e6) / av_q2d(stream.time_base);
        av_seek_frame(file.context(), stream.index, std::llround(time), AVSEEK_FLAG_BACKWARD);
    }
}

using Scaler = std::unique_ptr<SwsContext, FreeScaler>;

/// What the file says, which may be a number that the enumeration lacks.
template<typename Enumeration>
int numberOf(const Enumeration& value) {
    int number = 0;
    static_assert(sizeof(number) == sizeof(value));
    std::memcpy(&number, &value, sizeof(number));
    return number;
}

Scaler scalerFor(const AVFrame& frame, int width, int height) {
    const auto format = static_cast<AVPixelFormat>(frame.format);
    Scaler scaler(sws_getContext(frame.width, frame.height, format, width, height, AV_PIX_FMT_RGB24,
        SWS_AREA | SWS_ACCURATE_RND | SWS_FULL_CHR_H_INT, nullptr, nullptr, nullptr));
    if (scaler) {
        const int isFullRange = numberOf(frame.color_range) == AVCOL_RANGE_JPEG ? 1 : 0;
        constexpr int kUnchanged = 1 << 16;
        sws_setColorspaceDetails(scaler.get(), sws_getCoefficients(numberOf(frame.colorspace)), isFullRange,
            sws_getCoefficients(SWS_CS_DEFAULT), 1, 0, kUnchanged, kUnchanged);
    }
    return scaler;
}

std::optional<Bitmap> bitmapOf(const AVFrame& frame, CGSize limits) {
    Bitmap bitmap;
    const CGSize shown = shrunkToFit({double(frame.width), double(frame.height)}, limits);
    bitmap.width = static_cast<int>(shown.width);
    bitmap.height = static_cast<int>(shown.height);
    const Scaler scaler = scalerFor(frame, bitmap.width, bitmap.height);
    // The scaler's vector code writes whole blocks, beyond the end of a row.
    std::array<std::uint8_t*, 4> planes = {};
    std::array<int, 4> strides = {};
    if (!scaler || av_image_alloc(planes.data(), strides.data(), bitmap.width, bitmap.height,
                       AV_PIX_FMT_RGB24, kRowAlignment) < 0) {
        return std::nullopt;
    }
    const std::unique_ptr<std::uint8_t, FreeMemory> memory(planes[0]);
    sws_scale(scaler.get(), frame.data, frame.linesize, 0, frame.height, planes.data(), strides.data());
    const auto rowSize = static_cast<std::size_t>(bitmap.width) * kRgbChannels;
    bitmap.pixels.resize(rowSize * static_cast<std::size_t>(bitmap.height));
    for (int row = 0; row < bitmap.height; ++row) {
        std::memcpy(bitmap.pixels.data() + rowSize * static_cast<std::size_t>(row),
            planes[0] + std::ptrdiff_t(strides[0]) * row, rowSize);
    }
    return bitmap;
}

} // namespace

std::optional<Bitmap> readVideoFrame(const VideoFile& file, double seconds, CGSize limits) {
    const AVStream* const stream = file.firstVideoStream();
    if (stream == nullptr || !isDecodable(*stream) || !(limits.width >= 1 && limits.height >= 1)) {
        return std::nullopt;
    }
    const Codec codec = openCodec(*stream);
    if (!codec) {
        return std::nullopt;
    }
    seekTo(file, *stream, seconds);
    const Frame frame = nextFrame(file, *stream, *codec);
    const bool isWhole = frame && frame->width > 0 && frame->height > 0 &&
                         std::int64_t(frame->width) * frame->height <= kMostPixels;
    return isWhole ? bitmapOf(*frame, limits) : std::nullopt;
}

} // namespace exifcard

#include "platform/avfoundation/ffmpeg/VideoFacts.h"

extern "C" {
#include <libavcodec/packet.h>
#include <libavformat/avformat.h>
}

#include <algorithm>
#include <cstring>
#include <iterator>

namespace exifcard {
namespace {

// A camera writes some twenty, the longest of a few thousand letters.
constexpr std::size_t kMostEntries = 512;
constexpr std::size_t kLongestText = 64 * 1024;
// Sound, captions and their like that may come before the first frame.
constexpr int kMostPacketsBeforeFrame = 256;

struct MediaType {
    AVMediaType libraryType;
    const char* name;
};

constexpr MediaType kMediaTypes[] = {
    {AVMEDIA_TYPE_VIDEO, "vide"},
    {AVMEDIA_TYPE_AUDIO, "soun"},
    {AVMEDIA_TYPE_SUBTITLE, "text"},
};
constexpr const char* kOtherMediaType = "meta";

struct FreePacket {
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};

const char* mediaTypeName(const AVStream& stream) {
    const auto* const type =
        std::ranges::find(kMediaTypes, stream.codecpar->codec_type, &MediaType::libraryType);
    return type != std::end(kMediaTypes) ? type->name : kOtherMediaType;
}

CGAffineTransform displayTransform(const AVStream& stream) {
    std::size_t size = 0;
    const std::uint8_t* const bytes = av_stream_get_side_data(&stream, AV_PKT_DATA_DISPLAYMATRIX, &size);
    std::int32_t matrix[9] = {};
    if (bytes == nullptr || size < sizeof(matrix)) {
        return {};
    }
    std::memcpy(matrix, bytes, sizeof(matrix));
    const auto fixedPoint = [](std::int32_t number) { return number / 65536.0; };
    return {fixedPoint(matrix[0]), fixedPoint(matrix[1]), fixedPoint(matrix[3]), fixedPoint(matrix[4]),
        fixedPoint(matrix[6]), fixedPoint(matrix[7])};
}

float frameRateOf(const AVStream& stream) {
    const double duration = static_cast<double>(stream.duration) * av_q2d(stream.time_base);
    const double counted = duration > 0 ? static_cast<double>(stream.nb_frames) / duration : 0;
    const double rate = stream.avg_frame_rate.den != 0 ? av_q2d(stream.avg_frame_rate) : 0;
    return static_cast<float>(counted > 0 ? counted : std::max(rate, 0.0));
}

VideoTrack trackOf(const AVStream& stream) {
    VideoTrack track;
    track.mediaType = mediaTypeName(stream);
    if (stream.codecpar->codec_type == AVMEDIA_TYPE_VIDEO) {
        track.naturalSize = {double(stream.codecpar->width), double(stream.codecpar->height)};
        track.frameRate = frameRateOf(stream);
        track.toShow = displayTransform(stream);
    }
    return track;
}

/// A file may tell of frames and end before the first.
bool hasFrame(const VideoFile& file, const AVStream& video) {
    const std::unique_ptr<AVPacket, FreePacket> packet(av_packet_alloc());
    for (int count = 0; packet && count < kMostPacketsBeforeFrame; ++count) {
        if (av_read_frame(file.context(), packet.get()) < 0) {
            return false;
        }
        if (packet->stream_index == video.index) {
            return packet->size > 0;
        }
        av_packet_unref(packet.get());
    }
    return true; // Far behind other tracks: drawing it will tell.
}

} // namespace

VideoFacts readVideoFacts(const VideoFile& file) {
    VideoFacts facts;
    const AVFormatContext& context = *file.context();
    if (context.duration != AV_NOPTS_VALUE && context.duration >= 0) {
        facts.durationInMicroseconds = av_rescale(context.duration, 1'000'000, AV_TIME_BASE);
    }
    const AVDictionaryEntry* entry = nullptr;
    while ((entry = av_dict_get(context.metadata, "", entry, AV_DICT_IGNORE_SUFFIX)) != nullptr &&
           facts.entries.size() < kMostEntries) {
        facts.entries.emplace_back(
            entry->key, std::string(entry->value, strnlen(entry->value, kLongestText)));
    }
    const AVStream* const video = file.firstVideoStream();
    for (const AVStream* const stream : file.streams()) {
        if ((stream->disposition & AV_DISPOSITION_ATTACHED_PIC) != 0) {
            continue;
        }
        VideoTrack track = trackOf(*stream);
        track.isDecodable = stream == video && isDecodable(*stream) && hasFrame(file, *stream);
        facts.tracks.push_back(std::move(track));
    }
    return facts;
}

} // namespace exifcard

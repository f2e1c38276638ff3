#include "platform/avfoundation/ffmpeg/VideoFile.h"

#include "platform/foundation/ProcessorTime.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/log.h>
#include <libavutil/mem.h>
}

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace exifcard {
namespace {

// A phone's cinematic video has some 15 tracks; each takes memory for its index.
constexpr int kMostTracks = 64;
// An index entry takes 24 bytes: this holds those of 24 hours at 30 frames a second.
constexpr std::size_t kLargestAllocation = std::size_t(192) << 20U;
// Enough to recognise a transport stream's tracks; a movie's header is read as a whole.
constexpr std::int64_t kProbedBytes = 2 << 20;
constexpr std::int64_t kProbedMicroseconds = 2'000'000;
constexpr int kBufferSize = 32 * 1024;

/// What cameras and phones write, by the names of the demultiplexers. None of them opens other files.
constexpr const char* kContainers = "mov,mp4,m4a,3gp,3g2,mj2,matroska,webm,avi,mpegts,mpeg,asf,flv,ogg";

constexpr AVCodecID kDecodable[] = {AV_CODEC_ID_H264, AV_CODEC_ID_HEVC, AV_CODEC_ID_MPEG4, AV_CODEC_ID_MJPEG,
    AV_CODEC_ID_AV1, AV_CODEC_ID_VP8, AV_CODEC_ID_VP9, AV_CODEC_ID_H263, AV_CODEC_ID_MPEG1VIDEO,
    AV_CODEC_ID_MPEG2VIDEO, AV_CODEC_ID_PRORES, AV_CODEC_ID_DNXHD, AV_CODEC_ID_DVVIDEO, AV_CODEC_ID_WMV3,
    AV_CODEC_ID_VC1, AV_CODEC_ID_THEORA};

void setUpLibrary() {
    static const bool isDone = [] {
        av_log_set_level(AV_LOG_QUIET);
        av_max_alloc(kLargestAllocation);
        return true;
    }();
    static_cast<void>(isDone);
}

int refuseOtherFiles(AVFormatContext* /*context*/,
    AVIOContext** /*io*/,
    const char* /*url*/,
    int /*flags*/,
    AVDictionary** /*options*/) {
    return AVERROR(EACCES);
}

} // namespace

struct VideoFile::State {
    std::span<const std::uint8_t> bytes;
    double deadline = 0; ///< In processor time of the thread.
    std::size_t position = 0;
    AVIOContext* io = nullptr;
    AVFormatContext* context = nullptr;

    static int read(void* opaque, std::uint8_t* buffer, int size) {
        auto& state = *static_cast<State*>(opaque);
        if (processorSecondsOfThread() > state.deadline) {
            return AVERROR_EXIT;
        }
        const std::size_t rest = state.bytes.size() - state.position;
        const std::size_t count = std::min(rest, static_cast<std::size_t>(size));
        if (count == 0) {
            return AVERROR_EOF;
        }
        std::memcpy(buffer, state.bytes.data() + state.position, count);
        state.position += count;
        return static_cast<int>(count);
    }

    static std::int64_t seek(void* opaque, std::int64_t offset, int whence) {
        auto& state = *static_cast<State*>(opaque);
        const auto size = static_cast<std::int64_t>(state.bytes.size());
        if ((whence & AVSEEK_SIZE) != 0) {
            return size;
        }
        if (whence == SEEK_CUR) {
            offset += static_cast<std::int64_t>(state.position);
        } else if (whence == SEEK_END) {
            offset += size;
        }
        if (offset < 0 || offset > size) {
            return AVERROR(EINVAL);
        }
        state.position = static_cast<std::size_t>(offset);
        return offset;
    }

    static int isOverdue(void* opaque) {
        return processorSecondsOfThread() > static_cast<State*>(opaque)->deadline ? 1 : 0;
    }

    bool makeContext();
    bool readHeader();
    bool knowsSizesAndRates() const;
};

bool VideoFile::State::makeContext() {
    auto* const buffer = static_cast<unsigned char*>(av_malloc(kBufferSize));
    if (buffer == nullptr) {
        return false;
    }
    io = avio_alloc_context(buffer, kBufferSize, 0, this, read, nullptr, seek);
    context = avformat_alloc_context();
    if (io == nullptr || context == nullptr) {
        return false;
    }
    context->pb = io;
    context->flags |= AVFMT_FLAG_CUSTOM_IO | AVFMT_FLAG_NOBUFFER;
    context->io_open = refuseOtherFiles;
    context->interrupt_callback = {isOverdue, this};
    context->max_streams = kMostTracks;
    context->probesize = kProbedBytes;
    context->max_analyze_duration = kProbedMicroseconds;
    return true;
}

/// A movie tells them in its header; what streams must be looked into.
bool VideoFile::State::knowsSizesAndRates() const {
    return std::all_of(context->streams, context->streams + context->nb_streams, [](const AVStream* stream) {
        const bool isVideo = stream->codecpar->codec_type == AVMEDIA_TYPE_VIDEO;
        return !isVideo || (stream->codecpar->width > 0 && stream->nb_frames > 0 && stream->duration > 0);
    });
}

bool VideoFile::State::readHeader() {
    AVDictionary* options = nullptr;
    av_dict_set(&options, "format_whitelist", kContainers, 0);
    av_dict_set(&options, "protocol_whitelist", "", 0);
    // The full treatment of edit lists takes a time of their number times that of the frames.
    av_dict_set(&options, "advanced_editlist", "0", 0);
    const int result = avformat_open_input(&context, "", nullptr, &options); // Frees the context on failure.
    av_dict_free(&options);
    if (result < 0) {
        return false;
    }
    if (context->nb_streams == 0 || !knowsSizesAndRates()) {
        avformat_find_stream_info(context, nullptr);
    }
    return context->nb_streams > 0;
}

VideoFile::VideoFile(std::span<const std::uint8_t> bytes, double mostSeconds)
    : _state(std::make_unique<State>()) {
    _state->bytes = bytes;
    _state->deadline = processorSecondsOfThread() + mostSeconds;
}

VideoFile::~VideoFile() {
    avformat_close_input(&_state->context);
    if (_state->io != nullptr) {
        av_freep(static_cast<void*>(&_state->io->buffer));
        avio_context_free(&_state->io);
    }
}

std::unique_ptr<VideoFile> VideoFile::open(std::span<const std::uint8_t> bytes, double mostSeconds) {
    setUpLibrary();
    std::unique_ptr<VideoFile> file(new VideoFile(bytes, mostSeconds));
    return file->_state->makeContext() && file->_state->readHeader() ? std::move(file) : nullptr;
}

AVFormatContext* VideoFile::context() const {
    return _state->context;
}

std::span<AVStream* const> VideoFile::streams() const {
    return {_state->context->streams, _state->context->nb_streams};
}

AVStream* VideoFile::firstVideoStream() const {
    const auto isVideo = [](const AVStream* stream) {
        return stream->codecpar->codec_type == AVMEDIA_TYPE_VIDEO &&
               (stream->disposition & AV_DISPOSITION_ATTACHED_PIC) == 0;
    };
    const auto found = std::ranges::find_if(streams(), isVideo);
    return found != streams().end() ? *found : nullptr;
}

bool isDecodable(const AVStream& stream) {
    return std::ranges::count(kDecodable, stream.codecpar->codec_id) > 0 && stream.codecpar->width > 0 &&
           stream.codecpar->height > 0;
}

} // namespace exifcard

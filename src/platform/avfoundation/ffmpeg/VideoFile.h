#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

struct AVFormatContext;
struct AVStream;

namespace exifcard {

/// A video in memory, its header read.
class VideoFile {
public:
    /// Null for what is no container of a known kind, or takes too long to read.
    static std::unique_ptr<VideoFile> open(std::span<const std::uint8_t> bytes);
    ~VideoFile();
    VideoFile(const VideoFile&) = delete;
    VideoFile& operator=(const VideoFile&) = delete;

    AVFormatContext* context() const;
    std::span<AVStream* const> streams() const;
    /// Null without one; a cover picture is none.
    AVStream* firstVideoStream() const;

private:
    VideoFile();

    struct State;
    std::unique_ptr<State> _state;
};

/// Whether frames of that stream are of a kind that cameras and phones write.
bool isDecodable(const AVStream& stream);

} // namespace exifcard

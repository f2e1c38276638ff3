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
    /// The heads of ordinary files take milliseconds, of two hours of video half a second. A file of millions
    /// of tiny entries could take hours.
    static constexpr double kMostSeconds = 5;

    /// Null for what is no container of a known kind, or of which no track is found in time.
    /// @param bytes        Must outlive the video.
    /// @param mostSeconds  The thread's processor time for the header and all that is read later.
    static std::unique_ptr<VideoFile> open(
        std::span<const std::uint8_t> bytes, double mostSeconds = kMostSeconds);
    ~VideoFile();
    VideoFile(const VideoFile&) = delete;
    VideoFile& operator=(const VideoFile&) = delete;

    AVFormatContext* context() const;
    std::span<AVStream* const> streams() const;
    /// Null without one; a cover picture is none.
    AVStream* firstVideoStream() const;

private:
    VideoFile(std::span<const std::uint8_t> bytes, double mostSeconds);

    struct State;
    std::unique_ptr<State> _state;
};

/// Whether frames of that stream are of a kind that cameras and phones write.
bool isDecodable(const AVStream& stream);

} // namespace exifcard

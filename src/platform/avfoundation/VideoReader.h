#pragma once

#include "platform/uivalues/Bitmap.h"
#include "platform/uivalues/CGGeometry.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace exifcard {

// What the loadable module of videos offers. Header-only: program and module share no other code.

struct VideoTrack {
    std::string mediaType;    ///< "vide", "soun", "text" or "meta".
    CGSize naturalSize;       ///< In pixels, before the turn; zero for what is no video.
    float frameRate = 0;      ///< Frames a second; 0 for what is no video.
    CGAffineTransform toShow; ///< What turns the frames upright.
    bool isDecodable = false; ///< There are frames of a kind that can be decoded here.
};

struct VideoFacts {
    std::optional<std::int64_t> durationInMicroseconds;
    std::vector<VideoTrack> tracks;                           ///< In the order of the file.
    std::vector<std::pair<std::string, std::string>> entries; ///< Names as the container has them, texts.
};

/// Reads videos. Safe to call on any thread; blocks. The bytes are untrusted; no other file is ever opened.
class VideoReader {
public:
    VideoReader() = default;
    VideoReader(const VideoReader&) = delete;
    VideoReader& operator=(const VideoReader&) = delete;

    /// @return Nothing for what is no video or audio file of a known kind, is cut short before its index, or
    ///         takes too long to read.
    virtual std::optional<VideoFacts> facts(std::span<const std::uint8_t> file) const = 0;

    /// The key frame of the first video track at or before a time, as stored, in RGB.
    /// @param limits  In pixels: the frame is shrunk to fit into it, never enlarged.
    /// @return Nothing when none can be decoded.
    virtual std::optional<Bitmap> frame(
        std::span<const std::uint8_t> file, double seconds, CGSize limits) const = 0;

protected:
    ~VideoReader() = default;
};

/// What the module exports under this name.
using VideoReaderEntry = const VideoReader*();
inline constexpr const char* kVideoReaderEntry = "exifcardVideoReader";

} // namespace exifcard

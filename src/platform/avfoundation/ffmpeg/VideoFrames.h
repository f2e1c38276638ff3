#pragma once

#include "platform/avfoundation/VideoReader.h"
#include "platform/avfoundation/ffmpeg/VideoFile.h"

#include <optional>

namespace exifcard {

/// See `VideoReader::frame`.
std::optional<Bitmap> readVideoFrame(const VideoFile& file, double seconds, CGSize limits);

} // namespace exifcard

#pragma once

#include "platform/avfoundation/VideoReader.h"
#include "platform/avfoundation/ffmpeg/VideoFile.h"

namespace exifcard {

/// What the header tells. Looks at the first frames' packets, and decodes none.
VideoFacts readVideoFacts(const VideoFile& file);

} // namespace exifcard

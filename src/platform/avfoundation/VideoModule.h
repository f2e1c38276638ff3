#pragma once

#include "platform/avfoundation/VideoReader.h"

namespace exifcard {

/// See `VideoReader`. They load the module when they are first called; a missing one is logged once and reads
/// nothing. Any thread; they block.
std::optional<VideoFacts> videoFacts(std::span<const std::uint8_t> file);
std::optional<Bitmap> videoFrame(std::span<const std::uint8_t> file, double seconds, CGSize limits);

} // namespace exifcard

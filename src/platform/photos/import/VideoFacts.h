#pragma once

#include "platform/photos/import/MediaFacts.h"

#include <optional>
#include <string>

namespace exifcard {

/// Reads what the library keeps of a video. Decodes no frame. Any thread; blocks.
/// @param path  A screen recording may be told by its name alone.
/// @return Nothing for what is no video or is damaged beyond reading.
std::optional<MediaFacts> factsOfVideo(const std::string& path);

} // namespace exifcard

#pragma once

#include "platform/foundation/Data.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace exifcard {

struct XmpProperty;

/// Where in a picture's file its short video lies.
struct EmbeddedVideo {
    std::int64_t offset = 0; ///< In bytes from the file's start.
    std::int64_t length = 0;
    bool operator==(const EmbeddedVideo&) const = default;
};

/// The video that a motion photo carries: as the packet's directory of the file's parts tells, by the older
/// offset in the packet, or by the trailer that one maker writes.
/// @return Nothing where there is none, or where something else lies at that place.
std::optional<EmbeddedVideo> embeddedVideo(const Data& file, const std::vector<XmpProperty>& packet);

} // namespace exifcard

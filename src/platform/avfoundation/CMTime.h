#pragma once

#include <cstdint>
#include <limits>

namespace exifcard {

/// A time as a fraction of a second. A timescale of 0 is an indefinite time.
struct CMTime {
    std::int64_t value = 0;
    std::int32_t timescale = 0; ///< How many of `value` make a second.
    bool operator==(const CMTime&) const = default;
};

/// In seconds; NaN for an indefinite time.
inline double CMTimeGetSeconds(const CMTime& time) {
    return time.timescale != 0 ? static_cast<double>(time.value) / time.timescale
                               : std::numeric_limits<double>::quiet_NaN();
}

} // namespace exifcard

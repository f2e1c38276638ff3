#include "platform/foundation/PropertyListDate.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace exifcard::propertylist {
namespace {

constexpr double kMicroseconds = 1e6;

} // namespace

DateParts partsOfDate(Date date) {
    using Limits = std::numeric_limits<std::int32_t>;
    if (std::isnan(date.secondsSince1970)) {
        return {};
    }
    const double sinceEpoch =
        std::clamp<double>(date.secondsSince1970 - kEpochSince1970, Limits::min(), Limits::max());
    const double seconds = std::floor(sinceEpoch);
    const double fraction = sinceEpoch - seconds;
    return {
        static_cast<std::int32_t>(seconds), static_cast<std::int32_t>(std::round(fraction * kMicroseconds))};
}

std::optional<Date> dateWithinRange(Date date) {
    if (!std::isfinite(date.secondsSince1970)) {
        return std::nullopt;
    }
    const auto [seconds, microseconds] = partsOfDate(date);
    return Date{kEpochSince1970 + seconds + microseconds / kMicroseconds};
}

} // namespace exifcard::propertylist

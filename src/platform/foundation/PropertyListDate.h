#pragma once

#include "platform/foundation/Date.h"

#include <cstdint>
#include <optional>

namespace exifcard::propertylist {

/// Seconds from 1970 to the epoch of dates in property lists, 2001-01-01 00:00:00 UTC.
inline constexpr double kEpochSince1970 = 978'307'200;

/// A date as the property-list library takes it: since its epoch, from 1933 to 2068.
struct DateParts {
    std::int32_t seconds = 0;
    std::int32_t microseconds = 0; ///< Counts forward, before the epoch too.
};

/// @param date  One beyond the range comes to its end.
DateParts partsOfDate(Date date);

/// The date as one that was read from either form is: in the range, with whole microseconds.
/// @return Nothing for a number that is none.
std::optional<Date> dateWithinRange(Date date);

} // namespace exifcard::propertylist

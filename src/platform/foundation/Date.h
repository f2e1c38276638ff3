#pragma once

#include <compare>

namespace exifcard {

/// A moment, in seconds since 1970-01-01 00:00:00 UTC; fractions are kept.
struct Date {
    double secondsSince1970 = 0;

    /// The moment of the call.
    static Date now();

    auto operator<=>(const Date&) const = default;
};

} // namespace exifcard

#pragma once

#include "platform/foundation/NumericDatePattern.h"

#include <optional>
#include <string>
#include <string_view>

namespace exifcard {

/// A time as a calendar tells it.
struct CalendarTime {
    WallClock clock;     ///< After the birth of Christ; checked.
    int weekYear = 1970; ///< The year that the week belongs to.
    int weekday = 0;     ///< From Sunday.
};

/// A date pattern in American English, written without ICU: to make its format for one date takes a fifth of
/// the time in which a photo's rows are made.
class EnglishDatePattern {
public:
    /// @return Nothing when the pattern has any letter but y, Y, M, d, E, a, H, h, m and s, or one more often
    /// than its
    ///         plain numbers and its short and long names want.
    static std::optional<EnglishDatePattern> fromPattern(std::string_view pattern);

    std::string text(const CalendarTime& time) const;

private:
    explicit EnglishDatePattern(std::string_view pattern) : _pattern(pattern) {}

    std::string _pattern;
};

} // namespace exifcard

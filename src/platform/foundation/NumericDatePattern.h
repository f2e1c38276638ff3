#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace exifcard {

/// A wall-clock time as it is written; nothing of it is checked.
struct WallClock {
    int year = 1970;
    int month = 1; ///< From 1.
    int day = 1;
    int hour = 0;
    int minute = 0;
    int second = 0;
};

/// A date pattern of numbers only ("yyyy:MM:dd HH:mm:ss"), read without ICU,
/// which takes ten times as long: one is read for every photo.
class NumericDatePattern {
public:
    /// @return Nothing when the pattern has any letter but y, M, d, H, m and s,
    ///         one twice, or two numbers without a sign between them.
    static std::optional<NumericDatePattern> fromPattern(std::string_view pattern);

    /// Reads the whole of `text`. A number may have fewer digits than its
    /// letters ("2020:1:2 3:4:5"), not more.
    std::optional<WallClock> read(std::string_view text) const;

private:
    explicit NumericDatePattern(std::string_view pattern) : _pattern(pattern) {}

    std::string _pattern;
};

} // namespace exifcard

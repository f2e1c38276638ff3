#pragma once

#include "platform/foundation/Date.h"
#include "platform/foundation/Locale.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace exifcard {

/// Reads and writes dates by an ICU pattern, in the system's time zone.
///
/// Thread-safe; making one costs some hundred microseconds, so keep it.
class DateFormatter {
public:
    /// @param pattern  ICU's letters ("yyyy:MM:dd HH:mm:ss"; "YYYY" is the
    ///                 locale's week year). May come from the user: any text is taken.
    explicit DateFormatter(std::string pattern, const Locale& locale = Locale::current());
    ~DateFormatter();
    DateFormatter(const DateFormatter&) = delete;
    DateFormatter& operator=(const DateFormatter&) = delete;

    const std::string& dateFormat() const;

    std::string stringFromDate(Date date) const;
    /// Strict, and the whole text must be used up.
    /// @return Nothing for a text that does not fit the pattern or names no day.
    std::optional<Date> dateFromString(std::string_view text) const;

private:
    class Implementation;
    std::unique_ptr<const Implementation> _implementation;
};

} // namespace exifcard

#include "platform/photos/import/CaptureDate.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstddef>
#include <ctime>
#include <string>

namespace exifcard {
namespace {

constexpr std::size_t kMostFractionDigits = 9;

/// Takes a text apart from its front.
class Scanner {
public:
    explicit Scanner(std::string_view text) : _rest(text) {}

    /// A number of exactly so many digits.
    std::optional<int> number(std::size_t digits) {
        int value = 0;
        const char* const end = _rest.data() + digits;
        if (_rest.size() < digits || std::from_chars(_rest.data(), end, value).ptr != end || value < 0) {
            return std::nullopt;
        }
        _rest.remove_prefix(digits);
        return value;
    }

    bool skip(std::string_view anyOf) {
        const bool isThere = !_rest.empty() && anyOf.find(_rest.front()) != std::string_view::npos;
        _rest.remove_prefix(isThere ? 1 : 0);
        return isThere;
    }

    std::string_view digits() {
        const std::size_t count = std::min(_rest.find_first_not_of("0123456789"), _rest.size());
        const std::string_view found = _rest.substr(0, count);
        _rest.remove_prefix(count);
        return found;
    }

    std::string_view rest() const { return _rest; }

private:
    std::string_view _rest;
};

/// The calendar's day, or nothing for one that it does not have.
std::optional<std::chrono::year_month_day> takeDay(Scanner& text) {
    const auto year = text.number(4);
    text.skip(":-/");
    const auto month = year ? text.number(2) : std::nullopt;
    text.skip(":-/");
    const auto day = month ? text.number(2) : std::nullopt;
    if (!day || *year == 0) {
        return std::nullopt;
    }
    const std::chrono::year_month_day date(std::chrono::year(*year),
        std::chrono::month(static_cast<unsigned>(*month)), std::chrono::day(static_cast<unsigned>(*day)));
    return date.ok() ? std::optional(date) : std::nullopt;
}

/// Seconds since midnight; 0 where the text tells no time.
std::optional<std::chrono::seconds> takeTime(Scanner& text) {
    if (!text.skip(" T")) {
        return std::chrono::seconds(0);
    }
    const auto hour = text.number(2);
    text.skip(":");
    const auto minute = hour ? text.number(2) : std::nullopt;
    const bool hasSeconds = text.skip(":");
    const auto second = hasSeconds ? text.number(2) : std::optional(0);
    constexpr int kLeapSecond = 60;
    if (!minute || !second || *hour > 23 || *minute > 59 || *second > kLeapSecond) {
        return std::nullopt;
    }
    return std::chrono::hours(*hour) + std::chrono::minutes(*minute) + std::chrono::seconds(*second);
}

double secondsOfFraction(std::string_view digits) {
    int value = 0;
    const std::string_view used = digits.substr(0, std::min(digits.size(), kMostFractionDigits));
    std::from_chars(used.data(), used.data() + used.size(), value);
    double seconds = value;
    for (std::size_t digit = 0; digit < used.size(); ++digit) {
        seconds /= 10;
    }
    return seconds;
}

/// "+02:00", "-0330", "+02" or "Z".
std::optional<std::chrono::minutes> offsetFromText(std::string_view text) {
    Scanner offset(text);
    if (offset.skip("Zz")) {
        return std::chrono::minutes(0);
    }
    const bool isWest = text.starts_with('-');
    if (!offset.skip("+-")) {
        return std::nullopt;
    }
    const auto hours = offset.number(2);
    offset.skip(":");
    const int minutes = offset.number(2).value_or(0);
    if (!hours || *hours > 15 || minutes > 59) {
        return std::nullopt;
    }
    const auto magnitude = std::chrono::hours(*hours) + std::chrono::minutes(minutes);
    return isWest ? -magnitude : magnitude;
}

double secondsInLocalZone(const std::chrono::year_month_day& day, std::chrono::seconds time) {
    std::tm local{};
    local.tm_year = static_cast<int>(day.year()) - 1900;
    local.tm_mon = static_cast<int>(static_cast<unsigned>(day.month())) - 1;
    local.tm_mday = static_cast<int>(static_cast<unsigned>(day.day()));
    local.tm_sec = static_cast<int>(time.count()); // It carries over into minutes and hours.
    local.tm_isdst = -1;                           // Summer time as it was on that day.
    return static_cast<double>(std::mktime(&local));
}

} // namespace

std::optional<Date> captureDate(std::string_view text, std::string_view offset, std::string_view fraction) {
    Scanner scanner(text);
    const auto day = takeDay(scanner);
    const auto time = day ? takeTime(scanner) : std::nullopt;
    if (!time) {
        return std::nullopt;
    }
    const std::string_view ownFraction = scanner.skip(".,") ? scanner.digits() : std::string_view();
    const double part = secondsOfFraction(ownFraction.empty() ? fraction : ownFraction);
    const auto ownOffset = offsetFromText(scanner.rest());
    if (const auto zone = ownOffset ? ownOffset : offsetFromText(offset)) {
        const auto moment = std::chrono::sys_days(*day) + *time - *zone;
        return Date{static_cast<double>(moment.time_since_epoch().count()) + part};
    }
    return Date{secondsInLocalZone(*day, *time) + part};
}

} // namespace exifcard

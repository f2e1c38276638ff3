#include "platform/foundation/EnglishDatePattern.h"

#include "platform/foundation/ASCII.h"

#include <algorithm>
#include <iterator>

namespace exifcard {
namespace {

constexpr std::string_view kMonths[] = {"January", "February", "March", "April", "May", "June", "July",
    "August", "September", "October", "November", "December"};
constexpr std::string_view kWeekdays[] = {
    "Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};
constexpr std::size_t kShortName = 3;
constexpr int kHoursOfHalfDay = 12;
constexpr int kYearsOfCentury = 100;

std::string number(int value, std::size_t digits) {
    std::string text = std::to_string(value);
    text.insert(0, digits - std::min(digits, text.size()), '0');
    return text;
}

std::string yearText(int year, std::size_t length) {
    return length == 2 ? number(year % kYearsOfCentury, 2) : number(year, length);
}

std::string year(const CalendarTime& time, std::size_t length) {
    return yearText(time.clock.year, length);
}

std::string weekYear(const CalendarTime& time, std::size_t length) {
    return yearText(time.weekYear, length);
}

std::string month(const CalendarTime& time, std::size_t length) {
    const std::string_view name = kMonths[time.clock.month - 1];
    return length < 3 ? number(time.clock.month, length)
                      : std::string(name.substr(0, length == 3 ? kShortName : name.size()));
}

std::string weekday(const CalendarTime& time, std::size_t length) {
    const std::string_view name = kWeekdays[time.weekday];
    return std::string(name.substr(0, length <= 3 ? kShortName : name.size()));
}

std::string halfDay(const CalendarTime& time, std::size_t /*length*/) {
    return time.clock.hour < kHoursOfHalfDay ? "AM" : "PM";
}

std::string hourOfHalfDay(const CalendarTime& time, std::size_t length) {
    return number((time.clock.hour + kHoursOfHalfDay - 1) % kHoursOfHalfDay + 1, length);
}

template<int WallClock::*part>
std::string plainNumber(const CalendarTime& time, std::size_t length) {
    return number(time.clock.*part, length);
}

struct Field {
    char letter;
    std::size_t mostLetters;
    std::string (*write)(const CalendarTime& time, std::size_t length);
};
constexpr Field kFields[] = {
    {'y', 4, year},
    {'Y', 4, weekYear},
    {'M', 4, month},
    {'d', 2, plainNumber<&WallClock::day>},
    {'E', 4, weekday},
    {'a', 1, halfDay},
    {'H', 2, plainNumber<&WallClock::hour>},
    {'h', 2, hourOfHalfDay},
    {'m', 2, plainNumber<&WallClock::minute>},
    {'s', 2, plainNumber<&WallClock::second>},
};

const Field* fieldOf(char letter) {
    const auto* const found = std::ranges::find(kFields, letter, &Field::letter);
    return found != std::end(kFields) ? found : nullptr;
}

std::size_t runLength(std::string_view pattern) {
    return std::min(pattern.find_first_not_of(pattern.front()), pattern.size());
}

bool isLetter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

} // namespace

std::optional<EnglishDatePattern> EnglishDatePattern::fromPattern(std::string_view pattern) {
    if (!isASCII(pattern)) {
        return std::nullopt;
    }
    for (std::string_view rest = pattern; !rest.empty(); rest.remove_prefix(runLength(rest))) {
        const Field* const field = fieldOf(rest.front());
        const bool isPlain = !isLetter(rest.front()) && rest.front() != '\'';
        if (!isPlain && (field == nullptr || runLength(rest) > field->mostLetters)) {
            return std::nullopt; // A quote is ICU's, too.
        }
    }
    return EnglishDatePattern(pattern);
}

std::string EnglishDatePattern::text(const CalendarTime& time) const {
    std::string text;
    for (std::string_view rest = _pattern; !rest.empty();) {
        const std::size_t length = runLength(rest);
        const Field* const field = fieldOf(rest.front());
        text += field != nullptr ? field->write(time, length) : std::string(rest.substr(0, length));
        rest.remove_prefix(length);
    }
    return text;
}

} // namespace exifcard

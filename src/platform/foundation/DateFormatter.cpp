#include "platform/foundation/DateFormatter.h"

#include "platform/foundation/ASCII.h"
#include "platform/foundation/EnglishDatePattern.h"
#include "platform/foundation/NumericDatePattern.h"

#include <unicode/gregocal.h>
#include <unicode/smpdtfmt.h>

#include <algorithm>
#include <cmath>
#include <mutex>

namespace exifcard {
namespace {

/// No pattern and no date that a person reads is longer; ICU's time and memory grow with both.
constexpr std::size_t kLongestPattern = 1000;
constexpr std::size_t kLongestText = 1000;

constexpr double kMillisecondsInSecond = 1000;
/// Keeps 0.123 s from becoming 122 ms; a date's own precision is coarser than this.
constexpr double kRoundingInMilliseconds = 0.001;
/// About the year 200,000 either way, within what ICU's calendars count.
constexpr double kFurthestSecond = 6e12;

/// An empty calendar of the system's time zone, read anew for each formatter, so that one made later follows
/// the system.
std::unique_ptr<const icu::Calendar> makeCalendar(const icu::Locale& locale) {
    auto status = U_ZERO_ERROR;
    std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::detectHostTimeZone());
    if (zone == nullptr) {
        return nullptr;
    }
    std::unique_ptr<icu::Calendar> calendar(icu::Calendar::createInstance(zone.release(), locale, status));
    if (U_FAILURE(status) != 0) {
        return nullptr;
    }
    calendar->clear();
    calendar->setLenient(static_cast<UBool>(false));
    return calendar;
}

std::unique_ptr<const icu::SimpleDateFormat> makeFormat(
    std::string_view pattern, const icu::Locale& locale, const icu::TimeZone& zone) {
    auto status = U_ZERO_ERROR;
    auto format =
        std::make_unique<icu::SimpleDateFormat>(icu::UnicodeString::fromUTF8(pattern), locale, status);
    if (U_FAILURE(status) != 0) {
        return nullptr;
    }
    format->adoptTimeZone(zone.clone());
    format->setLenient(static_cast<UBool>(false));
    return format;
}

std::optional<Date> dateOfCalendar(const icu::Calendar& calendar) {
    auto status = U_ZERO_ERROR;
    const double milliseconds = calendar.getTime(status);
    return U_FAILURE(status) != 0 ? std::nullopt : std::optional(Date{milliseconds / kMillisecondsInSecond});
}

} // namespace

/// ICU's const functions may be called from many threads; each call fills a calendar of its own.
class DateFormatter::Implementation {
public:
    Implementation(std::string pattern, const Locale& locale)
        : _pattern(std::move(pattern))
        , _locale(locale.identifier().c_str())
        , _calendar(makeCalendar(_locale))
        , _numericPattern(NumericDatePattern::fromPattern(_pattern))
        , _englishPattern(EnglishDatePattern::fromPattern(_pattern)) {
        if (dynamic_cast<const icu::GregorianCalendar*>(_calendar.get()) == nullptr) {
            _numericPattern.reset();
        }
        // Other English countries shorten names in ways of their own.
        if (locale.identifier() != "en_US" || _pattern.size() > kLongestPattern) {
            _englishPattern.reset();
        }
    }

    const std::string& pattern() const { return _pattern; }

    std::string text(Date date) const {
        const double second = std::clamp(date.secondsSince1970, -kFurthestSecond, kFurthestSecond);
        if (std::isnan(second) || _calendar == nullptr) {
            return {};
        }
        auto status = U_ZERO_ERROR;
        const std::unique_ptr<icu::Calendar> calendar(_calendar->clone());
        calendar->setTime(std::floor(second * kMillisecondsInSecond + kRoundingInMilliseconds), status);
        const bool isEnglish =
            _englishPattern && calendar->get(UCAL_ERA, status) == icu::GregorianCalendar::AD;
        return isEnglish ? textInEnglish(*calendar) : textByICU(*calendar);
    }

    std::optional<Date> date(std::string_view text) const {
        if (_calendar == nullptr || text.empty() || text.size() > kLongestText) {
            return std::nullopt;
        }
        // Digits of other scripts are ICU's.
        return _numericPattern && isASCII(text) ? dateByNumbers(text) : dateByICU(text);
    }

private:
    /// Made when first asked for: it is dear, and plain dates need none. Null where ICU
    /// could not make one.
    const icu::SimpleDateFormat* format() const {
        std::call_once(_isFormatMade, [this] {
            if (_calendar != nullptr) {
                _format = makeFormat(
                    std::string_view(_pattern).substr(0, kLongestPattern), _locale, _calendar->getTimeZone());
            }
        });
        return _format.get();
    }

    std::string textInEnglish(const icu::Calendar& calendar) const {
        auto status = U_ZERO_ERROR;
        const auto part = [&](UCalendarDateFields field) { return calendar.get(field, status); };
        return _englishPattern->text({
            .clock = {part(UCAL_YEAR), part(UCAL_MONTH) + 1, part(UCAL_DATE), part(UCAL_HOUR_OF_DAY),
                part(UCAL_MINUTE), part(UCAL_SECOND)},
            .weekYear = part(UCAL_YEAR_WOY),
            .weekday = part(UCAL_DAY_OF_WEEK) - UCAL_SUNDAY,
        });
    }

    std::string textByICU(icu::Calendar& calendar) const {
        if (format() == nullptr) {
            return {};
        }
        icu::UnicodeString unicode;
        icu::FieldPosition ignored;
        std::string text;
        return format()->format(calendar, unicode, ignored).toUTF8String(text);
    }

    std::optional<Date> dateByNumbers(std::string_view text) const {
        const auto clock = _numericPattern->read(text);
        if (!clock) {
            return std::nullopt;
        }
        const std::unique_ptr<icu::Calendar> calendar(_calendar->clone());
        calendar->set(clock->year, clock->month - 1, clock->day, clock->hour, clock->minute, clock->second);
        return dateOfCalendar(*calendar);
    }

    std::optional<Date> dateByICU(std::string_view text) const {
        const auto unicode = icu::UnicodeString::fromUTF8(text);
        // ICU skips blanks in front and leaves what it cannot use at the end.
        const bool startsBlank = u_isUWhiteSpace(unicode.char32At(0)) != 0 && !_pattern.starts_with(' ');
        if (startsBlank || format() == nullptr) {
            return std::nullopt;
        }
        const std::unique_ptr<icu::Calendar> calendar(_calendar->clone());
        icu::ParsePosition position(0);
        format()->parse(unicode, *calendar, position);
        return position.getIndex() == unicode.length() ? dateOfCalendar(*calendar) : std::nullopt;
    }

    const std::string _pattern;
    const icu::Locale _locale;
    const std::unique_ptr<const icu::Calendar> _calendar; ///< Null when ICU could not make one.
    std::optional<NumericDatePattern> _numericPattern;
    std::optional<EnglishDatePattern> _englishPattern;
    mutable std::once_flag _isFormatMade;
    mutable std::unique_ptr<const icu::SimpleDateFormat> _format;
};

DateFormatter::DateFormatter(std::string pattern, const Locale& locale)
    : _implementation(std::make_unique<const Implementation>(std::move(pattern), locale)) {
}

DateFormatter::~DateFormatter() = default;

const std::string& DateFormatter::dateFormat() const {
    return _implementation->pattern();
}

std::string DateFormatter::stringFromDate(Date date) const {
    return _implementation->text(date);
}

std::optional<Date> DateFormatter::dateFromString(std::string_view text) const {
    return _implementation->date(text);
}

} // namespace exifcard

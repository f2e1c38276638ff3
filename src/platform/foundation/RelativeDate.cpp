#include "platform/foundation/RelativeDate.h"

#include <unicode/reldatefmt.h>

#include <cmath>
#include <memory>
#include <mutex>

namespace exifcard {
namespace {

struct Unit {
    URelativeDateTimeUnit unit;
    double seconds;
};

constexpr double kDay = 86400;

/// From the largest; months and years are mean ones.
constexpr Unit kUnits[] = {
    {UDAT_REL_UNIT_YEAR, 365.2425 * kDay},
    {UDAT_REL_UNIT_MONTH, 365.2425 / 12 * kDay},
    {UDAT_REL_UNIT_WEEK, 7 * kDay},
    {UDAT_REL_UNIT_DAY, kDay},
    {UDAT_REL_UNIT_HOUR, 3600},
    {UDAT_REL_UNIT_MINUTE, 60},
};

/// The formatter of a locale; the last one is kept, as making one is dear.
std::shared_ptr<const icu::RelativeDateTimeFormatter> formatterOfLocale(const Locale& locale) {
    static std::mutex mutex;
    static std::string lastIdentifier;                                 // Guarded by mutex.
    static std::shared_ptr<const icu::RelativeDateTimeFormatter> last; // Guarded by mutex.
    const std::lock_guard lock(mutex);
    if (!last || lastIdentifier != locale.identifier()) {
        auto status = U_ZERO_ERROR;
        last = std::make_shared<const icu::RelativeDateTimeFormatter>(
            icu::Locale(locale.identifier().c_str()), status);
        lastIdentifier = locale.identifier();
        if (U_FAILURE(status)) {
            last = nullptr;
        }
    }
    return last;
}

} // namespace

std::string timeAgoSinceNow(Date date, Date now, const Locale& locale) {
    const auto formatter = formatterOfLocale(locale);
    const double seconds = date.secondsSince1970 - now.secondsSince1970;
    if (!formatter || !std::isfinite(seconds)) {
        return {};
    }
    Unit unit{UDAT_REL_UNIT_SECOND, std::abs(seconds) + 1}; // Below a minute: none of them, which is "now".
    for (const Unit& candidate : kUnits) {
        if (std::abs(seconds) >= candidate.seconds) {
            unit = candidate;
            break;
        }
    }
    auto status = U_ZERO_ERROR;
    icu::UnicodeString phrase;
    formatter->format(std::trunc(seconds / unit.seconds), unit.unit, phrase, status);
    std::string text;
    return U_SUCCESS(status) ? phrase.toUTF8String(text) : text;
}

} // namespace exifcard

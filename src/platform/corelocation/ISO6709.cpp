#include "platform/corelocation/ISO6709.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>

namespace exifcard {
namespace {

constexpr std::size_t kLatitudeDegreeDigits = 2;
constexpr std::size_t kLongitudeDegreeDigits = 3;

struct SignedNumber {
    double value = 0;
    std::size_t wholeDigits = 0; ///< Digits before the decimal point.
};

/// Takes a signed decimal number off the front of `rest`. Without one, answers
/// nothing and leaves `rest` as it was.
std::optional<SignedNumber> takeSignedNumber(std::string_view& rest) {
    if (!rest.starts_with('+') && !rest.starts_with('-')) {
        return std::nullopt;
    }
    const std::size_t wholeDigits = std::min(rest.find_first_not_of("0123456789", 1), rest.size()) - 1;
    if (wholeDigits == 0) {
        return std::nullopt;
    }
    // from_chars reads the decimal point alike in every locale; strtod does not.
    double magnitude = 0;
    const char* const end = rest.data() + rest.size();
    const auto parsed = std::from_chars(rest.data() + 1, end, magnitude, std::chars_format::fixed);
    if (parsed.ec != std::errc()) {
        return std::nullopt;
    }
    const double value = rest.front() == '-' ? -magnitude : magnitude;
    rest = std::string_view(parsed.ptr, static_cast<std::size_t>(end - parsed.ptr));
    return SignedNumber{value, wholeDigits};
}

/// The angle in degrees, or nothing when its digits fit none of the three forms
/// or it lies beyond `limit`.
std::optional<double> degreesFromNumber(const SignedNumber& number, std::size_t degreeDigits, double limit) {
    const std::size_t widths[] = {degreeDigits, degreeDigits + 2, degreeDigits + 4};
    if (std::ranges::count(widths, number.wholeDigits) == 0) {
        return std::nullopt;
    }
    double degrees = std::abs(number.value);
    double fraction = 0;
    for (std::size_t digits = number.wholeDigits; digits > degreeDigits; digits -= 2) {
        const double sixtieths = std::fmod(degrees, 100); // Seconds first, then minutes.
        if (sixtieths >= 60) {
            return std::nullopt;
        }
        fraction = (sixtieths + fraction) / 60;
        degrees = std::floor(degrees / 100);
    }
    const double angle = std::copysign(degrees + fraction, number.value);
    return std::abs(angle) <= limit ? std::optional(angle) : std::nullopt;
}

std::optional<double> takeAngle(std::string_view& rest, std::size_t degreeDigits, double limit) {
    const auto number = takeSignedNumber(rest);
    return number ? degreesFromNumber(*number, degreeDigits, limit) : std::nullopt;
}

} // namespace

std::optional<CLLocation> locationFromISO6709(std::string_view text) {
    const auto latitude = takeAngle(text, kLatitudeDegreeDigits, 90);
    const auto longitude = takeAngle(text, kLongitudeDegreeDigits, 180);
    if (!latitude || !longitude) {
        return std::nullopt;
    }
    CLLocation location;
    location.coordinate = {*latitude, *longitude};
    location.horizontalAccuracy = 0;
    if (const auto altitude = takeSignedNumber(text)) {
        location.altitude = altitude->value;
        location.verticalAccuracy = 0;
    }
    // Intended: a missing '/' or a reference system name after the numbers is no fault, cameras differ here.
    return location;
}

} // namespace exifcard

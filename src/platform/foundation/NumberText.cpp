#include "platform/foundation/NumberText.h"

#include <fmt/format.h>

#include <charconv>
#include <cmath>
#include <limits>

namespace exifcard {
namespace {

constexpr std::string_view kWhiteSpace = " \t\n\r\v\f";

std::string_view withoutLeading(std::string_view text, std::string_view characters) {
    const auto first = text.find_first_not_of(characters);
    return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

/// Takes an optional sign off the front of `text`; true for a minus.
bool takeSign(std::string_view& text) {
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    return isNegative;
}

} // namespace

std::int64_t integerFromText(std::string_view text) {
    text = withoutLeading(text, kWhiteSpace);
    const bool isNegative = takeSign(text);
    std::uint64_t magnitude = 0;
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), magnitude);
    using Limits = std::numeric_limits<std::int64_t>;
    constexpr auto kLargest = static_cast<std::uint64_t>(Limits::max());
    if (parsed.ec == std::errc::result_out_of_range || magnitude > kLargest) {
        return isNegative ? Limits::min() : Limits::max();
    }
    const auto number = static_cast<std::int64_t>(magnitude);
    return isNegative ? -number : number;
}

double doubleFromText(std::string_view text) {
    text = withoutLeading(text, kWhiteSpace);
    const bool isNegative = takeSign(text);
    // from_chars would read "inf" and "nan", which are no numbers here.
    if (text.empty() || (text.front() != '.' && (text.front() < '0' || text.front() > '9'))) {
        return 0;
    }
    double magnitude = 0;
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), magnitude);
    if (parsed.ec == std::errc::result_out_of_range) {
        // Intended: the platform answers an infinity for a number too large and 0 for one too small.
        const std::string_view exponent = text.substr(0, static_cast<std::size_t>(parsed.ptr - text.data()));
        const bool isTiny = exponent.find("e-") != exponent.npos || exponent.find("E-") != exponent.npos ||
                            exponent.starts_with("0.") || exponent.starts_with('.');
        magnitude = isTiny ? 0 : std::numeric_limits<double>::infinity();
    }
    return isNegative ? -magnitude : magnitude;
}

bool boolFromText(std::string_view text) {
    text = withoutLeading(text, kWhiteSpace);
    takeSign(text);
    text = withoutLeading(text, "0");
    return !text.empty() && std::string_view("YyTt123456789").find(text.front()) != std::string_view::npos;
}

std::string textFromDouble(double number) {
    // A not-a-number has no sign, whatever its sign bit says.
    return std::isnan(number) ? "nan" : fmt::format("{:.16g}", number);
}

std::string textFromFloat(float number) {
    return std::isnan(number) ? "nan" : fmt::format("{:.7g}", number);
}

std::int64_t saturatingInteger(double number) {
    if (std::isnan(number)) {
        return 0;
    }
    using Limits = std::numeric_limits<std::int64_t>;
    constexpr double kTwoToThe63 = 9223372036854775808.0;
    if (number >= kTwoToThe63) {
        return Limits::max();
    }
    if (number < -kTwoToThe63) {
        return Limits::min();
    }
    return static_cast<std::int64_t>(number);
}

} // namespace exifcard

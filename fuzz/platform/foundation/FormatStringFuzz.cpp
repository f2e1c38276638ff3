#include "platform/foundation/FormatString.h"

#include "platform/foundation/Array.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>

namespace exifcard {
namespace {

/// The largest double with the highest precision.
constexpr std::size_t kLongestField = 1100;

void require(bool isTrue) {
    if (!isTrue) {
        std::abort();
    }
}

/// Whether C may be given the format with one double: one conversion and nothing that takes an argument more.
bool isOneReal(std::string_view format) {
    constexpr std::size_t kLongestSafeFormat = 8;
    return format.size() >= 2 && format.size() <= kLongestSafeFormat && format.starts_with('%') &&
           std::string_view("feEgGaA").find(format.back()) != std::string_view::npos &&
           format.substr(1, format.size() - 2).find_first_not_of("-+ #0123456789.") == std::string_view::npos;
}

void requireTheSameAsC(const std::string& format, double number) {
    const auto text = stringWithFormat(format, {number});
    if (text == format) {
        return; // Wider or more exact than is taken.
    }
    std::array<char, 2 * kLongestField> buffer = {};
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    const int length = std::snprintf(buffer.data(), buffer.size(), format.c_str(), number);
#pragma GCC diagnostic pop
    require(length < 0 || text == buffer.data());
}

} // namespace

/// The first line is a format, the rest its translation.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    const std::string_view text(reinterpret_cast<const char*>(bytes), count);
    const std::string format(text.substr(0, text.find('\n')));
    const auto translated = text.substr(std::min(format.size() + 1, text.size()));

    const Value list(Array::make({1, "two"}));
    const auto filled = stringWithFormat(format, {"text", 42, 2.5, list, -1});
    const auto percents = static_cast<std::size_t>(std::ranges::count(format, '%'));
    require(filled.size() <= format.size() + percents * kLongestField);
    require(percents > 0 || filled == format);

    const bool agree = formatsAgree(format, translated);
    require(agree == formatsAgree(translated, format));
    require(!agree || formatsAgree(format, format));
    if (isOneReal(format)) {
        requireTheSameAsC(format, 0);
        requireTheSameAsC(format, -1234.5678);
        requireTheSameAsC(format, 2.5e-7);
    }
    return 0;
}

} // namespace exifcard

#include "platform/foundation/DateFormatter.h"

#include "platform/foundation/NumericDatePattern.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace exifcard {
namespace {

constexpr std::size_t kLongestDate = 100'000;
constexpr Date kMoment{1577707506};

void require(bool isTrue) {
    if (!isTrue) {
        std::abort();
    }
}

bool hasWholeDay(std::string_view pattern) {
    return std::ranges::all_of(std::string_view("yMdHms"),
        [&](char letter) { return pattern.find(letter) != std::string_view::npos; });
}

} // namespace

/// The first line is a user's pattern, the rest a text of a file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    const std::string_view input(reinterpret_cast<const char*>(bytes), count);
    const std::string pattern(input.substr(0, input.find('\n')));
    const auto text = input.substr(std::min(pattern.size() + 1, input.size()));

    const DateFormatter formatter(pattern, Locale("en_US"));
    const auto written = formatter.stringFromDate(kMoment);
    require(formatter.dateFormat() == pattern && written.size() < kLongestDate);
    formatter.dateFromString(text);
    if (NumericDatePattern::fromPattern(pattern) && hasWholeDay(pattern)) {
        require(formatter.dateFromString(written) == kMoment); // Written by ICU, read by ourselves.
    }

    static const DateFormatter metadata("yyyy:MM:dd HH:mm:ss", Locale::system());
    if (const auto date = metadata.dateFromString(text)) {
        require(metadata.dateFromString(metadata.stringFromDate(*date)) == date);
    }
    return 0;
}

} // namespace exifcard

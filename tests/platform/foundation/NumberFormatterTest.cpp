#include "platform/foundation/NumberFormatter.h"

#include <gtest/gtest.h>

namespace exifcard {
namespace {

using Style = NumberFormatter::Style;
using Mode = NumberFormatter::RoundingMode;

TEST(NumberFormatterTest, WritesByStyleDigitsAndRounding) {
    struct Case {
        NumberFormatter::Options options;
        const char* locale;
        double number;
        std::string_view text;
    };
    constexpr NumberFormatter::Options kUpward = {Style::None, 1, Mode::Ceiling};
    constexpr NumberFormatter::Options kHalfDown = {Style::Decimal, 1, Mode::HalfDown};
    const Case cases[] = {
        {kUpward, "en_US", 12.1928, "12.2"},
        {kUpward, "en_US", 12.11, "12.2"},
        {kUpward, "en_US", 1, "1"},
        {kUpward, "en_US", 0, "0"},
        {kUpward, "en_US", 1000.01, "1000.1"},
        {kUpward, "en_US", 0.3072, ".4"},
        {kHalfDown, "en_US", 2.799, "2.8"},
        {kHalfDown, "en_US", 4, "4"},
        {kHalfDown, "en_US", 2.25, "2.2"},
        {kHalfDown, "en_US", 2.35, "2.3"},
        {kHalfDown, "en_US", 0.5, "0.5"},
        {kHalfDown, "en_US", 1.15F, "1.1"},
        {kHalfDown, "en_US", 1234.56, "1,234.6"},
        {kHalfDown, "de_DE", 1234.56, "1.234,6"},
        {{Style::Decimal, 0, Mode::Floor}, "en_US", -1.5, "-2"},
        {{Style::Decimal, 0, Mode::Down}, "en_US", -1.5, "-1"},
        {{Style::Decimal, 0, Mode::Up}, "en_US", 1.1, "2"},
        {{Style::Decimal, 0, Mode::HalfEven}, "en_US", 2.5, "2"},
        {{Style::Decimal, 0, Mode::HalfUp}, "en_US", 2.5, "3"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(NumberFormatter(c.options, Locale(c.locale)).stringFromNumber(c.number), c.text);
    }
}

} // namespace
} // namespace exifcard

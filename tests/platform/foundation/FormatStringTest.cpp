#include "platform/foundation/FormatString.h"

#include "platform/foundation/Array.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>

namespace exifcard {
namespace {

TEST(FormatStringTest, FillsTexts) {
    struct Case {
        const char* format;
        std::initializer_list<FormatArgument> arguments;
        std::string_view text;
    };
    const Value nothingAtAll;
    const Value list(Array::make({1}));
    const Case cases[] = {
        {"", {}, ""},
        {"100%% of %@", {"all"}, "100% of all"},
        {"%@ is %@", {nothingAtAll, list}, "(null) is (\n    1\n)"},
        {"%2$@ %1$@ %2$@", {"a", "b"}, "b a b"},
        {"%2$ld of %1$@", {"a", 7}, "7 of a"},
        {"[%5@|%-5@|%.2@|%5.1@]", {"\u00E9", "\u00E9", "\u00E9\u00E8\u00EA", "ab"},
            "[    \u00E9|\u00E9    |\u00E9\u00E8|    a]"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.format);
        EXPECT_EQ(stringWithFormat(c.format, c.arguments), c.text);
    }
}

TEST(FormatStringTest, LeavesWhatDoesNotFitAsItWasWritten) {
    struct Case {
        const char* format;
        std::initializer_list<FormatArgument> arguments;
        std::string_view text;
    };
    const Case cases[] = {
        {"%d", {}, "%d"},
        {"%@ %@", {"a"}, "a %@"},
        {"%d %@ %f", {"a", 1, 2}, "%d %@ %f"},
        {"%d %d", {1.5, 2}, "%d 2"},
        {"%s %n %p %c %*d", {"a", 1}, "%s %n %p %c %*d"},
        {"50%", {1}, "50%"},
        {"%5", {1}, "%5"},
        {"%0$d %33$d %99999999999999999999$d", {1}, "%0$d %33$d %99999999999999999999$d"},
        {"%999999d %.999999f", {1, 1.5}, "%999999d %.999999f"},
        {"%\xC3\xA9", {1}, "%\xC3\xA9"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.format);
        EXPECT_EQ(stringWithFormat(c.format, c.arguments), c.text);
    }
}

/// What the C library writes, the reference for all numbers.
template<typename Number>
std::string byC(const char* format, Number number) {
    std::array<char, 2048> buffer = {};
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    std::snprintf(buffer.data(), buffer.size(), format, number);
#pragma GCC diagnostic pop
    return buffer.data();
}

TEST(FormatStringTest, WritesIntegersAsC) {
    constexpr const char* kFormats[] = {"%ld", "%li", "%lu", "%lx", "%lX", "%lo", "%lld", "%qd", "%zu", "%jd",
        "%td", "%5ld", "%-5ld|", "%05ld", "%-05ld|", "%+ld", "% ld", "%+ ld", "%.3ld", "%08.3ld", "%.0ld",
        "%#lx", "%#lX", "%#010lx", "%#lo", "%#.0lo", "%+lu", "%200ld", "%.200ld"};
    constexpr const char* kShortFormats[] = {"%d", "%i", "%u", "%x", "%02X", "%hd", "%hu", "%hhd", "%hhx"};
    constexpr std::int64_t kNumbers[] = {0, 1, -1, 9, 123456, -123456, 2147483648, -2147483649, 0xFFFFFFFF,
        0x1FF, std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::min()};
    for (const std::int64_t number : kNumbers) {
        for (const char* const format : kFormats) {
            SCOPED_TRACE(format);
            EXPECT_EQ(stringWithFormat(format, {number}), byC(format, number));
        }
        for (const char* const format : kShortFormats) {
            SCOPED_TRACE(format);
            EXPECT_EQ(stringWithFormat(format, {number}), byC(format, static_cast<int>(number)));
        }
    }
}

TEST(FormatStringTest, WritesRealsAsC) {
    constexpr const char* kFormats[] = {"%f", "%F", "%e", "%E", "%g", "%G", "%a", "%A", "%.0f", "%0.1f",
        "%0.2f", "%.5f", "%.1e", "%.0e", "%.0g", "%.3g", "%.17g", "%10.2f|", "%-10.2f|", "%010.2f", "%+.1f",
        "% .1f", "%+09.1f", "%#.0f", "%#.0e", "%#g", "%#.3g", "%.3a", "%.0a", "%.60f", "%.512f", "%lf",
        "%Lf"};
    std::vector<double> numbers = {0, -0.0, 0.05, 0.25, 0.35, 0.5, 1.5, 2.5, 0.125, -2.675, 1e15, 1e16,
        123456.789, 1e-5, 1e-320, 1e300, std::numeric_limits<double>::max(),
        std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
        std::numeric_limits<double>::quiet_NaN()};
    std::mt19937_64 random(20200102);
    while (numbers.size() < 400) {
        const auto any = std::bit_cast<double>(random());
        numbers.push_back(std::isfinite(any) ? any : 0);
        numbers.push_back(static_cast<double>(random() % 100000) / 1000);
    }
    for (const double number : numbers) {
        for (const char* const format : kFormats) {
            SCOPED_TRACE(format);
            const std::string expected =
                std::string_view(format) == "%Lf" ? byC("%f", number) : byC(format, number);
            EXPECT_EQ(stringWithFormat(format, {number}), expected);
        }
    }
    EXPECT_EQ(stringWithFormat("%.1f %F", {-std::nan(""), -std::nan("")}), "nan NAN");
}

TEST(FormatStringTest, TellsWhichTranslationsTakeTheSameArguments) {
    struct Case {
        std::string_view original;
        std::string_view translated;
        bool agree;
    };
    constexpr Case cases[] = {
        {"All", "Alle", true},
        {"%@ of %ld", "%@ von %ld", true},
        {"%@ of %ld", "%2$ld: %1$@", true},
        {"%0.2f%%", "%.1f %%", true},
        {"%@ of %ld", "%ld von %@", false},
        {"%@ of %ld", "%@", false},
        {"%@", "%@ %@", false},
        {"%@", "%s", false},
        {"%@", "%1$@ %1$d", false},
        {"%d", "%x", true},
        {"%d", "%f", false},
        {"All", "All %n", false},
        {"%@", "%100$@", false},
        {"100% sure", "100% sicher", false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.translated);
        EXPECT_EQ(formatsAgree(c.original, c.translated), c.agree);
    }
}

} // namespace
} // namespace exifcard

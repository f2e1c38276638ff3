#include "platform/foundation/ByteCountFormatter.h"

#include <gtest/gtest.h>

#include <limits>

namespace exifcard {
namespace {

const Locale kAmerican("en_US");

TEST(ByteCountFormatterTest, CountsInTheUnitThatReadsBest) {
    struct Case {
        std::int64_t count;
        std::string_view byDefault;
        std::string_view exact;
    };
    constexpr Case cases[] = {
        {0, "Zero KB", "Zero KB"},
        {1, "1 byte", "1 byte"},
        {-1, "-1 byte", "-1 byte"},
        {999, "999 bytes", "999 bytes"},
        {1000, "1 KB", "1.00 KB (1,000 bytes)"},
        {1024, "1 KB", "1.02 KB (1,024 bytes)"},
        {1500, "2 KB", "1.50 KB (1,500 bytes)"},
        {9996, "10 KB", "10.0 KB (9,996 bytes)"},
        {11999, "12 KB", "12.0 KB (11,999 bytes)"},
        {900000, "900 KB", "900 KB (900,000 bytes)"},
        {999999, "1 MB", "1.00 MB (999,999 bytes)"},
        {2500000, "2.5 MB", "2.50 MB (2,500,000 bytes)"},
        {5000000, "5 MB", "5.00 MB (5,000,000 bytes)"},
        {12345678, "12.3 MB", "12.3 MB (12,345,678 bytes)"},
        {123456789, "123.5 MB", "123 MB (123,456,789 bytes)"},
        {999900000, "999.9 MB", "1.00 GB (999,900,000 bytes)"},
        {1500000000, "1.5 GB", "1.50 GB (1,500,000,000 bytes)"},
        {12345678987, "12.35 GB", "12.3 GB (12,345,678,987 bytes)"},
        {-1234567898, "-1.23 GB", "-1.23 GB (-1,234,567,898 bytes)"},
        {std::numeric_limits<std::int64_t>::min(), "-9.22 EB", "-9.22 EB (-9,223,372,036,854,775,808 bytes)"},
    };
    const ByteCountFormatter byDefault({}, kAmerican);
    const ByteCountFormatter exact(
        {.isAdaptive = false, .zeroPadsFractionDigits = true, .includesActualByteCount = true}, kAmerican);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.count);
        EXPECT_EQ(byDefault.stringFromByteCount(c.count), c.byDefault);
        EXPECT_EQ(exact.stringFromByteCount(c.count), c.exact);
    }
}

TEST(ByteCountFormatterTest, MemoryCountsIn1024s) {
    const ByteCountFormatter memory({.countStyle = ByteCountFormatter::CountStyle::Memory}, kAmerican);
    EXPECT_EQ(memory.stringFromByteCount(1000), "1,000 bytes");
    EXPECT_EQ(memory.stringFromByteCount(1024), "1 KB");
    EXPECT_EQ(memory.stringFromByteCount(1024 * 1024 * 3 / 2), "1.5 MB");
}

TEST(ByteCountFormatterTest, NumbersFollowTheLocale) {
    const ByteCountFormatter german({.includesActualByteCount = true}, Locale("de_DE"));
    EXPECT_EQ(german.stringFromByteCount(2500000), "2,5 MB (2.500.000 bytes)");
}

} // namespace
} // namespace exifcard

#include "platform/imageio/TiffValue.h"

#include "platform/foundation/Array.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace exifcard {
namespace {

using namespace std::string_view_literals;

/// An entry over the given bytes; `count` elements of `type`.
TiffEntry entryOf(
    TiffType type, std::uint32_t count, std::string_view bytes, ByteOrder order = ByteOrder::Big) {
    const std::span raw(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    return {.tag = 0, .type = type, .count = count, .bytes = raw, .order = order};
}

TEST(TiffValueTest, ReadsEveryTypeOfNumber) {
    struct Case {
        TiffType type;
        std::string_view bytes;
        Value integer;
        Value real;
    };
    const Case cases[] = {
        {TiffType::Byte, "\xff"sv, 255, 255.0},
        {TiffType::SignedByte, "\xff"sv, -1, -1.0},
        {TiffType::Short, "\xff\xfe"sv, 65534, 65534.0},
        {TiffType::SignedShort, "\xff\xfe"sv, -2, -2.0},
        {TiffType::Long, "\xff\xff\xff\xff"sv, std::int64_t(4294967295), 4294967295.0},
        {TiffType::SignedLong, "\xff\xff\xff\xff"sv, -1, -1.0},
        {TiffType::Rational, "\0\0\0\1\0\0\0\4"sv, 0, 0.25},
        {TiffType::SignedRational, "\xff\xff\xff\xff\0\0\0\3"sv, 0, -1.0 / 3},
        {TiffType::Rational, "\0\0\0\1\0\0\0\0"sv, Value(), Value()},
        {TiffType::SignedRational, "\x80\0\0\0\xff\xff\xff\xff"sv, std::int64_t(2147483648), 2147483648.0},
        {TiffType::Float, "\x3f\xc0\0\0"sv, 1, 1.5},
        {TiffType::Float, "\x7f\xc0\0\0"sv, Value(), Value()}, // Not a number.
        {TiffType::Double, "\xc0\x04\0\0\0\0\0\0"sv, -2, -2.5},
        {TiffType::Ascii, "7"sv, Value(), Value()},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.real.description());
        EXPECT_EQ(integerFromEntry(entryOf(c.type, 1, c.bytes)), c.integer);
        EXPECT_EQ(realFromEntry(entryOf(c.type, 1, c.bytes)), c.real);
    }
    EXPECT_EQ(integerFromEntry(entryOf(TiffType::Short, 1, "\1\0"sv, ByteOrder::Little)), Value(1));
    EXPECT_EQ(integerFromEntry(entryOf(TiffType::Short, 2, "\0\1\0\2"sv)), Value(Array::make({1, 2})));
    EXPECT_EQ(integersFromEntry(entryOf(TiffType::Short, 1, "\0\1"sv)), Value(Array::make({1})));
}

TEST(TiffValueTest, MakesEveryTextValidUtf8) {
    struct Case {
        std::string_view bytes;
        Value text;
    };
    const Case cases[] = {
        {"NIKON\0rest"sv, "NIKON"},
        {"\0NIKON"sv, Value()},
        {"  "sv, "  "},
        {"Z\xc3\xbcrich"sv, "Z\xc3\xbcrich"},
        {"Z\xfcrich"sv, "Z\xc3\xbcrich"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.bytes);
        const auto count = static_cast<std::uint32_t>(c.bytes.size());
        EXPECT_EQ(textFromEntry(entryOf(TiffType::Ascii, count, c.bytes)), c.text);
    }
}

TEST(TiffValueTest, TakesTheCharacterSetOffAComment) {
    struct Case {
        std::string_view bytes;
        ByteOrder order;
        Value text;
    };
    const Case cases[] = {
        {"ASCII\0\0\0A comment  \0"sv, ByteOrder::Big, "A comment"},
        {"\0\0\0\0\0\0\0\0Z\xc3\xbcrich"sv, ByteOrder::Big, "Z\xc3\xbcrich"},
        {"UNICODE\0\0Z\0\xfc"sv, ByteOrder::Big, "Z\xc3\xbc"},
        {"UNICODE\0Z\0\xfc\0"sv, ByteOrder::Little, "Z\xc3\xbc"},
        {"UNICODE\0\xff\xfeZ\0"sv, ByteOrder::Big, "Z"},
        {"JIS\0\0\0\0\0\x1b$B\x46\x7c\x1b(B"sv, ByteOrder::Big, "\xe6\x97\xa5"},
        {"no prefix"sv, ByteOrder::Big, "no prefix"},
        {"ASCII\0\0\0     \0\0"sv, ByteOrder::Big, Value()},
        {"ASCI"sv, ByteOrder::Big, "ASCI"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.bytes);
        const auto count = static_cast<std::uint32_t>(c.bytes.size());
        EXPECT_EQ(commentFromEntry(entryOf(TiffType::Undefined, count, c.bytes, c.order)), c.text);
    }
}

TEST(TiffValueTest, DropsALastZeroOfAVersion) {
    const std::pair<std::string_view, Value> versions[] = {
        {"0210", Array::make({2, 1})},
        {"0221", Array::make({2, 2, 1})},
        {"0100", Array::make({1, 0})},
        {"02a0", Value()},
        {"021", Value()},
    };
    for (const auto& [digits, version] : versions) {
        EXPECT_EQ(versionFromDigits(digits), version) << digits;
    }
}

TEST(TiffValueTest, ReadsAnglesAndTimesOfThreeFractions) {
    const auto fractions = [](std::string_view bytes) { return entryOf(TiffType::Rational, 3, bytes); };
    // 33° 27' 12.48", with hundredths of seconds.
    EXPECT_DOUBLE_EQ(
        angleFromEntry(fractions("\0\0\0\x21\0\0\0\1\0\0\0\x1b\0\0\0\1\0\0\4\xe0\0\0\0\x64"sv)).doubleValue(),
        33 + 27 / 60.0 + 12.48 / 3600);
    EXPECT_TRUE(angleFromEntry(fractions("\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"sv)).isNothing());
    EXPECT_EQ(timeOfDayFromEntry(fractions("\0\0\0\x0f\0\0\0\1\0\0\0\x05\0\0\0\1\0\0\0\x18\0\0\0\1"sv)),
        Value("15:05:24"));
    EXPECT_EQ(timeOfDayFromEntry(fractions("\0\0\0\x0f\0\0\0\1\0\0\0\x05\0\0\0\1\0\0\4\xe0\0\0\0\x64"sv)),
        Value("15:05:12.48"));
    EXPECT_TRUE(timeOfDayFromEntry(fractions("\0\0\0\x18\0\0\0\1\0\0\0\x05\0\0\0\1\0\0\0\x18\0\0\0\1"sv))
                    .isNothing());
}

} // namespace
} // namespace exifcard

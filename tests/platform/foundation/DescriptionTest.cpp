#include "platform/foundation/Array.h"
#include "platform/foundation/Dictionary.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace exifcard {
namespace {

Data countingBytes(std::uint8_t count) {
    std::vector<std::uint8_t> bytes;
    for (std::uint8_t byte = 0; byte < count; ++byte) {
        bytes.push_back(byte);
    }
    return Data::fromBytes(std::move(bytes));
}

TEST(DescriptionTest, WritesEachKindAsThePlatformDoes) {
    struct Case {
        Value value;
        std::string_view text;
    };
    const Case cases[] = {
        {Value(), "(null)"},
        {true, "1"},
        {false, "0"},
        {std::numeric_limits<std::int64_t>::min(), "-9223372036854775808"},
        {4.0, "4"},
        {0.1 + 0.2, "0.3"},
        {1.0 / 33, "0.0303030303030303"},
        {1e17, "1e+17"},
        {1e-5, "1e-05"},
        {std::numeric_limits<double>::infinity(), "inf"},
        {-std::nan(""), "nan"},
        {2.8F, "2.8"},
        {269.0F / 256, "1.050781"},
        {"say \"hi\"", "say \"hi\""},
        {Date{1577934245}, "2020-01-02 03:04:05 +0000"},
        {Date{-0.5}, "1969-12-31 23:59:59 +0000"},
        {Data(), "{length = 0, bytes = 0x}"},
        {Data::fromBytes({0xA0, 0x02, 0x8D}), "{length = 3, bytes = 0xa0028d}"},
        {countingBytes(24), "{length = 24, bytes = 0x000102030405060708090a0b0c0d0e0f1011121314151617}"},
        {countingBytes(40), "{length = 40, bytes = 0x00010203 04050607 ... 24252627 }"},
        {Array::make(), "(\n)"},
        {Dictionary::make(), "{\n}"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(c.value.description(), c.text);
    }
}

TEST(DescriptionTest, QuotesWhatIsNoWordInsideAContainer) {
    struct Case {
        Value value;
        std::string_view text;
    };
    const Case cases[] = {
        {24, "24"},
        {-2, "\"-2\""},
        {1.8, "\"1.8\""},
        {"RGB_$1", "RGB_$1"},
        {"", "\"\""},
        {"WGS-84", "\"WGS-84\""},
        {"a\"b\\c\nd\te", R"("a\"b\\c\nd\te")"},
        {"C\xC3\xB3rdoba", R"("C\U00f3rdoba")"},
        {"\xF0\x9F\x93\xB7", R"("\Ud83d\Udcf7")"},
        {"\xFF", R"("\Ufffd")"},
        {Value(), "\"<null>\""},
        {Date{0}, "\"1970-01-01 00:00:00 +0000\""},
        {Data::fromBytes({1}), "{length = 1, bytes = 0x01}"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(Value(Array::make({c.value})).description(), "(\n    " + std::string(c.text) + "\n)");
    }
}

TEST(DescriptionTest, IndentsWhatIsNested) {
    const auto lens = Array::make({24, 70, 2.8});
    const auto exif =
        Dictionary::make({{"LensInfo", lens}, {"Lens Model", "24-70"}, {"Empty", Array::make()}});
    EXPECT_EQ(Value(Dictionary::make({{"{Exif}", exif}, {"Depth", 8}})).description(),
        R"({
    Depth = 8;
    "{Exif}" =     {
        Empty =         (
        );
        "Lens Model" = "24-70";
        LensInfo =         (
            24,
            70,
            "2.8"
        );
    };
})");
    EXPECT_EQ(
        Value(Array::make({Array::make({1}), 2})).description(), "(\n        (\n        1\n    ),\n    2\n)");
}

TEST(DescriptionTest, EndsForAContainerThatHoldsItself) {
    const auto twice = Array::make();
    twice->addObject(twice);
    twice->addObject(twice);
    const auto text = Value(twice).description();
    EXPECT_NE(text.find("..."), std::string::npos);
    EXPECT_LT(text.size(), 10'000'000U);
    *twice = Array(); // Breaks the circle.
}

} // namespace
} // namespace exifcard

#include "platform/foundation/PropertyList.h"

#include "platform/foundation/Array.h"
#include "platform/foundation/Dictionary.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace exifcard {
namespace {

Data sample(const std::string& name) {
    const auto data = Data::mappedFile(std::string(EXIFCARD_TEST_DATA "/propertylists/") + name);
    EXPECT_TRUE(data) << name;
    return data.value_or(Data());
}

Data bytesOf(std::initializer_list<std::uint8_t> bytes) {
    return Data::fromBytes(bytes);
}

std::string repeated(std::string_view text, std::size_t count) {
    std::string result;
    for (std::size_t index = 0; index < count; ++index) {
        result += text;
    }
    return result;
}

/// What kinds.plist and kinds.bplist hold, written by an independent program.
Value kinds() {
    return Dictionary::make({
        {"isDarkModeOn", true},
        {"numberOfExifCardFlips", -3},
        {"big", std::numeric_limits<std::int64_t>::max()},
        {"ratio", 0.1},
        {"albumNameAfterEditingEXIF", "Für dich & <mich> 😀"},
        {"empty", ""},
        {"since", Date{1577934245}},
        {"early", Date{-2}},
        {"bytes", bytesOf({0, 1, 2, 255})},
        {"nested", Dictionary::make({{"list", Array::make({1, "two", Array::make(), Dictionary::make()})}})},
    });
}

TEST(PropertyListTest, ReadsWhatOthersWroteAndKeepsEveryKind) {
    for (const char* name : {"kinds.plist", "kinds.bplist"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(propertylist::read(sample(name)), kinds());
    }
}

TEST(PropertyListTest, ReadsBackWhatItWrote) {
    EXPECT_EQ(propertylist::read(propertylist::writeXML(kinds())), kinds());
    EXPECT_EQ(propertylist::read(propertylist::writeBinary(kinds())), kinds());
    for (const Value& value :
        {Value(std::numeric_limits<std::int64_t>::min()), Value(1e-300), Value(false)}) {
        SCOPED_TRACE(static_cast<int>(value.kind()));
        EXPECT_EQ(propertylist::read(propertylist::writeXML(value)), value);
        EXPECT_EQ(propertylist::read(propertylist::writeBinary(value)), value);
    }
    EXPECT_EQ(propertylist::read(propertylist::writeXML(0.5F)), Value(0.5));
    EXPECT_TRUE(propertylist::writeXML(Value()).empty());
}

TEST(PropertyListTest, ATextKeepsOnlyWhatXMLCanHold) {
    const std::string text = std::string("a\0b\x01\tc\xff\xc3", 8) + "é\xed\xa0\x80";
    const Value expected = "a\uFFFDb\uFFFD\tc\uFFFD\uFFFDé\uFFFD\uFFFD\uFFFD";
    EXPECT_EQ(propertylist::read(propertylist::writeXML(text)), expected);
    EXPECT_EQ(propertylist::read(propertylist::writeBinary(text)), expected);
}

TEST(PropertyListTest, RefusesHostileBytes) {
    for (const char* name : {"array-in-itself.bplist", "billion-objects.bplist", "gigabytes-of-text.bplist",
             "nested-65-deep.bplist", "text-past-end.bplist", "size-is-no-number.bplist",
             "table-past-end.bplist", "root-past-end.bplist", "key-with-zero.bplist",
             "count-of-objects-huge.bplist"}) {
        SCOPED_TRACE(name);
        EXPECT_FALSE(propertylist::read(sample(name)));
    }
    const std::string texts[] = {
        "",
        "no list",
        "bplist00",
        "<plist><dict><key>a</key></plist>",
        "<plist><string>" + repeated("&lt;", 100'000) + "</string></plist>",
        "<plist>" + repeated("<array>", 65) + "<true/>" + repeated("</array>", 65) + "</plist>",
        repeated("<array>", 500'000),
        "<plist><string>" + repeated("a", 4'200'000) + "</string></plist>",
    };
    for (const std::string& text : texts) {
        SCOPED_TRACE(text.substr(0, 40));
        EXPECT_FALSE(propertylist::read(Data::fromText(text)));
    }
}

TEST(PropertyListTest, StaysWithinLimitsWhicheverByteIsDamaged) {
    const Data list = sample("kinds.bplist");
    const auto whole = list.bytes();
    for (std::size_t position = 0; position < whole.size(); ++position) {
        for (const std::uint8_t damage : std::initializer_list<std::uint8_t>{0x00, 0x7f, 0x80, 0xff}) {
            std::vector<std::uint8_t> bytes(whole.begin(), whole.end());
            bytes[position] = damage;
            const auto value = propertylist::read(Data::fromBytes(std::move(bytes)));
            EXPECT_LT(value ? propertylist::writeXML(*value).size() : 0, 100'000U) << position;
        }
    }
}

TEST(PropertyListTest, AChangeLeavesTheOtherEntriesAndTheFormAlone) {
    for (const char* name : {"kinds.plist", "kinds.bplist", "field-list.keyedarchive"}) {
        SCOPED_TRACE(name);
        // Once through the writer, whose bytes are the ones to compare.
        const auto before = propertylist::withChanges(sample(name), {});
        ASSERT_TRUE(before);
        const auto added = propertylist::withChanges(*before, {{"new", 7}, {"newer", "x"}});
        ASSERT_TRUE(added);
        EXPECT_EQ(propertylist::read(*added)->dictionaryView()->objectForKey("new"), Value(7));
        EXPECT_EQ(propertylist::withChanges(*added, {{"new", {}}, {"newer", {}}, {"never", {}}}), before);
        EXPECT_EQ(added->text().starts_with("bplist00"), std::string_view(name) != "kinds.plist");
    }
}

TEST(PropertyListTest, RefusesAChangeThatCouldNotBeReadAgain) {
    const Data start = sample("kinds.plist");
    EXPECT_FALSE(propertylist::withChanges(start, {{"long", repeated("x", 4'200'000)}}));
    EXPECT_FALSE(propertylist::withChanges(start, {{"entities", repeated("&", 100'000)}}));
    EXPECT_EQ(propertylist::withChanges(Data::fromText("no list"), {{"key", true}}),
        propertylist::writeBinary(Dictionary::make({{"key", true}})));
}

} // namespace
} // namespace exifcard

#include "cli/Base64.h"
#include "cli/DisplayText.h"
#include "cli/JsonWriter.h"
#include "platform/foundation/Array.h"
#include "platform/foundation/Dictionary.h"
#include "platform/foundation/UTF8.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <limits>

namespace exifcard {
namespace {

TEST(DisplayTextTest, ShowsWhatCouldSteerATerminalAsAPicture) {
    struct Case {
        std::string_view text;
        std::string_view line;
    };
    using namespace std::string_view_literals;
    constexpr Case cases[] = {
        {"plain é 日本", "plain é 日本"},
        {"\x1b[31mred\a", "␛[31mred␇"},
        {"a\nb\tc", "a⏎b c"},
        {"\0\x7f"sv, "␀␡"},
        {"\xC2\x9B"
         "31m",
            "\uFFFD31m"},                                 // The one-character form of "ESC [".
        {"\u202Egpj.exe", "\uFFFDgpj.exe"},               // Turns the direction of writing.
        {"\xFF\xC3(", "\uFFFD\uFFFD("},                   // No first byte; a first byte alone.
        {"\xC0\xAF", "\uFFFD\uFFFD"},                     // A slash written too long.
        {"\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD"},           // Half a surrogate pair.
        {"\xF4\x90\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD"}, // Beyond Unicode.
        {"cut \xE6\x97", "cut \uFFFD\uFFFD"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.line);
        EXPECT_EQ(displayLine(c.text), c.line);
        EXPECT_TRUE(isValidUTF8(displayLine(c.text)));
    }
    EXPECT_EQ(displayLines("a\nb\tc"), "a\nb\tc");
}

TEST(DisplayTextTest, MeasuresColumnsNotBytes) {
    EXPECT_EQ(displayWidth("ISO 100"), 7U);
    EXPECT_EQ(displayWidth("Größe"), 5U);
    EXPECT_EQ(displayWidth("e\u0301"), 1U);
    EXPECT_EQ(displayWidth("日本"), 4U);
}

TEST(Base64Test, PadsWhateverTheLength) {
    const std::pair<std::string_view, std::string_view> cases[] = {{"", ""}, {"f", "Zg=="}, {"fo", "Zm8="},
        {"foo", "Zm9v"}, {"foobar", "Zm9vYmFy"}, {"\xFF\xFE\xFD", "//79"}};
    for (const auto& [bytes, text] : cases) {
        EXPECT_EQ(base64(Data::fromText(bytes).bytes()), text);
    }
}

TEST(JsonWriterTest, WritesEveryKindOfValue) {
    setenv("TZ", "Asia/Kathmandu", 1);
    tzset();
    const Value value = Dictionary::make({
        {"array", Array::make({1, -2.5, true, Value()})},
        {"data", Data::fromText("fo")},
        {"date", Date{86400.9}},
        {"empty", Dictionary::make()},
        {"float", 0.008F},
        {"infinite", std::numeric_limits<double>::infinity()},
        {"large", std::numeric_limits<std::int64_t>::min()},
        {"text", "a\"\\\n\x01\x7F é\xFF"},
        {"whole", 4.0},
    });
    EXPECT_EQ(JsonWriter().value(value).take(),
        R"({"array":[1,-2.5,true,null],"data":"Zm8=","date":"1970-01-02T05:30:00+05:30","empty":{},"float":0.008,)"
        R"("infinite":null,"large":-9223372036854775808,"text":"a\"\\\n\u0001)"
        "\x7F é\uFFFD\",\"whole\":4}");
}

TEST(JsonWriterTest, GivesANameThatIsNoTextAsBytes) {
    EXPECT_EQ(JsonWriter().beginObject().file("ä.jpg").endObject().take(), R"({"file":"ä.jpg"})");
    EXPECT_EQ(JsonWriter().beginObject().file("\xE4.jpg").endObject().take(),
        R"({"file":null,"fileBytes":"5C5qcGc="})");
}

} // namespace
} // namespace exifcard

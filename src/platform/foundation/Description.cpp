#include "platform/foundation/Array.h"
#include "platform/foundation/Dictionary.h"
#include "platform/foundation/NumberText.h"
#include "platform/foundation/Value.h"

#include <fmt/format.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <iterator>

namespace exifcard {
namespace {

constexpr std::size_t kSpacesPerLevel = 4;

/// Beyond these two a container is written as "...": a container may hold itself, or twice the same one at
/// every level, and the text of what a photo holds stays far below.
constexpr std::size_t kDeepestLevel = 32;
constexpr std::size_t kLongestDescription = 4'000'000;

/// Longer data is written by its beginning and its end.
constexpr std::size_t kLongestWholeData = 24;
constexpr std::size_t kBytesInGroup = 4;

void appendHexadecimal(std::string& text, std::span<const std::uint8_t> bytes) {
    for (const std::uint8_t byte : bytes) {
        fmt::format_to(std::back_inserter(text), "{:02x}", byte);
    }
}

void appendData(std::string& text, const Data& data) {
    const auto bytes = data.bytes();
    fmt::format_to(std::back_inserter(text), "{{length = {}, bytes = 0x", bytes.size());
    if (bytes.size() <= kLongestWholeData) {
        appendHexadecimal(text, bytes);
        text += '}';
        return;
    }
    appendHexadecimal(text, bytes.first(kBytesInGroup));
    text += ' ';
    appendHexadecimal(text, bytes.subspan(kBytesInGroup, kBytesInGroup));
    text += " ... ";
    appendHexadecimal(text, bytes.last(kBytesInGroup));
    text += " }";
}

/// Years of four digits and more; a moment that the calendar cannot name is written as its seconds.
void appendDate(std::string& text, Date date) {
    constexpr double kFurthestSecond = 9e11; // The calendar of std::chrono ends near the year 32767.
    const double second = std::floor(date.secondsSince1970);
    if (!(std::abs(second) < kFurthestSecond)) {
        text += textFromDouble(date.secondsSince1970);
        return;
    }
    const std::chrono::sys_seconds moment{std::chrono::seconds(static_cast<std::int64_t>(second))};
    const auto midnight = std::chrono::floor<std::chrono::days>(moment);
    const std::chrono::year_month_day day(midnight);
    const std::chrono::hh_mm_ss time(moment - midnight);
    fmt::format_to(std::back_inserter(text), "{:04}-{:02}-{:02} {:02}:{:02}:{:02} +0000",
        static_cast<int>(day.year()), static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()),
        time.hours().count(), time.minutes().count(), time.seconds().count());
}

bool needsNoQuotes(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') || character == '_' || character == '$';
}

/// The letter after the backslash of a character with a short escape, or 0.
char shortEscape(char16_t unit) {
    constexpr std::pair<char16_t, char> kShortEscapes[] = {{u'"', '"'}, {u'\\', '\\'}, {u'\a', 'a'},
        {u'\b', 'b'}, {u'\f', 'f'}, {u'\n', 'n'}, {u'\r', 'r'}, {u'\t', 't'}, {u'\v', 'v'}};
    const auto* const found =
        std::ranges::find(kShortEscapes, unit, [](const auto& escape) { return escape.first; });
    return found != std::end(kShortEscapes) ? found->second : '\0';
}

void appendEscaped(std::string& text, char16_t unit) {
    constexpr char16_t kFirstPrintable = 0x20;
    constexpr char16_t kDelete = 0x7F;
    if (const char letter = shortEscape(unit)) {
        text += {'\\', letter};
    } else if (unit >= kFirstPrintable && unit < kDelete) {
        text += static_cast<char>(unit);
    } else {
        fmt::format_to(std::back_inserter(text), "\\U{:04x}", static_cast<unsigned>(unit));
    }
}

/// A text as it stands inside a container: bare when it is a word, else quoted and escaped. Bytes that are
/// no UTF-8 become the replacement character.
void appendQuoted(std::string& text, std::string_view word) {
    if (!word.empty() && std::ranges::all_of(word, needsNoQuotes)) {
        text += word;
        return;
    }
    text += '"';
    const auto units = icu::UnicodeString::fromUTF8(word);
    for (std::int32_t index = 0; index < units.length(); ++index) {
        appendEscaped(text, units[index]);
    }
    text += '"';
}

void appendContained(std::string& text, const Value& value, std::size_t level);

void appendContainer(std::string& text, const Value& container, std::size_t level) {
    if (level >= kDeepestLevel || text.size() > kLongestDescription) {
        text += "...";
        return;
    }
    const auto openLine = [&text](std::size_t lineLevel) {
        text += '\n';
        text.append(lineLevel * kSpacesPerLevel, ' ');
    };
    if (const Array* const array = container.arrayView()) {
        text += '(';
        std::string_view separator;
        for (const Value& element : *array) {
            text += separator;
            openLine(level + 1);
            appendContained(text, element, level + 1);
            separator = ",";
        }
        openLine(level);
        text += ')';
        return;
    }
    text += '{';
    for (const auto& [key, value] : *container.dictionaryView()) {
        openLine(level + 1);
        appendQuoted(text, key);
        text += " = ";
        appendContained(text, value, level + 1);
        text += ';';
    }
    openLine(level);
    text += '}';
}

/// An element of a container at `level`.
void appendContained(std::string& text, const Value& value, std::size_t level) {
    switch (value.kind()) {
    case Value::Kind::Array:
    case Value::Kind::Dictionary:
        // Intended: a nested container is indented once more behind its key.
        text.append(level * kSpacesPerLevel, ' ');
        appendContainer(text, value, level);
        return;
    case Value::Kind::Data:
        appendData(text, *value.data());
        return;
    case Value::Kind::Nothing:
        appendQuoted(text, "<null>");
        return;
    default:
        appendQuoted(text, value.description());
        return;
    }
}

} // namespace

std::string Value::description() const {
    std::string text;
    switch (kind()) {
    case Kind::Nothing:
        return "(null)";
    case Kind::Bool:
        return std::get<bool>(_held) ? "1" : "0";
    case Kind::Integer:
        return fmt::to_string(std::get<std::int64_t>(_held));
    case Kind::Float:
        return textFromFloat(std::get<float>(_held));
    case Kind::Double:
        return textFromDouble(std::get<double>(_held));
    case Kind::Text:
        return std::get<std::string>(_held);
    case Kind::Date:
        appendDate(text, std::get<Date>(_held));
        return text;
    case Kind::Data:
        appendData(text, std::get<Data>(_held));
        return text;
    case Kind::Array:
    case Kind::Dictionary:
        appendContainer(text, *this, 0);
        return text;
    }
    return text;
}

} // namespace exifcard

#include "cli/JsonWriter.h"

#include "cli/Base64.h"
#include "cli/DisplayText.h"
#include "cli/LocalTime.h"
#include "platform/foundation/Array.h"
#include "platform/foundation/Dictionary.h"
#include "platform/foundation/UTF8.h"

#include <charconv>
#include <cmath>
#include <span>

namespace exifcard {
namespace {

constexpr char kHexDigits[] = "0123456789abcdef";

/// The letter after the backslash for a character that has one; NUL for others.
char shortEscape(char character) {
    switch (character) {
    case '"':
    case '\\':
        return character;
    case '\n':
        return 'n';
    case '\r':
        return 'r';
    case '\t':
        return 't';
    default:
        return '\0';
    }
}

void appendASCII(std::string& text, char character) {
    if (const char letter = shortEscape(character); letter != '\0') {
        text += '\\';
        text += letter;
    } else if (character >= 0 && character < 0x20) {
        text += "\\u00";
        text += kHexDigits[character >> 4];
        text += kHexDigits[character & 15];
    } else {
        text += character;
    }
}

void appendText(std::string& text, std::string_view value) {
    while (!value.empty()) {
        if (static_cast<signed char>(value.front()) >= 0) {
            appendASCII(text, value.front());
            value.remove_prefix(1);
            continue;
        }
        const std::string_view before = value;
        const bool isWhole = takeCharacter(value) != kMalformedCharacter;
        text += isWhole ? before.substr(0, before.size() - value.size()) : "\uFFFD";
    }
}

template<typename Number>
void appendNumber(std::string& text, Number number) {
    char digits[32]; // The longest double has 24 characters.
    const auto written = std::to_chars(digits, digits + sizeof digits, number);
    text.append(digits, written.ptr);
}

template<typename Number>
void appendFinite(std::string& text, Number number) {
    if (std::isfinite(number)) {
        appendNumber(text, number);
    } else {
        text += "null";
    }
}

} // namespace

JsonWriter& JsonWriter::beginObject() {
    separate();
    _text += '{';
    _needsComma = false;
    return *this;
}

JsonWriter& JsonWriter::endObject() {
    _text += '}';
    _needsComma = true;
    return *this;
}

JsonWriter& JsonWriter::beginArray() {
    separate();
    _text += '[';
    _needsComma = false;
    return *this;
}

JsonWriter& JsonWriter::endArray() {
    _text += ']';
    _needsComma = true;
    return *this;
}

JsonWriter& JsonWriter::key(std::string_view name) {
    text(name);
    _text += ':';
    _needsComma = false;
    return *this;
}

JsonWriter& JsonWriter::text(std::string_view value) {
    separate();
    _text += '"';
    appendText(_text, value);
    _text += '"';
    return *this;
}

JsonWriter& JsonWriter::textOrNull(const std::optional<std::string>& value) {
    return value ? text(*value) : null();
}

JsonWriter& JsonWriter::integer(std::int64_t value) {
    separate();
    appendNumber(_text, value);
    return *this;
}

JsonWriter& JsonWriter::boolean(bool value) {
    separate();
    _text += value ? "true" : "false";
    return *this;
}

JsonWriter& JsonWriter::number(double value) {
    separate();
    appendFinite(_text, value);
    return *this;
}

JsonWriter& JsonWriter::number(float value) {
    separate();
    appendFinite(_text, value);
    return *this;
}

JsonWriter& JsonWriter::null() {
    separate();
    _text += "null";
    return *this;
}

JsonWriter& JsonWriter::value(const Value& value) {
    switch (value.kind()) {
    case Value::Kind::Nothing:
        return null();
    case Value::Kind::Bool:
        return boolean(value.boolValue());
    case Value::Kind::Integer:
        return integer(value.integerValue());
    case Value::Kind::Float:
        return number(value.floatValue());
    case Value::Kind::Double:
        return number(value.doubleValue());
    case Value::Kind::Text:
        return text(*value.text());
    case Value::Kind::Date:
        return text(localTimeText(*value.date()));
    case Value::Kind::Data:
        return text(base64(value.data()->bytes()));
    case Value::Kind::Array:
    case Value::Kind::Dictionary:
        container(value);
    }
    return *this;
}

JsonWriter& JsonWriter::file(std::string_view name) {
    key("file");
    if (isValidUTF8(name)) {
        return text(name);
    }
    null();
    key("fileBytes");
    return text(base64(std::span(reinterpret_cast<const std::uint8_t*>(name.data()), name.size())));
}

std::string JsonWriter::take() {
    _needsComma = false;
    return std::exchange(_text, {});
}

void JsonWriter::separate() {
    if (_needsComma) {
        _text += ',';
    }
    _needsComma = true;
}

void JsonWriter::container(const Value& value) {
    if (const Array* const array = value.arrayView()) {
        beginArray();
        for (const Value& element : *array) {
            this->value(element);
        }
        endArray();
        return;
    }
    beginObject();
    for (const auto& [name, element] : *value.dictionaryView()) {
        key(name).value(element);
    }
    endObject();
}

} // namespace exifcard

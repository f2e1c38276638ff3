#pragma once

#include "metadata/ExifInformation.h"
#include "metadata/FieldKeyTable.h"
#include "platform/foundation/Dictionary.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

/// What the formatters' sources share; no other file includes it.
namespace exifcard {

using fieldtable::FieldName;

/// One code of an enumeration and its text, English as key.
struct CodeText {
    std::int64_t code;
    const char* text;
};

/// The entry's English text; null for a code that the table lacks.
const char* findText(std::span<const CodeText> table, std::int64_t code);
/// The text in the user's language; empty for a code that the table lacks.
std::string textForCode(std::span<const CodeText> table, std::int64_t code);

/// The object under `key`, or nothing; also where there is no dictionary.
const Value& objectIn(const DictionaryPtr& dictionary, std::string_view key);
/// A stored text as it stands, the readable text of another object, absent for nothing.
std::optional<std::string> storedText(const Value& value);
/// The text under `key` in the first dictionary, or in the second when it is empty there.
std::optional<std::string> storedText(const Value& first, const Value& second);
/// The {ExifAux} dictionary's object under `key`, or nothing.
const Value& exifAuxObject(const ExifInformation& record, std::string_view key);

/// The field's row with its label.
ExifValue rowWithoutRule(FieldName name, std::optional<std::string> text);
/// The same; an empty text is "Not available" when the record has no usable EXIF.
ExifValue rowWithExifRule(const ExifInformation& record, FieldName name, std::optional<std::string> text);
/// The same; the text is "GPS Data not available" when the record has no location.
ExifValue rowWithGPSRule(const ExifInformation& record, FieldName name, std::optional<std::string> text);

} // namespace exifcard

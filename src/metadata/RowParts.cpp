#include "metadata/RowParts.h"

#include "platform/imageio/ImageProperties.h"

#include <algorithm>
#include <utility>

namespace exifcard {

const char* findText(std::span<const CodeText> table, std::int64_t code) {
    const auto found = std::ranges::find(table, code, &CodeText::code);
    return found != table.end() ? found->text : nullptr;
}

std::string textForCode(std::span<const CodeText> table, std::int64_t code) {
    const char* const text = findText(table, code);
    return text != nullptr ? std::string(localizedString(text)) : std::string();
}

const Value& objectIn(const DictionaryPtr& dictionary, std::string_view key) {
    return dictionary ? dictionary->objectForKey(key) : nothing();
}

std::optional<std::string> storedText(const Value& value) {
    if (value.isNothing()) {
        return std::nullopt;
    }
    const std::string* const text = value.text();
    return text != nullptr ? *text : value.description();
}

std::optional<std::string> storedText(const Value& first, const Value& second) {
    auto text = storedText(first);
    return text && !text->empty() ? text : storedText(second);
}

const Value& exifAuxObject(const ExifInformation& record, std::string_view key) {
    const auto& auxiliary = objectIn(record.metaDataDictionary, kCGImagePropertyExifAuxDictionary);
    const Dictionary* const dictionary = auxiliary.dictionaryView();
    return dictionary != nullptr ? dictionary->objectForKey(key) : nothing();
}

ExifValue rowWithoutRule(FieldName name, std::optional<std::string> text) {
    const FieldKey& field = name.field();
    ExifValue row;
    row.uniqueID.emplace(field.key);
    row.exifKeyReadableFormat.emplace(localizedString(field.label));
    row.exifValueReadableFormat = std::move(text);
    return row;
}

ExifValue rowWithExifRule(const ExifInformation& record, FieldName name, std::optional<std::string> text) {
    ExifValue row = rowWithoutRule(name, std::move(text));
    record.setNotAvailableStringIfExifNotAvailable(row);
    return row;
}

ExifValue rowWithGPSRule(const ExifInformation& record, FieldName name, std::optional<std::string> text) {
    ExifValue row = rowWithoutRule(name, std::move(text));
    record.setGPSNotAvailableStringIfExifNotAvailable(row);
    return row;
}

} // namespace exifcard

#include "cli/PhotoRows.h"

#include "cli/FieldLists.h"
#include "cli/JsonWriter.h"
#include "cli/PhotoFile.h"
#include "cli/RecordJSON.h"
#include "cli/TextTable.h"
#include "metadata/ExifInformation.h"

#include <variant>

namespace exifcard {
namespace {

std::vector<std::string> visibleKeys(std::string_view listName) {
    std::vector<std::string> keys;
    const auto visible = fieldListNamed(listName).visible();
    for (const auto& entry : *visible) {
        keys.push_back(entry->key);
    }
    return keys;
}

const std::vector<std::string>& keysFor(const ExifInformation& record, const ChosenFields& fields) {
    return isVideo(record) ? fields.videoKeys : fields.keys;
}

void writeRawValue(JsonWriter& json, const std::string& key, const Value& value) {
    json.beginObject();
    json.key("uniqueID").text(key);
    json.key("kind").text("raw");
    json.key("value").value(value);
    json.endObject();
}

} // namespace

ChosenFields fieldsOfCard() {
    return {.keys = visibleKeys("card"), .videoKeys = visibleKeys("card-video")};
}

ChosenFields fieldsOfList(std::string_view name) {
    return {.keys = visibleKeys(name), .videoKeys = visibleKeys(name)};
}

void writePhotoRows(
    JsonWriter& json, const std::string& name, const ExifInformation& record, const ChosenFields& fields) {
    json.beginObject().file(name).key("record");
    writeRecord(json, record);
    json.key("rows").beginArray();
    for (const std::string& key : keysFor(record, fields)) {
        const FieldAnswer answer = record.performCustomSelector(key);
        if (const auto* const row = std::get_if<ExifValue>(&answer)) {
            writeRow(json, *row);
        } else if (fields.includesRawKeys) {
            writeRawValue(json, key, std::get<Value>(answer));
        }
    }
    json.endArray().endObject();
}

std::string photoRowsJSON(
    const std::string& name, const ExifInformation& record, const ChosenFields& fields) {
    JsonWriter json;
    writePhotoRows(json, name, record, fields);
    return json.take() + "\n";
}

std::string photoRowsText(const ExifInformation& record, const ChosenFields& fields, bool usesColor) {
    TextTable table;
    for (const std::string& key : keysFor(record, fields)) {
        const FieldAnswer answer = record.performCustomSelector(key);
        if (const auto* const row = std::get_if<ExifValue>(&answer)) {
            table.addRow(
                {row->exifKeyReadableFormat.value_or(key), row->exifValueReadableFormat.value_or("")});
        } else if (fields.includesRawKeys) {
            const Value& value = std::get<Value>(answer);
            table.addRow({key, value.isNothing() ? "" : value.description()});
        }
    }
    return table.text(usesColor);
}

} // namespace exifcard

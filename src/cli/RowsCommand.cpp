#include "cli/Choices.h"
#include "cli/Commands.h"
#include "cli/FieldLists.h"
#include "cli/FileCommand.h"
#include "cli/JsonWriter.h"
#include "cli/PhotoFile.h"
#include "cli/RecordJSON.h"
#include "cli/Session.h"
#include "cli/TextTable.h"
#include "metadata/ExifInformation.h"
#include "metadata/FieldKeys.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace exifcard {
namespace {

struct RowsOptions {
    FileArguments files;
    std::string list; ///< Empty: the one of a card, which differs for a video.
    std::string keys;
    bool wantsAllKeys = false;
};

/// The rows that were asked for.
struct ChosenFields {
    std::vector<std::string> keys;
    std::vector<std::string> videoKeys; ///< The same of videos.
    bool includesRawKeys = false;       ///< Keys that give no row are shown too.
};

std::vector<std::string> visibleKeys(std::string_view listName) {
    std::vector<std::string> keys;
    const auto visible = fieldListNamed(listName).visible();
    for (const auto& entry : *visible) {
        keys.push_back(entry->key);
    }
    return keys;
}

/// The same fields for photos and videos, those that give no row among them.
ChosenFields namedFields(std::vector<std::string> keys) {
    return {.keys = keys, .videoKeys = std::move(keys), .includesRawKeys = true};
}

ChosenFields chosenFields(const RowsOptions& options) {
    if (!options.keys.empty()) {
        return namedFields(splitAtCommas(options.keys));
    }
    if (!options.wantsAllKeys) {
        const auto listOr = [&](const char* usual) { return options.list.empty() ? usual : options.list; };
        return {.keys = visibleKeys(listOr("card")), .videoKeys = visibleKeys(listOr("card-video"))};
    }
    std::vector<std::string> keys;
    for (const FieldKey& field : fieldKeys()) {
        keys.emplace_back(field.key);
    }
    return namedFields(std::move(keys));
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

std::string rowsJSON(const std::string& name, const ExifInformation& record, const ChosenFields& fields) {
    JsonWriter json;
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
    return json.take() + "\n";
}

std::string rowsText(const ExifInformation& record, const ChosenFields& fields, bool usesColor) {
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

FileResult rowsOf(const std::string& name, const ChosenFields& fields, const SessionOptions& options) {
    const auto record = readPhoto(name);
    if (!record) {
        return failedFile(name, "read", causeOfFailure(name), options.isJSON);
    }
    return {.output = options.isJSON ? rowsJSON(name, *record, fields)
                                     : rowsText(*record, fields, options.usesColor)};
}

ExitStatus showRows(const RowsOptions& options, Session& session) {
    const ChosenFields fields = chosenFields(options);
    for (const std::string& key : fields.keys) {
        if (!isFieldKey(key)) {
            return session.refuse(fmt::format("there is no field {}; exifcard keys lists them", key));
        }
    }
    return runOverFiles(options.files, session,
        [&](const std::string& name) { return rowsOf(name, fields, session.options()); });
}

CommandAction declareRows(CLI::App& app) {
    auto options = std::make_shared<RowsOptions>();
    declareFiles(app, options->files);
    auto* const list = app.add_option(
        "--list", options->list, "Show the visible fields of this list; default: card, of videos card-video");
    limitToChoices(*list, fieldListNames());
    auto* const keys = app.add_option("--keys", options->keys, "Show these fields")->type_name("KEY,KEY");
    auto* const allKeys = app.add_flag("--all-keys", options->wantsAllKeys, "Show every field there is");
    keys->excludes(list)->excludes(allKeys);
    allKeys->excludes(list);
    return [options](Session& session) { return showRows(*options, session); };
}

} // namespace

const Command kRowsCommand = {
    .name = "rows",
    .summary = "Show the metadata of photos and videos as readable rows",
    .examples = R"(The rows of a photo's card:
  exifcard rows photo.jpg
Two fields of all photos below a folder, for another program:
  find Pictures -name '*.jpg' -print0 | exifcard rows --json --keys Model,DateTaken -0)",
    .declare = declareRows,
};

} // namespace exifcard

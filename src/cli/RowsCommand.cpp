#include "cli/Choices.h"
#include "cli/CommandOptions.h"
#include "cli/Commands.h"
#include "cli/FieldLists.h"
#include "cli/FileCommand.h"
#include "cli/PhotoFile.h"
#include "cli/PhotoRows.h"
#include "cli/Session.h"
#include "metadata/ExifInformation.h"
#include "metadata/FieldKeys.h"

#include <fmt/format.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace exifcard {
namespace {

struct RowsOptions {
    FileArguments files;
    std::string list; ///< Empty: the one of a card, which differs for a video.
    std::string keys;
    bool wantsAllKeys = false;
};

/// The same fields for photos and videos, those that give no row among them.
ChosenFields namedFields(std::vector<std::string> keys) {
    return {.keys = keys, .videoKeys = std::move(keys), .includesRawKeys = true};
}

ChosenFields chosenFields(const RowsOptions& options) {
    if (!options.keys.empty()) {
        return namedFields(splitAtCommas(options.keys));
    }
    if (!options.wantsAllKeys) {
        return options.list.empty() ? fieldsOfCard() : fieldsOfList(options.list);
    }
    std::vector<std::string> keys;
    for (const FieldKey& field : fieldKeys()) {
        keys.emplace_back(field.key);
    }
    return namedFields(std::move(keys));
}

FileResult rowsOf(const std::string& name, const ChosenFields& fields, const SessionOptions& options) {
    const auto record = readPhoto(name);
    if (!record) {
        return failedFile(name, "read", causeOfFailure(name), options.isJSON);
    }
    return {.output = options.isJSON ? photoRowsJSON(name, *record, fields)
                                     : photoRowsText(*record, fields, options.usesColor)};
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

CommandAction declareRows(CommandOptions& command) {
    auto options = std::make_shared<RowsOptions>();
    declareFiles(command, options->files);
    auto list = command.value(
        "--list", options->list, "Show the visible fields of this list; default: card, of videos card-video");
    list.limitedTo(fieldListNames());
    auto keys = command.value("--keys", options->keys, "Show these fields").named("KEY,KEY");
    auto allKeys = command.flag("--all-keys", options->wantsAllKeys, "Show every field there is");
    keys.excluding(list).excluding(allKeys);
    allKeys.excluding(list);
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

#include "cli/Choices.h"
#include "cli/CommandOptions.h"
#include "cli/Commands.h"
#include "cli/FieldLists.h"
#include "cli/JsonWriter.h"
#include "cli/Session.h"
#include "cli/TextTable.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>

namespace exifcard {
namespace {

struct FieldsOptions {
    std::string list = "card";
    std::string key;
    std::size_t position = 1; ///< From 1.
};

std::shared_ptr<FieldsOptions> declareListName(CommandOptions& command) {
    auto options = std::make_shared<FieldsOptions>();
    command.value("--list", options->list, "The list; default: card").limitedTo(fieldListNames());
    return options;
}

std::shared_ptr<FieldsOptions> declareListAndKey(CommandOptions& command) {
    auto options = declareListName(command);
    command.value("KEY", options->key, "The field, as exifcard fields show names it").required().named("KEY");
    return options;
}

ExifKeys entriesOf(const NamedFieldList& list) {
    ExifKeys keys = *list.stored();
    std::erase(keys, nullptr); // An entry that is no field can neither be named nor shown.
    return keys;
}

bool isHidden(const std::shared_ptr<ExifKey>& entry) {
    return entry->isHidden.boolValue();
}

ExitStatus listLists(Session& session) {
    TextTable table;
    std::string objects;
    for (const NamedFieldList& list : namedFieldLists()) {
        const ExifKeys entries = entriesOf(list);
        const auto hidden = std::ranges::count_if(entries, isHidden);
        JsonWriter json;
        json.beginObject().key("list").text(list.name);
        json.key("fields").integer(static_cast<std::int64_t>(entries.size()));
        json.key("hidden").integer(hidden).endObject();
        objects += json.take() + "\n";
        table.addRow({list.name, fmt::format("{} fields", entries.size()), fmt::format("{} hidden", hidden)});
    }
    const SessionOptions& options = session.options();
    session.print(options.isJSON ? objects : table.text(options.usesColor));
    return session.status();
}

ExitStatus showList(const FieldsOptions& fields, Session& session) {
    TextTable table;
    std::string objects;
    const ExifKeys entries = entriesOf(fieldListNamed(fields.list));
    for (const auto& entry : entries) {
        JsonWriter json;
        json.beginObject().key("key").text(entry->key).key("isHidden").boolean(isHidden(entry)).endObject();
        objects += json.take() + "\n";
        const auto position = &entry - entries.data() + 1;
        table.addRow({fmt::format("{:3}", position), entry->key, isHidden(entry) ? "hidden" : "shown"});
    }
    const SessionOptions& options = session.options();
    session.print(options.isJSON ? objects : table.text(options.usesColor));
    return session.status();
}

ExitStatus refuseKey(const FieldsOptions& fields, Session& session) {
    return session.refuse(fmt::format("the list {} has no field {}", fields.list, fields.key));
}

ExitStatus setHidden(const FieldsOptions& fields, bool isHidden, Session& session) {
    const NamedFieldList& list = fieldListNamed(fields.list);
    ExifKeys entries = entriesOf(list);
    const auto entry = std::ranges::find(entries, fields.key, &ExifKey::key);
    if (entry == entries.end()) {
        return refuseKey(fields, session);
    }
    *entry = ExifKey::initWithKey(fields.key, isHidden);
    list.store(std::move(entries));
    return session.status();
}

ExitStatus moveField(const FieldsOptions& fields, Session& session) {
    const NamedFieldList& list = fieldListNamed(fields.list);
    ExifKeys entries = entriesOf(list);
    const auto entry = std::ranges::find(entries, fields.key, &ExifKey::key);
    if (entry == entries.end()) {
        return refuseKey(fields, session);
    }
    if (fields.position < 1 || fields.position > entries.size()) {
        return session.refuse(
            fmt::format("--to: the list {} has the places 1 to {}", fields.list, entries.size()));
    }
    const auto target = entries.begin() + static_cast<std::ptrdiff_t>(fields.position - 1);
    if (entry < target) {
        std::rotate(entry, entry + 1, target + 1);
    } else {
        std::rotate(target, entry, entry + 1);
    }
    list.store(std::move(entries));
    return session.status();
}

ExitStatus resetList(const FieldsOptions& fields, Session& session) {
    const NamedFieldList& list = fieldListNamed(fields.list);
    list.store(list.defaults());
    return session.status();
}

CommandAction declareList(CommandOptions& /*command*/) {
    return listLists;
}

CommandAction declareShow(CommandOptions& command) {
    return [options = declareListName(command)](Session& session) { return showList(*options, session); };
}

CommandAction declareHide(CommandOptions& command) {
    return [options = declareListAndKey(command)](
               Session& session) { return setHidden(*options, true, session); };
}

CommandAction declareUnhide(CommandOptions& command) {
    return [options = declareListAndKey(command)](
               Session& session) { return setHidden(*options, false, session); };
}

CommandAction declareMove(CommandOptions& command) {
    auto options = declareListAndKey(command);
    command.value("--to", options->position, "The place that it gets, 1 for the first").required().named("N");
    return [options](Session& session) { return moveField(*options, session); };
}

CommandAction declareReset(CommandOptions& command) {
    return [options = declareListName(command)](Session& session) { return resetList(*options, session); };
}

constexpr Command kSubcommands[] = {
    {"list", "Tell which lists there are", "How long they are:\n  exifcard fields list", declareList},
    {"show", "Show a list, in order", "What is shared:\n  exifcard fields show --list share", declareShow},
    {"hide", "Hide a field", "Leave the place out of shared texts:\n  exifcard fields hide GPS --list share",
        declareHide},
    {"unhide", "Show a hidden field again", "On cards:\n  exifcard fields unhide Copyright", declareUnhide},
    {"move", "Put a field in another place", "To the top of cards:\n  exifcard fields move DateTaken --to 1",
        declareMove},
    {"reset", "Put a list back as it was at first", "The list of cards:\n  exifcard fields reset",
        declareReset},
};

} // namespace

const Command kFieldsCommand = {
    .name = "fields",
    .summary = "Choose which fields cards and shared texts show, and in which order",
    .examples = R"(What a card shows:
  exifcard fields show
Without the place:
  exifcard fields hide GPS)",
    .subcommands = kSubcommands,
};

} // namespace exifcard

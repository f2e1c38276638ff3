#include "cli/CommandOptions.h"
#include "cli/Commands.h"
#include "cli/JsonWriter.h"
#include "cli/Session.h"
#include "cli/TextTable.h"
#include "platform/foundation/Dictionary.h"
#include "platform/foundation/PropertyList.h"
#include "settings/PersistanceManager.h"
#include "settings/SettingsTable.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace exifcard {
namespace {

struct SettingsOptions {
    std::string key;
    std::string value;
};

PersistanceManager& preferences() {
    return PersistanceManager::sharedInstance();
}

/// Declares KEY; other texts than keys are refused.
CommandOption declareKey(CommandOptions& command, SettingsOptions& options) {
    std::vector<std::string> keys;
    for (const Setting& setting : kSettings) {
        keys.emplace_back(setting.key);
    }
    return command.value("KEY", options.key, "The setting, as exifcard settings list names it")
        .named(fmt::format("{}", fmt::join(keys, "|")))
        .checkedBy([](const std::string& key) {
            return settingForKey(key) == nullptr ? "there is no setting " + key : "";
        });
}

/// The text that `settings set` takes for the same value; empty for nothing.
std::string readableValue(const Value& value) {
    if (value.isNothing()) {
        return {};
    }
    return value.kind() == Value::Kind::Bool ? (value.boolValue() ? "true" : "false") : value.description();
}

std::string settingJSON(const Setting& setting) {
    JsonWriter json;
    json.beginObject();
    json.key("key").text(setting.key);
    json.key("stored").value(preferences().storedValue(setting));
    json.key("value").value(preferences().value(setting));
    json.key("default").value(defaultValue(setting));
    json.endObject();
    return json.take() + "\n";
}

ExitStatus listSettings(Session& session) {
    const SessionOptions& options = session.options();
    TextTable table;
    std::string objects;
    for (const Setting& setting : kSettings) {
        if (options.isJSON) {
            objects += settingJSON(setting);
            continue;
        }
        const Value stored = preferences().storedValue(setting);
        table.addRow({std::string(setting.key), readableValue(preferences().value(setting)),
            stored.isNothing() ? "default" : "stored: " + readableValue(stored)});
    }
    session.print(options.isJSON ? objects : table.text(options.usesColor));
    return session.status();
}

ExitStatus getSetting(const SettingsOptions& options, Session& session) {
    const Value value = preferences().value(*settingForKey(options.key));
    session.print(
        (session.options().isJSON ? JsonWriter().value(value).take() : readableValue(value)) + "\n");
    return session.status();
}

/// Whether the settings file holds this: a store that cannot be written goes on in memory alone.
bool isOnDisk(const Value& value, std::string_view key) {
    const auto file = Data::mappedFile(preferences().userDefaults->path());
    const auto content = file ? propertylist::read(*file) : std::nullopt;
    const Dictionary* const stored = content ? content->dictionaryView() : nullptr;
    return (stored != nullptr ? stored->objectForKey(key) : nothing()) == value;
}

ExitStatus setSetting(const SettingsOptions& options, Session& session) {
    const Setting& setting = *settingForKey(options.key);
    const auto value = settingValueFromText(setting, options.value);
    if (!value) {
        return session.refuse(fmt::format("{} does not fit the setting {}", options.value, options.key));
    }
    preferences().setValue(*value, setting);
    if (!isOnDisk(preferences().storedValue(setting), options.key)) {
        session.fail(fmt::format("cannot store {} in {}", options.key, preferences().userDefaults->path()));
    }
    return session.status();
}

ExitStatus resetSettings(const SettingsOptions& options, Session& session) {
    for (const Setting& setting : kSettings) {
        const bool isMeant = options.key.empty() || options.key == setting.key;
        if (!isMeant) {
            continue;
        }
        preferences().removeValue(setting);
        if (!isOnDisk(nothing(), setting.key)) {
            session.fail(
                fmt::format("cannot reset {} in {}", setting.key, preferences().userDefaults->path()));
        }
    }
    return session.status();
}

CommandAction declareList(CommandOptions& /*command*/) {
    return listSettings;
}

CommandAction declareGet(CommandOptions& command) {
    auto options = std::make_shared<SettingsOptions>();
    declareKey(command, *options).required();
    return [options](Session& session) { return getSetting(*options, session); };
}

CommandAction declareSet(CommandOptions& command) {
    auto options = std::make_shared<SettingsOptions>();
    declareKey(command, *options).required();
    command.value("VALUE", options->value, "true or false, a number, or a text").required().named("VALUE");
    return [options](Session& session) { return setSetting(*options, session); };
}

CommandAction declareReset(CommandOptions& command) {
    auto options = std::make_shared<SettingsOptions>();
    declareKey(command, *options);
    return [options](Session& session) { return resetSettings(*options, session); };
}

constexpr Command kSubcommands[] = {
    {"list", "List every setting: what is in force, what is stored", "All of them:\n  exifcard settings list",
        declareList},
    {"get", "Print the value in force", "The pattern of dates:\n  exifcard settings get dateFormatString",
        declareGet},
    {"set", "Store a value", "Metres instead of feet:\n  exifcard settings set isUsingMetricUnits true",
        declareSet},
    {"reset", "Drop the stored value of a setting, or of all",
        "One:\n  exifcard settings reset dateFormatString", declareReset},
};

} // namespace

const Command kSettingsCommand = {
    .name = "settings",
    .summary = "Show and change the settings",
    .examples = R"(What is set:
  exifcard settings list
Dates by year first:
  exifcard settings set dateFormatString 'yyyy-MM-dd HH:mm:ss')",
    .subcommands = kSubcommands,
};

} // namespace exifcard

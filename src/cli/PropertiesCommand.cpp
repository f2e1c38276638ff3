#include "cli/CommandOptions.h"
#include "cli/Commands.h"
#include "cli/FileCommand.h"
#include "cli/JsonWriter.h"
#include "cli/PhotoFile.h"
#include "cli/Session.h"
#include "cli/TextTable.h"
#include "platform/foundation/Array.h"
#include "platform/foundation/Dictionary.h"
#include "platform/imageio/CGImageSource.h"

#include <fmt/format.h>

#include <memory>
#include <string>
#include <string_view>

namespace exifcard {
namespace {

/// A value in one line, for people.
std::string readableValue(const Value& value) {
    if (const Array* const array = value.arrayView()) {
        std::string text;
        for (const Value& element : *array) {
            text += (text.empty() ? "" : ", ") + readableValue(element);
        }
        return text;
    }
    if (const Dictionary* const dictionary = value.dictionaryView()) {
        std::string text;
        for (const auto& [key, element] : *dictionary) {
            text += fmt::format("{}{}: {}", text.empty() ? "" : ", ", key, readableValue(element));
        }
        return text;
    }
    if (const auto data = value.data()) {
        return fmt::format("{} bytes", data->size());
    }
    if (value.kind() == Value::Kind::Bool) {
        return value.boolValue() ? "yes" : "no";
    }
    return value.description();
}

/// What is no dictionary in `properties`, as a table.
std::string tableOf(const Dictionary& properties, bool usesColor) {
    TextTable table;
    for (const auto& [key, value] : properties) {
        if (value.dictionaryView() == nullptr) {
            table.addRow({key, readableValue(value)});
        }
    }
    return table.text(usesColor);
}

std::string propertiesText(const Dictionary& properties, bool usesColor) {
    std::string text = tableOf(properties, usesColor);
    for (const auto& [key, value] : properties) {
        if (const Dictionary* const group = value.dictionaryView()) {
            TextTable table;
            for (const auto& [name, element] : *group) {
                table.addRow({name, readableValue(element)});
            }
            text += fmt::format("\n{}\n{}", styled(key, TextStyle::Bold, usesColor), table.text(usesColor));
        }
    }
    return text;
}

FileResult propertiesOf(const std::string& name, const SessionOptions& options) {
    const CGImageSourcePtr source = CGImageSourceCreateWithURL(urlOfFile(name));
    const DictionaryPtr properties = source ? CGImageSourceCopyPropertiesAtIndex(*source, 0) : nullptr;
    if (!properties) {
        return failedFile(name, "read", causeOfFailure(name), options.isJSON);
    }
    if (!options.isJSON) {
        return {.output = propertiesText(*properties, options.usesColor)};
    }
    JsonWriter json;
    json.beginObject().file(name).key("properties").value(Value(properties)).endObject();
    return {.output = json.take() + "\n"};
}

CommandAction declareProperties(CommandOptions& command) {
    auto files = std::make_shared<FileArguments>();
    declareFiles(command, *files);
    return [files](Session& session) {
        return runOverFiles(*files, session,
            [&session](const std::string& name) { return propertiesOf(name, session.options()); });
    };
}

} // namespace

const Command kPropertiesCommand = {
    .name = "properties",
    .summary = "Show the image properties dictionary of photos",
    .examples = R"(What the file itself says:
  exifcard properties photo.jpg
The latitude alone, by another program:
  exifcard properties --json photo.jpg | jq '.properties["{GPS}"].Latitude')",
    .declare = declareProperties,
};

} // namespace exifcard

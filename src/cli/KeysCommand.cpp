#include "cli/CommandOptions.h"
#include "cli/Commands.h"
#include "cli/JsonWriter.h"
#include "cli/Session.h"
#include "cli/TextTable.h"
#include "metadata/FieldKeys.h"
#include "platform/foundation/LocalizedString.h"

#include <optional>
#include <string>
#include <string_view>

namespace exifcard {
namespace {

struct KindName {
    FieldKind kind;
    std::string_view name;
};

constexpr KindName kKindNames[] = {
    {FieldKind::Row, "row"},
    {FieldKind::Raw, "raw"},
    {FieldKind::EmptyRow, "empty"},
};

std::string_view nameOf(FieldKind kind) {
    for (const KindName& entry : kKindNames) {
        if (entry.kind == kind) {
            return entry.name;
        }
    }
    return {};
}

std::optional<std::string> labelOf(const FieldKey& field) {
    return field.label == nullptr ? std::nullopt : std::optional(std::string(localizedString(field.label)));
}

std::string keysJSON() {
    std::string text;
    for (const FieldKey& field : fieldKeys()) {
        JsonWriter json;
        json.beginObject();
        json.key("key").text(field.key);
        json.key("label").textOrNull(labelOf(field));
        json.key("kind").text(nameOf(field.kind));
        json.endObject();
        text += json.take() + "\n";
    }
    return text;
}

std::string keysText(bool usesColor) {
    TextTable table;
    for (const FieldKey& field : fieldKeys()) {
        table.addRow({std::string(field.key), std::string(nameOf(field.kind)), labelOf(field).value_or("")});
    }
    return table.text(usesColor);
}

ExitStatus listKeys(Session& session) {
    const SessionOptions& options = session.options();
    session.print(options.isJSON ? keysJSON() : keysText(options.usesColor));
    return session.status();
}

CommandAction declareKeys(CommandOptions& /*command*/) {
    return listKeys;
}

} // namespace

const Command kKeysCommand = {
    .name = "keys",
    .summary = "List every field key with its kind and label",
    .examples = R"(Rows show a label and a text, raw keys a stored value, empty ones nothing:
  exifcard keys)",
    .declare = declareKeys,
};

} // namespace exifcard

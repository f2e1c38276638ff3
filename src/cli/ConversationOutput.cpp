#include "cli/ConversationOutput.h"

#include "cli/DisplayText.h"
#include "cli/JsonWriter.h"
#include "cli/TextTable.h"
#include "platform/foundation/UTF8.h"
#include "platform/messages/ConversationStore.h"

#include <fmt/format.h>

#include <optional>
#include <vector>

namespace exifcard {
namespace {

/// The store's own bound; a longer name would only fail later.
constexpr std::size_t kLongestName = 1000;

void writeMessage(JsonWriter& json, const ConversationEntry& entry) {
    const MSMessageTemplateLayout& layout = entry.message.layout;
    json.key("imageTitle").textOrNull(layout.imageTitle);
    json.key("imageSubtitle").textOrNull(layout.imageSubtitle);
    json.key("caption").textOrNull(layout.caption);
    json.key("trailingCaption").textOrNull(layout.trailingCaption);
    json.key("subcaption").textOrNull(layout.subcaption);
    json.key("trailingSubcaption").textOrNull(layout.trailingSubcaption);
    json.key("url").text(entry.message.url.absoluteString());
    json.key("image");
    if (!entry.picture) {
        json.null();
        return;
    }
    json.beginObject()
        .key("width")
        .integer(entry.picture->width)
        .key("height")
        .integer(entry.picture->height);
    json.file(entry.picture->file).endObject();
}

void addLine(std::vector<std::string>& lines, const std::optional<std::string>& text) {
    if (text && !text->empty()) {
        lines.push_back(*text);
    }
}

/// Two texts of one line of the bar under the picture.
std::optional<std::string> side(
    const std::optional<std::string>& left, const std::optional<std::string>& right) {
    return right ? left.value_or("") + "  " + *right : left;
}

std::vector<std::string> messageLines(const ConversationEntry& entry) {
    const MSMessageTemplateLayout& layout = entry.message.layout;
    std::vector<std::string> lines;
    if (entry.picture) {
        lines.push_back(fmt::format("▣ picture, {} × {}", entry.picture->width, entry.picture->height));
    }
    addLine(lines, layout.imageTitle);
    addLine(lines, layout.imageSubtitle);
    addLine(lines, side(layout.caption, layout.trailingCaption));
    addLine(lines, side(layout.subcaption, layout.trailingSubcaption));
    addLine(lines, entry.message.url.absoluteString());
    return lines;
}

std::vector<std::string> textLines(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t length = std::min(text.find('\n'), text.size());
        lines.emplace_back(text.substr(0, length));
        text.remove_prefix(std::min(length + 1, text.size()));
    }
    return lines;
}

std::string entryText(const ConversationEntry& entry, bool usesColor) {
    const bool isMessage = entry.kind == ConversationEntry::Kind::Message;
    const bool isSent = entry.state == ConversationEntry::State::Sent;
    const auto lines = isMessage ? messageLines(entry) : textLines(entry.text);
    return framed(lines, isSent ? "sent" : "waits in the input field", usesColor);
}

} // namespace

void writeEntry(JsonWriter& json, const ConversationEntry& entry) {
    const bool isMessage = entry.kind == ConversationEntry::Kind::Message;
    json.beginObject().key("kind").text(isMessage ? "message" : "text");
    json.key("state").text(entry.state == ConversationEntry::State::Sent ? "sent" : "pending");
    if (isMessage) {
        writeMessage(json, entry);
    } else {
        json.key("text").text(entry.text);
    }
    json.endObject();
}

std::string conversationJSON(std::string_view name, const ConversationContent& content) {
    JsonWriter json;
    json.beginObject().key("conversation").text(name).key("entries").beginArray();
    for (const ConversationEntry& entry : content.entries) {
        writeEntry(json, entry);
    }
    json.endArray().endObject();
    return json.take() + "\n";
}

std::string conversationText(std::string_view name, const ConversationContent& content, bool usesColor) {
    std::string text = styled(displayLine(name), TextStyle::Bold, usesColor) + "\n";
    for (const ConversationEntry& entry : content.entries) {
        text += entryText(entry, usesColor);
    }
    return text + (content.entries.empty() ? "Nothing was said yet.\n" : "");
}

std::string conversationNameFault(const std::string& name) {
    if (name.empty()) {
        return "a conversation's name cannot be empty";
    }
    if (name.size() > kLongestName) {
        return fmt::format("a conversation's name has at most {} bytes", kLongestName);
    }
    return isValidUTF8(name) ? "" : "a conversation's name must be UTF-8 text";
}

} // namespace exifcard

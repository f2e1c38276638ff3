#pragma once

#include <string>
#include <string_view>

namespace exifcard {

class JsonWriter;
struct ConversationContent;
struct ConversationEntry;

/// Writes an entry as a JSON object: a message with its layout and picture, or a text.
void writeEntry(JsonWriter& json, const ConversationEntry& entry);

/// A conversation as JSON, one line.
std::string conversationJSON(std::string_view name, const ConversationContent& content);

/// A conversation for people: a bubble an entry, and whether it was sent.
std::string conversationText(std::string_view name, const ConversationContent& content, bool usesColor);

/// Why `name` names no conversation, or empty.
std::string conversationNameFault(const std::string& name);

} // namespace exifcard

#include "platform/messages/ConversationStore.h"

#include "platform/foundation/UTF8.h"
#include "platform/sqlite/SQLiteDatabase.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>

#include <unistd.h>

namespace exifcard {
namespace {

/// Longer than any name that a person gives.
constexpr std::size_t kLongestNameInBytes = 1000;
/// A hundred times the longest share text; keeps one entry from filling the memory of who reads it.
constexpr std::size_t kLongestTextInBytes = 1 << 20;
/// What a JPEG can have.
constexpr int kLongestSideInPixels = 65'535;

constexpr const char* kMigrations[] = {
    R"sql(
CREATE TABLE conversations (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL UNIQUE,
    changed INTEGER NOT NULL -- The greatest was changed last.
);
-- A bubble or a text. An id names the file of the picture and is never given twice.
CREATE TABLE entries (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    conversation INTEGER NOT NULL REFERENCES conversations (id),
    kind TEXT NOT NULL CHECK (kind IN ('message', 'text')),
    sent INTEGER, -- The place among what was sent; null in the input field.
    typed TEXT, -- Of a text: what stood in the field before the bubble,
    attached TEXT, -- and what came after it and goes with it.
    url TEXT,
    image_title TEXT,
    image_subtitle TEXT,
    caption TEXT,
    trailing_caption TEXT,
    subcaption TEXT,
    trailing_subcaption TEXT,
    picture_width INTEGER, -- Pixels; null without a picture.
    picture_height INTEGER
);
CREATE UNIQUE INDEX pending_entries ON entries (conversation, kind) WHERE sent IS NULL;
CREATE UNIQUE INDEX sent_entries ON entries (conversation, sent) WHERE sent IS NOT NULL;
-- Entries that are gone and whose picture is still to be removed.
CREATE TABLE leftover_pictures (entry INTEGER PRIMARY KEY);
)sql",
    "ALTER TABLE entries ADD COLUMN sent_at REAL", // Seconds since 1970; null for what was sent before.
};

std::optional<std::string> faultOfName(std::string_view name) {
    if (name.empty()) {
        return "a conversation needs a name";
    }
    if (name.size() > kLongestNameInBytes) {
        return fmt::format("the name of a conversation may have at most {} bytes", kLongestNameInBytes);
    }
    if (!isValidUTF8(name)) {
        return "the name of a conversation must be UTF-8 text";
    }
    return std::nullopt;
}

/// The texts of a layout in the order of their columns.
constexpr std::optional<std::string> MSMessageTemplateLayout::*kLayoutTexts[] = {
    &MSMessageTemplateLayout::imageTitle,
    &MSMessageTemplateLayout::imageSubtitle,
    &MSMessageTemplateLayout::caption,
    &MSMessageTemplateLayout::trailingCaption,
    &MSMessageTemplateLayout::subcaption,
    &MSMessageTemplateLayout::trailingSubcaption,
};

bool isTooLong(const MSMessage& message) {
    std::size_t total = message.url.absoluteString().size();
    for (const auto text : kLayoutTexts) {
        total += (message.layout.*text).value_or("").size();
    }
    return total > kLongestTextInBytes;
}

Value valueOf(const std::optional<std::string>& text) {
    return text ? Value(*text) : Value();
}

/// Forgets the pending bubble; its picture is removed after the commit.
void removePendingMessage(SQLiteDatabase& database, std::int64_t conversation) {
    database.execute("INSERT INTO leftover_pictures SELECT id FROM entries WHERE conversation = ?"
                     " AND kind = 'message' AND sent IS NULL AND picture_width IS NOT NULL",
        {conversation});
    database.execute(
        "DELETE FROM entries WHERE conversation = ? AND kind = 'message' AND sent IS NULL", {conversation});
}

/// Forgets the text that came with the pending bubble.
void removeAttachedText(SQLiteDatabase& database, std::int64_t conversation) {
    database.execute(
        "UPDATE entries SET attached = '' WHERE conversation = ? AND kind = 'text' AND sent IS NULL",
        {conversation});
    database.execute("DELETE FROM entries WHERE conversation = ? AND kind = 'text' AND sent IS NULL"
                     " AND typed = ''",
        {conversation});
}

std::int64_t addMessage(SQLiteDatabase& database,
    std::int64_t conversation,
    const MSMessage& message,
    const std::optional<EncodedPicture>& picture) {
    const MSMessageTemplateLayout& layout = message.layout;
    database.execute("INSERT INTO entries (conversation, kind, url, image_title, image_subtitle, caption,"
                     " trailing_caption, subcaption, trailing_subcaption, picture_width, picture_height)"
                     " VALUES (?, 'message', ?, ?, ?, ?, ?, ?, ?, ?, ?)",
        {conversation, message.url.absoluteString(), valueOf(layout.imageTitle),
            valueOf(layout.imageSubtitle), valueOf(layout.caption), valueOf(layout.trailingCaption),
            valueOf(layout.subcaption), valueOf(layout.trailingSubcaption),
            picture ? Value(picture->width) : Value(), picture ? Value(picture->height) : Value()});
    return database.lastInsertedRow();
}

bool hasPendingMessage(SQLiteDatabase& database, std::int64_t conversation) {
    return database
        .query("SELECT 1 FROM entries WHERE conversation = ? AND kind = 'message' AND sent IS NULL",
            {conversation})
        .step();
}

void appendText(SQLiteDatabase& database, std::int64_t conversation, const std::string& text) {
    if (text.empty()) {
        return;
    }
    const bool belongsToMessage = hasPendingMessage(database, conversation);
    database.execute("INSERT INTO entries (conversation, kind, typed, attached) VALUES (?, 'text', ?, ?)"
                     " ON CONFLICT (conversation, kind) WHERE sent IS NULL DO UPDATE"
                     " SET typed = typed || excluded.typed, attached = attached || excluded.attached",
        {conversation, belongsToMessage ? "" : text, belongsToMessage ? text : ""});
    auto pending = database.query("SELECT length(CAST(typed || attached AS BLOB)) FROM entries"
                                  " WHERE conversation = ? AND kind = 'text' AND sent IS NULL",
        {conversation});
    if (pending.step() && pending.integer(0) > static_cast<std::int64_t>(kLongestTextInBytes)) {
        database.fail(fmt::format("the text would be longer than {} bytes", kLongestTextInBytes));
    }
}

/// Gives what is pending the next place among what was sent.
void sendPendingEntry(SQLiteDatabase& database, std::int64_t conversation, std::string_view kind) {
    database.execute("UPDATE entries SET sent_at = ?3,"
                     " sent = 1 + (SELECT coalesce(max(sent), 0) FROM entries WHERE conversation = ?1)"
                     " WHERE conversation = ?1 AND kind = ?2 AND sent IS NULL",
        {conversation, kind, Date::now()});
}

/// Makes the conversation the one changed last. @return Nothing when there is none of that name.
std::optional<std::int64_t> changeConversation(SQLiteDatabase& database, std::string_view name) {
    auto changed =
        database.query("UPDATE conversations SET changed = 1 + (SELECT max(changed) FROM conversations)"
                       " WHERE name = ? RETURNING id",
            {name});
    if (!changed.step()) {
        return std::nullopt;
    }
    return changed.integer(0);
}

std::vector<std::int64_t> leftoverPictures(SQLiteDatabase& database) {
    std::vector<std::int64_t> entries;
    auto row = database.query("SELECT entry FROM leftover_pictures");
    while (row.step()) {
        entries.push_back(row.integer(0));
    }
    return entries;
}

constexpr std::string_view kContentQuery =
    "SELECT kind, sent, typed || attached, url, image_title, image_subtitle, caption, trailing_caption,"
    " subcaption, trailing_subcaption, picture_width, picture_height, entries.id, sent_at"
    " FROM entries JOIN conversations ON conversations.id = conversation WHERE name = ?"
    " ORDER BY sent IS NULL, sent, kind"; // "message" before "text" in the input field.

std::optional<ConversationPicture> pictureInRow(const SQLiteStatement& row, std::string file) {
    if (row.isNull(10)) {
        return std::nullopt;
    }
    const auto side = [&row](int column) {
        return static_cast<int>(std::clamp<std::int64_t>(row.integer(column), 0, kLongestSideInPixels));
    };
    return ConversationPicture{side(10), side(11), std::move(file)};
}

ConversationEntry entryInRow(const SQLiteStatement& row) {
    ConversationEntry entry;
    entry.kind = row.text(0) == "message" ? ConversationEntry::Kind::Message : ConversationEntry::Kind::Text;
    entry.state = row.isNull(1) ? ConversationEntry::State::Pending : ConversationEntry::State::Sent;
    entry.text = row.text(2).value_or("");
    if (!row.isNull(13)) {
        entry.sentAt = Date{row.real(13)};
    }
    entry.message.url = URL::withString(row.text(3).value_or(""));
    int column = 4;
    for (const auto text : kLayoutTexts) {
        entry.message.layout.*text = row.text(column++);
    }
    return entry;
}

bool isMissing(const std::string& path) {
    std::error_code ignored; // What cannot be looked at is not missing; opening it tells why.
    return std::filesystem::status(path, ignored).type() == std::filesystem::file_type::not_found;
}

} // namespace

ConversationStore::ConversationStore(std::string folder)
    : _folder(std::move(folder))
    , _file(_folder + "/conversations.sqlite") {
}

std::optional<std::string> ConversationStore::insertMessage(std::string_view conversation,
    const MSMessage& message,
    const std::optional<EncodedPicture>& picture) const {
    if (isTooLong(message)) {
        return fmt::format("the texts of a message may have at most {} bytes", kLongestTextInBytes);
    }
    return insert(conversation, [&](SQLiteDatabase& database, std::int64_t identifier) {
        removePendingMessage(database, identifier);
        removeAttachedText(database, identifier);
        const std::int64_t entry = addMessage(database, identifier, message, picture);
        if (picture) {
            // Before the commit, while no other program can write: after a kill the file bears a number
            // that is not taken, and the next picture of that number replaces it.
            storePicture(database, entry, picture->jpeg);
        }
    });
}

std::optional<std::string> ConversationStore::insertText(
    std::string_view conversation, std::string_view text) const {
    return insert(conversation, [&](SQLiteDatabase& database, std::int64_t identifier) {
        appendText(database, identifier, std::string(text));
    });
}

std::optional<std::string> ConversationStore::sendPending(std::string_view conversation) const {
    return change(conversation, [](SQLiteDatabase& database, std::int64_t identifier) {
        sendPendingEntry(database, identifier, "message");
        sendPendingEntry(database, identifier, "text");
    });
}

std::optional<std::string> ConversationStore::sendPendingAndText(
    std::string_view conversation, std::string_view text) const {
    return insert(conversation, [&](SQLiteDatabase& database, std::int64_t identifier) {
        sendPendingEntry(database, identifier, "message");
        sendPendingEntry(database, identifier, "text");
        appendText(database, identifier, std::string(text));
        sendPendingEntry(database, identifier, "text");
    });
}

std::optional<std::string> ConversationStore::dropPending(std::string_view conversation) const {
    return change(conversation, [](SQLiteDatabase& database, std::int64_t identifier) {
        removePendingMessage(database, identifier);
        database.execute("DELETE FROM entries WHERE conversation = ? AND sent IS NULL", {identifier});
    });
}

ConversationContent ConversationStore::content(std::string_view conversation) const {
    if (isMissing(_file)) {
        return {};
    }
    ConversationContent content;
    SQLiteDatabase database(_file, kMigrations);
    auto row = database.query(kContentQuery, {conversation});
    while (row.step()) {
        content.entries.push_back(entryInRow(row));
        content.entries.back().picture = pictureInRow(row, pictureFile(row.integer(12)));
    }
    content.error = database.error();
    return content;
}

ConversationNames ConversationStore::conversations() const {
    if (isMissing(_file)) {
        return {};
    }
    ConversationNames conversations;
    SQLiteDatabase database(_file, kMigrations);
    auto row = database.query("SELECT name FROM conversations ORDER BY changed DESC");
    while (row.step()) {
        conversations.names.push_back(row.text(0).value_or(""));
    }
    conversations.error = database.error();
    return conversations;
}

std::optional<std::string> ConversationStore::insert(
    std::string_view conversation, const Change& steps) const {
    if (auto fault = faultOfName(conversation)) {
        return fault;
    }
    if (!makeFolder(_folder)) {
        return fmt::format("{} cannot be made; check the rights of the folders above it", _folder);
    }
    SQLiteDatabase database(_file, kMigrations);
    database.beginImmediate();
    database.execute("INSERT OR IGNORE INTO conversations (name, changed) VALUES (?, 0)", {conversation});
    return finish(database, conversation, steps);
}

std::optional<std::string> ConversationStore::change(
    std::string_view conversation, const Change& steps) const {
    if (isMissing(_file)) {
        return std::nullopt;
    }
    SQLiteDatabase database(_file, kMigrations);
    database.beginImmediate();
    return finish(database, conversation, steps);
}

std::optional<std::string> ConversationStore::finish(
    SQLiteDatabase& database, std::string_view conversation, const Change& steps) const {
    if (const auto identifier = changeConversation(database, conversation)) {
        steps(database, *identifier);
    }
    database.commit();
    auto error = database.error();
    removeLeftoverPictures(database); // What cannot be removed now is removed after the next change.
    return error;
}

std::string ConversationStore::pictureFile(std::int64_t entry) const {
    return fmt::format("{}/pictures/{}.jpg", _folder, entry);
}

void ConversationStore::storePicture(SQLiteDatabase& database, std::int64_t entry, const Data& jpeg) const {
    if (database.hasFailed()) {
        return;
    }
    const std::string folder = _folder + "/pictures";
    const std::string file = pictureFile(entry);
    if (!makeFolder(folder) || !writeFileAtomically(file, jpeg, /*temporaryPath=*/folder + "/new.jpg")) {
        database.fail(fmt::format("{} cannot be written; check the rights and the room of its folder", file));
    }
}

void ConversationStore::removeLeftoverPictures(SQLiteDatabase& database) const {
    for (const std::int64_t entry : leftoverPictures(database)) {
        if (::unlink(pictureFile(entry).c_str()) == 0 || errno == ENOENT) {
            database.execute("DELETE FROM leftover_pictures WHERE entry = ?", {entry});
        }
    }
}

} // namespace exifcard

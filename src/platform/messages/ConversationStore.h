#pragma once

#include "platform/foundation/Data.h"
#include "platform/foundation/Date.h"
#include "platform/foundation/FilePaths.h"
#include "platform/messages/MSMessage.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace exifcard {

class SQLiteDatabase;

/// A picture as it is stored: encoded, upright.
struct EncodedPicture {
    Data jpeg;
    int width = 0; ///< Pixels.
    int height = 0;
};

/// A stored picture.
struct ConversationPicture {
    int width = 0; ///< Pixels.
    int height = 0;
    std::string file; ///< Path of a JPEG; the file goes when its message is dropped or replaced.
};

/// A bubble or a text of a conversation.
struct ConversationEntry {
    enum class Kind { Message, Text };
    enum class State { Pending, Sent }; ///< Pending: still in the input field.

    Kind kind = Kind::Message;
    State state = State::Pending;
    std::string text;                           ///< Of a text.
    MSMessage message;                          ///< Of a message; its layout's image is `picture`.
    std::optional<ConversationPicture> picture; ///< Of a message that has one.
    std::optional<Date> sentAt;                 ///< Absent for what is pending, and for what is old.
};

/// What a conversation holds, or why that cannot be read.
struct ConversationContent {
    std::vector<ConversationEntry> entries; ///< As sent, then what is pending: the bubble before the text.
    std::optional<std::string> error;       ///< One sentence with the file and the cause.
};

/// The names of the conversations, or why they cannot be read.
struct ConversationNames {
    std::vector<std::string> names; ///< The one changed last comes first.
    std::optional<std::string> error;
};

/// The conversations of this user, in a database with the pictures as files
/// beside it. Several programs may use it at once, and so may several threads.
/// Each call blocks, on the disk and on other programs; never on the main queue.
///
/// A conversation has an input field that holds at most one bubble and one text.
/// A text that comes after a bubble belongs to it. A name is any UTF-8 text of 1
/// to 1000 bytes; a conversation begins with what is inserted first.
///
/// What changes something answers nothing, or one sentence with the file and the
/// cause; then nothing was changed. After a kill at any moment the whole change
/// is there or none of it.
class ConversationStore {
public:
    /// @param folder  Made when something is first stored.
    explicit ConversationStore(std::string folder = dataFolder());

    /// Puts a bubble into the field, in place of the one there and the text that came with it.
    /// @param picture  Stands for the layout's image, which is not looked at.
    [[nodiscard]] std::optional<std::string> insertMessage(std::string_view conversation,
        const MSMessage& message,
        const std::optional<EncodedPicture>& picture) const;
    /// Appends to the text of the field.
    [[nodiscard]] std::optional<std::string> insertText(
        std::string_view conversation, std::string_view text) const;
    /// Sends what is pending, the bubble first.
    [[nodiscard]] std::optional<std::string> sendPending(std::string_view conversation) const;
    /// The same, followed by a text that stood beside the field; all of it or nothing.
    [[nodiscard]] std::optional<std::string> sendPendingAndText(
        std::string_view conversation, std::string_view text) const;
    /// Drops what is pending, bubble and text.
    [[nodiscard]] std::optional<std::string> dropPending(std::string_view conversation) const;

    /// Empty for a conversation that there is not.
    ConversationContent content(std::string_view conversation) const;
    ConversationNames conversations() const;

private:
    using Change = std::function<void(SQLiteDatabase& database, std::int64_t conversation)>;

    std::optional<std::string> insert(std::string_view conversation, const Change& steps) const;
    std::optional<std::string> change(std::string_view conversation, const Change& steps) const;
    std::optional<std::string> finish(
        SQLiteDatabase& database, std::string_view conversation, const Change& steps) const;
    std::string pictureFile(std::int64_t entry) const;
    void storePicture(SQLiteDatabase& database, std::int64_t entry, const Data& jpeg) const;
    void removeLeftoverPictures(SQLiteDatabase& database) const;

    std::string _folder;
    std::string _file;
};

} // namespace exifcard

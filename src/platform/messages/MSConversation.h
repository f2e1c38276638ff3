#pragma once

#include "platform/messages/ConversationStore.h"
#include "platform/messages/MSMessage.h"

#include <functional>
#include <optional>
#include <string>

namespace exifcard {

/// One conversation as an extension sees it: it can put a bubble and a text into
/// the input field and never sends. Shared by pointer; safe on any thread.
class MSConversation {
public:
    /// Called exactly once, on a background queue, when what was inserted is in the field, or with one
    /// sentence that tells what failed and where.
    using CompletionHandler = std::function<void(const std::optional<std::string>& error)>;
    /// Makes what is stored of a bubble's picture; nothing for one that does not decode, which then is
    /// left out. Called on a background queue.
    using PictureEncoder = std::function<std::optional<EncodedPicture>(const UIImage& picture)>;

    /// What could not be put into the field: a bubble or a text.
    struct FailedInsertion {
        std::string error;                ///< One sentence that tells what failed and where.
        std::optional<MSMessage> message; ///< Of a bubble.
        std::string text;                 ///< Of a text.
    };
    /// Called on a background queue, before the completion handler of the insertion.
    using FailureHandler = std::function<void(const FailedInsertion& failure)>;

    /// @param name  As `ConversationStore` takes it.
    MSConversation(
        std::string name, PictureEncoder encodePicture, ConversationStore store = ConversationStore());

    const std::string& name() const { return _name; }
    /// Lets whoever shows the input field tell the user, and insert again. Set before the first insertion.
    void setFailureHandler(FailureHandler handler) { _failureHandler = std::move(handler); }

    /// Puts the bubble into the input field, in place of the one there and the text that came with it.
    /// Insertions that overlap land in any order, so wait for the first where the order matters.
    void insertMessage(MSMessage message, CompletionHandler completionHandler) const;
    /// Appends to the text beside the bubble.
    void insertText(std::string text, CompletionHandler completionHandler) const;

    /// The message that the user tapped in the transcript to come here. Main queue.
    const std::optional<MSMessage>& selectedMessage() const { return _selectedMessage; }
    void setSelectedMessage(std::optional<MSMessage> message) { _selectedMessage = std::move(message); }

private:
    std::string _name;
    PictureEncoder _encodePicture;
    ConversationStore _store;
    FailureHandler _failureHandler; // May be empty.
    std::optional<MSMessage> _selectedMessage;
};

} // namespace exifcard

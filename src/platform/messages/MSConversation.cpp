#include "platform/messages/MSConversation.h"

#include "platform/foundation/DispatchQueue.h"

namespace exifcard {

MSConversation::MSConversation(std::string name, PictureEncoder encodePicture, ConversationStore store)
    : _name(std::move(name))
    , _encodePicture(std::move(encodePicture))
    , _store(std::move(store)) {
}

void MSConversation::insertMessage(MSMessage message, CompletionHandler completionHandler) const {
    DispatchQueue::globalQueue().async([name = _name, encodePicture = _encodePicture, store = _store,
                                           message = std::move(message), failureHandler = _failureHandler,
                                           completionHandler = std::move(completionHandler)] {
        const auto& image = message.layout.image;
        const auto error = store.insertMessage(name, message, image ? encodePicture(*image) : std::nullopt);
        if (error && failureHandler) {
            failureHandler({.error = *error, .message = message, .text = ""});
        }
        completionHandler(error);
    });
}

void MSConversation::insertText(std::string text, CompletionHandler completionHandler) const {
    DispatchQueue::globalQueue().async(
        [name = _name, store = _store, text = std::move(text), failureHandler = _failureHandler,
            completionHandler = std::move(completionHandler)] {
            const auto error = store.insertText(name, text);
            if (error && failureHandler) {
                failureHandler({.error = *error, .message = std::nullopt, .text = text});
            }
            completionHandler(error);
        });
}

} // namespace exifcard

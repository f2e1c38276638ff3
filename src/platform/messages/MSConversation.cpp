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
                                           message = std::move(message),
                                           completionHandler = std::move(completionHandler)] {
        const auto& image = message.layout.image;
        completionHandler(store.insertMessage(name, message, image ? encodePicture(*image) : std::nullopt));
    });
}

void MSConversation::insertText(std::string text, CompletionHandler completionHandler) const {
    DispatchQueue::globalQueue().async([name = _name, store = _store, text = std::move(text),
                                           completionHandler = std::move(completionHandler)] {
        completionHandler(store.insertText(name, text));
    });
}

} // namespace exifcard

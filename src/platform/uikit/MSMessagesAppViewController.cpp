#include "platform/uikit/MSMessagesAppViewController.h"

#include "platform/foundation/DispatchQueue.h"

namespace exifcard {

void MSMessagesAppViewController::requestPresentationStyle(MSMessagesAppPresentationStyle presentationStyle) {
    if (presentationStyle == _presentationStyle ||
        presentationStyle == MSMessagesAppPresentationStyle::Transcript) {
        return;
    }
    DispatchQueue::mainQueue().async([weakHost = _host, presentationStyle] {
        if (const auto host = weakHost.lock()) {
            host->presentationStyleRequested(presentationStyle);
        }
    });
}

void MSMessagesAppViewController::becomeActive(
    const std::shared_ptr<MSConversation>& conversation, MSMessagesAppPresentationStyle presentationStyle) {
    _presentationStyle = presentationStyle;
    _nextPresentationStyle = presentationStyle;
    view();
    _activeConversation = conversation;
    willBecomeActiveWithConversation(conversation);
    didBecomeActiveWithConversation(conversation);
}

void MSMessagesAppViewController::resignActive() {
    const auto conversation = _activeConversation;
    willResignActiveWithConversation(conversation);
    didResignActiveWithConversation(conversation);
    _activeConversation = nullptr;
}

void MSMessagesAppViewController::beginTransition(MSMessagesAppPresentationStyle presentationStyle) {
    _nextPresentationStyle = presentationStyle;
    willTransitionToPresentationStyle(presentationStyle);
}

void MSMessagesAppViewController::finishTransition() {
    _presentationStyle = _nextPresentationStyle;
    didTransitionToPresentationStyle(_presentationStyle);
}

} // namespace exifcard

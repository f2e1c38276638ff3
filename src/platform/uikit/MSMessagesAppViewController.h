#pragma once

#include "platform/uikit/UIViewController.h"
#include "sending/PresentationStyleHolder.h"

#include <memory>

namespace exifcard {

class MSConversation;
struct MSMessage;

/// Whoever shows an extension's screen and decides about its room.
class MSMessagesAppHost {
public:
    MSMessagesAppHost() = default;
    virtual ~MSMessagesAppHost() = default;
    MSMessagesAppHost(const MSMessagesAppHost&) = delete;
    MSMessagesAppHost& operator=(const MSMessagesAppHost&) = delete;

    /// Called on the main queue, after the extension's call has returned.
    virtual void presentationStyleRequested(MSMessagesAppPresentationStyle presentationStyle) = 0;
};

/// The entry screen of an extension. The host makes it, puts its view into a window and calls the operations
/// of the second block; the extension overrides the callbacks.
///
/// Activation: `viewDidLoad`, `willBecomeActive…`, `didBecomeActive…`, `viewWillAppear`, `viewDidAppear`.
class MSMessagesAppViewController : public UIViewController, public PresentationStyleHolder {
    Q_OBJECT

public:
    MSMessagesAppPresentationStyle presentationStyle() const override { return _presentationStyle; }
    /// Asks the host later; does nothing for the present style, nor for the transcript's.
    void requestPresentationStyle(MSMessagesAppPresentationStyle presentationStyle) override;
    /// From `willBecomeActive…` to `didResignActive…`; otherwise null.
    const std::shared_ptr<MSConversation>& activeConversation() const { return _activeConversation; }

    // For the host.
    void setHost(std::weak_ptr<MSMessagesAppHost> host) { _host = std::move(host); }
    /// @param presentationStyle  The one that it starts in.
    void becomeActive(const std::shared_ptr<MSConversation>& conversation,
        MSMessagesAppPresentationStyle presentationStyle);
    void resignActive();
    /// Tells the new style, which `presentationStyle` answers only after `finishTransition`.
    void beginTransition(MSMessagesAppPresentationStyle presentationStyle);
    void finishTransition();

    virtual void willBecomeActiveWithConversation(const std::shared_ptr<MSConversation>&) {}
    virtual void didBecomeActiveWithConversation(const std::shared_ptr<MSConversation>&) {}
    virtual void willResignActiveWithConversation(const std::shared_ptr<MSConversation>&) {}
    virtual void didResignActiveWithConversation(const std::shared_ptr<MSConversation>&) {}
    virtual void willSelectMessage(const MSMessage&, const std::shared_ptr<MSConversation>&) {}
    virtual void didSelectMessage(const MSMessage&, const std::shared_ptr<MSConversation>&) {}
    virtual void didReceiveMessage(const MSMessage&, const std::shared_ptr<MSConversation>&) {}
    virtual void didStartSendingMessage(const MSMessage&, const std::shared_ptr<MSConversation>&) {}
    virtual void didCancelSendingMessage(const MSMessage&, const std::shared_ptr<MSConversation>&) {}
    virtual void willTransitionToPresentationStyle(MSMessagesAppPresentationStyle) {}
    virtual void didTransitionToPresentationStyle(MSMessagesAppPresentationStyle) {}

private:
    std::weak_ptr<MSMessagesAppHost> _host;
    std::shared_ptr<MSConversation> _activeConversation;
    MSMessagesAppPresentationStyle _presentationStyle = MSMessagesAppPresentationStyle::Compact;
    MSMessagesAppPresentationStyle _nextPresentationStyle = MSMessagesAppPresentationStyle::Compact;
};

} // namespace exifcard

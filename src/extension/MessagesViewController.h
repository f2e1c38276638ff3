#pragma once

#include "platform/uikit/MSMessagesAppViewController.h"
#include "screens/SendingOutcome.h"

#include <memory>

namespace exifcard {

/// The extension's entry: shows the photos while the panel is compact and the albums in any other style.
/// Every change of style throws the old screen away.
class MessagesViewController : public MSMessagesAppViewController {
    Q_OBJECT

public:
    /// What a host begins with: makes the scenes known, sets the appearance, and then the controller.
    static std::shared_ptr<MessagesViewController> makeEntry();

    const std::shared_ptr<UIViewController>& exifViewController() const { return _exifViewController; }
    void setExifViewController(std::shared_ptr<UIViewController> exifViewController);
    SendingObserver sendingObserver; ///< Hears of what the screens send; may be empty.

    void didBecomeActiveWithConversation(const std::shared_ptr<MSConversation>& conversation) override;
    void willTransitionToPresentationStyle(MSMessagesAppPresentationStyle presentationStyle) override;

    /// Puts the screen of that style in place of the present one.
    /// @param conversation  Handed to the screen; may be null.
    void presentExifViewControllerWithConversation(const std::shared_ptr<MSConversation>& conversation,
        MSMessagesAppPresentationStyle presentationStyle);

private:
    std::shared_ptr<UIViewController> makePhotos(const std::shared_ptr<MSConversation>& conversation);
    std::shared_ptr<UIViewController> makeAlbums(const std::shared_ptr<MSConversation>& conversation);
    std::weak_ptr<MSMessagesAppViewController> weakSelf();
    void removeChildren();
    void embed(const std::shared_ptr<UIViewController>& child);

    std::shared_ptr<UIViewController> _exifViewController; // The last compact screen, also when it has gone.
};

} // namespace exifcard

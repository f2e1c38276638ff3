#pragma once

#include "platform/uikit/UIViewController.h"
#include "screens/SendingOutcome.h"

#include <memory>

namespace exifcard {

class MSConversation;
class MSMessagesAppViewController;

/// The screen that an expanded panel begins with: titled, and empty.
class AlbumsListViewController : public UIViewController {
    Q_OBJECT

public:
    AlbumsListViewController();

    std::shared_ptr<MSConversation> conversation;
    std::weak_ptr<MSMessagesAppViewController> messagesViewController;
    SendingObserver sendingObserver; ///< For the screens that send; may be empty.

    void viewDidLoad() override;
};

} // namespace exifcard

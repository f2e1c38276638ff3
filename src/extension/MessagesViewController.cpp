#include "extension/MessagesViewController.h"

#include "appearance/uikit/Apperance+Defaults.h"
#include "platform/foundation/Log.h"
#include "platform/messages/MSConversation.h"
#include "platform/uikit/NSLayoutConstraint.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UIStoryboard.h"
#include "platform/uikit/UIView.h"
#include "screens/AlbumsListViewController.h"
#include "screens/ScreenScenes.h"
#include "screens/StickerPhotosExifViewController.h"

#include <utility>

namespace exifcard {
namespace {

std::string descriptionOf(const std::shared_ptr<const UIImage>& image) {
    return image ? stringWithFormat("%ld x %ld",
                       {static_cast<long>(image->size().width), static_cast<long>(image->size().height)})
                 : "(null)";
}

void logSelectedMessage(const MSConversation& conversation) {
    const auto& selected = conversation.selectedMessage();
    if (!selected || !isDebugLogWanted()) {
        return;
    }
    const auto& layout = selected->layout;
    debugLog("Selected Message %@ %@ %@ %@",
        {descriptionOf(layout.image), layout.caption.value_or("(null)"),
            layout.mediaFileURL ? layout.mediaFileURL->absoluteString() : "(null)",
            selected->url.absoluteString()});
}

} // namespace

std::shared_ptr<MessagesViewController> MessagesViewController::makeEntry() {
    registerScreenScenes();
    updateAppApperance();
    return std::make_shared<MessagesViewController>();
}

void MessagesViewController::setExifViewController(std::shared_ptr<UIViewController> exifViewController) {
    _exifViewController = std::move(exifViewController);
}

void MessagesViewController::didBecomeActiveWithConversation(
    const std::shared_ptr<MSConversation>& conversation) {
    presentExifViewControllerWithConversation(conversation, presentationStyle());
}

void MessagesViewController::willTransitionToPresentationStyle(
    MSMessagesAppPresentationStyle presentationStyle) {
    presentExifViewControllerWithConversation(activeConversation(), presentationStyle);
}

void MessagesViewController::presentExifViewControllerWithConversation(
    const std::shared_ptr<MSConversation>& conversation, MSMessagesAppPresentationStyle presentationStyle) {
    debugLog("MSMessagesAppPresentationStyle %ld", {static_cast<long>(presentationStyle)});
    removeChildren();
    const bool isCompact = presentationStyle == MSMessagesAppPresentationStyle::Compact;
    if (const auto child = isCompact ? makePhotos(conversation) : makeAlbums(conversation)) {
        embed(child);
    }
}

void MessagesViewController::removeChildren() {
    const auto children = childViewControllers();
    for (const auto& child : children) {
        child->willMoveToParentViewController(nullptr);
        child->removeViewFromSuperview();
        child->removeFromParentViewController();
    }
}

std::shared_ptr<UIViewController> MessagesViewController::makePhotos(
    const std::shared_ptr<MSConversation>& conversation) {
    auto screen = UIStoryboard::storyboardWithName(kMainInterfaceStoryboard)
                      .instantiateViewControllerWithIdentifier(kAllPhotosScene);
    if (const auto photos = std::dynamic_pointer_cast<StickerPhotosExifViewController>(screen)) {
        photos->conversation = conversation;
        photos->messagesViewController = weakSelf();
        photos->sendingObserver = sendingObserver;
    }
    _exifViewController = screen;
    return screen;
}

std::shared_ptr<UIViewController> MessagesViewController::makeAlbums(
    const std::shared_ptr<MSConversation>& conversation) {
    if (conversation) {
        logSelectedMessage(*conversation);
    }
    auto screen = UIStoryboard::storyboardWithName(kAlbumsListStoryboard)
                      .instantiateViewControllerWithIdentifier(kAlbumsListScene);
    const auto navigation = std::dynamic_pointer_cast<UINavigationController>(screen);
    if (navigation && !navigation->viewControllers().empty()) {
        const auto root = navigation->viewControllers().front();
        if (const auto albums = std::dynamic_pointer_cast<AlbumsListViewController>(root)) {
            albums->conversation = conversation;
            albums->messagesViewController = weakSelf();
            albums->sendingObserver = sendingObserver;
        }
    }
    return screen;
}

std::weak_ptr<MSMessagesAppViewController> MessagesViewController::weakSelf() {
    return std::static_pointer_cast<MSMessagesAppViewController>(shared_from_this());
}

void MessagesViewController::embed(const std::shared_ptr<UIViewController>& child) {
    addChildViewController(child);
    QWidget& childView = child->view();
    childView.setParent(&view());
    childView.setGeometry(view().rect());
    pinToEdges(childView, view());
    childView.show();
    child->didMoveToParentViewController(shared_from_this());
}

} // namespace exifcard

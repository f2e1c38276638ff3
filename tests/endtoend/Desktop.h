#pragma once

#include "extension/MessagesViewController.h"
#include "host/HostAppearance.h"
#include "host/MessagesWindow.h"
#include "platform/messages/ConversationStore.h"
#include "support/TemporaryHome.h"

#include <gmock/gmock.h>

#include <QPointingDevice>

#include <filesystem>
#include <functional>
#include <memory>
#include <source_location>
#include <string>
#include <string_view>
#include <vector>

namespace exifcard {

class BubbleView;
class StickerPhotosExifViewController;
class UICollectionView;

/// The real extension, which also writes down how its styles are told.
class WatchedExtension : public MessagesViewController {
public:
    static std::shared_ptr<WatchedExtension> make();

    std::vector<std::string> calls;
    std::size_t startedSendings = 0;                      ///< Of what was pending.
    std::size_t endedSendings = 0;                        ///< Of a photo into the field.
    std::vector<std::weak_ptr<UIViewController>> screens; ///< All compact ones so far.

    void didBecomeActiveWithConversation(const std::shared_ptr<MSConversation>& conversation) override;

    void willTransitionToPresentationStyle(MSMessagesAppPresentationStyle presentationStyle) override;
    void didTransitionToPresentationStyle(MSMessagesAppPresentationStyle presentationStyle) override;
    void didStartSendingMessage(
        const MSMessage& message, const std::shared_ptr<MSConversation>& conversation) override;
    void didSelectMessage(
        const MSMessage& message, const std::shared_ptr<MSConversation>& conversation) override;
};

/// Copies of two cameras' photos. Each has its number, from 0 to 9899, in its ISO number, and was taken so
/// many minutes later than the first; even ones are square, odd ones upright.
namespace numberedphoto {
void write(const std::filesystem::path& file, int number);
/// What a message about it says.
std::string caption(int number);
std::string camera(int number);
} // namespace numberedphoto

/// A desktop with a home, a folder of photos and, once opened, the window; used with fingers, wheel and keys.
class Desktop : public testing::Test {
protected:
    using Style = MSMessagesAppPresentationStyle;

    Desktop();
    ~Desktop() override;

    /// Runs the main queue until something is so; a test that waits in vain fails.
    static void waitFor(const std::function<bool()>& isSo,
        const std::source_location& place = std::source_location::current());
    /// Numbered photos, from 0 on, in the folder.
    void writePhotos(int count) const;
    /// What the command line's import does, while the window goes on.
    void import() const;
    void openWindow(const std::string& conversation = "Ada");
    /// Until the first page of photos is shown.
    void waitForPhotos() const;

    /// The compact panel's screen, or the album's on top of an expanded one; null for another.
    StickerPhotosExifViewController* photoScreen() const;
    UICollectionView* list() const;

    // As a user does it.
    void tap(QWidget& widget, QPoint place) const;
    /// In the middle of what is seen of it.
    void tap(QWidget& widget) const;
    /// A finger that goes a way within some hundredths of a second.
    void drag(QWidget& widget, QPoint from, QPoint to) const;
    /// @param notches  Downwards, of the list.
    void turnWheel(int notches) const;
    /// Turns the wheel until the item is within the panel, through as many pages as that takes.
    void scrollTo(std::size_t item) const;
    void tapItem(std::size_t item) const;
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const;
    void tapSend() const;
    /// The handle, by that much upwards.
    void dragHandle(int distance) const;
    void waitUntilStill() const;

    // What there is.
    /// In the conversation, as another program finds it.
    std::vector<ConversationEntry> stored() const;
    std::vector<BubbleView*> bubbles() const;

    const TemporaryHome home;
    const std::filesystem::path photos = home.path() / "photos";
    const ConversationStore store;
    std::unique_ptr<QPointingDevice> finger;
    std::shared_ptr<WatchedExtension> extension;
    HostAppearance appearance;
    std::unique_ptr<MessagesWindow> window; ///< Null before it is opened.
};

} // namespace exifcard

#include "endtoend/Desktop.h"
#include "host/BubbleView.h"
#include "host/ConversationFeed.h"
#include "host/ExtensionPanel.h"
#include "host/TranscriptView.h"
#include "metadata/ExifInformation.h"
#include "platform/messages/MSConversation.h"
#include "platform/photos/PHAsset.h"
#include "platform/photos/PHAssetCollection.h"
#include "platform/photos/PHFetchResult.h"
#include "platform/uikit/UICollectionView.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UIStoryboard.h"
#include "screens/AlbumsListViewController.h"
#include "screens/ExifDataListDataSource.h"
#include "screens/ScreenScenes.h"
#include "screens/StickerPhotosExifViewController.h"
#include "settings/PersistanceManager.h"

#include <gmock/gmock.h>

#include <QAccessible>
#include <QLabel>
#include <QProcess>

namespace exifcard {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using Kind = ConversationEntry::Kind;
using State = ConversationEntry::State;

constexpr int kPhotoCount = 230;

/// The newest photo comes first.
constexpr std::size_t itemOf(int number) {
    return static_cast<std::size_t>(kPhotoCount - 1 - number);
}

class EndToEndTest : public Desktop {
protected:
    EndToEndTest() {
        writePhotos(kPhotoCount);
        import();
        PersistanceManager::sharedInstance().setIncludeExifAsTextOniMessageApp(true);
    }
    void waitForStored(std::size_t count, State state) const {
        waitFor([this, count, state] {
            const auto entries = stored();
            return entries.size() == count && entries.back().state == state;
        });
    }
    void waitForBubbles(std::size_t count) const {
        waitFor([this, count] { return bubbles().size() == count; });
    }
    void expectPhotoAndText(const std::vector<ConversationEntry>& entries, int number, State state) const {
        ASSERT_EQ(entries.size(), 2U);
        EXPECT_EQ(entries[0].kind, Kind::Message);
        EXPECT_EQ(entries[0].message.layout.caption, numberedphoto::caption(number));
        EXPECT_EQ(entries[0].message.layout.subcaption, numberedphoto::camera(number));
        EXPECT_TRUE(entries[0].picture && std::filesystem::exists(entries[0].picture->file));
        EXPECT_EQ(entries[1].kind, Kind::Text);
        EXPECT_THAT(entries[1].text, HasSubstr(numberedphoto::camera(number)));
        EXPECT_EQ(entries[0].state, state);
        EXPECT_EQ(entries[1].state, state);
    }
    void sendPhoto(int number) {
        tapItem(itemOf(number));
        waitForStored(2, State::Pending);
        waitFor([this] { return window->feed().pending().size() == 2; });
        tapSend();
        waitForStored(2, State::Sent);
        waitForBubbles(2);
    }
};

TEST_F(EndToEndTest, SendsExactlyThePhotoThatWasTappedOnTheThirdPage) {
    openWindow();
    waitForPhotos();
    drag(*list()->viewport(), {150, 200}, {150, 60});
    waitFor([this] { return list()->contentOffset().y > 100; });
    constexpr int kNumber = 14;
    tapItem(itemOf(kNumber));
    EXPECT_GT(photoScreen()->dataSource->unFilteredExifDataItemsArray.size(), 200U);
    waitForStored(2, State::Pending);
    expectPhotoAndText(stored(), kNumber, State::Pending);
    EXPECT_TRUE(bubbles().empty());

    waitFor([this] { return window->feed().pending().size() == 2; });
    tapSend();
    waitForStored(2, State::Sent);
    expectPhotoAndText(stored(), kNumber, State::Sent);
    waitForBubbles(2);
    ASSERT_FALSE(bubbles().empty());
    EXPECT_THAT(bubbles()[0]->spokenText().toStdString(), HasSubstr("ISO 114"));
    EXPECT_TRUE(window->feed().pending().empty());
    EXPECT_EQ(window->panel().style(), Style::Compact);
}

TEST_F(EndToEndTest, ExpandsAndCollapsesByTouchAndByKeyAndShowsTheAlbums) {
    openWindow();
    waitForPhotos();
    dragHandle(150);
    waitUntilStill();
    EXPECT_THAT(extension->calls, ElementsAre("will expand", "did expand"));
    const auto navigation =
        std::dynamic_pointer_cast<UINavigationController>(extension->childViewControllers().front());
    ASSERT_TRUE(navigation);
    const auto albums = std::dynamic_pointer_cast<AlbumsListViewController>(navigation->topViewController());
    ASSERT_TRUE(albums);
    EXPECT_TRUE(albums->view().isVisible());
    EXPECT_EQ(albums->conversation, window->feed().conversation());
    extension->calls.clear();
    press(Qt::Key_E, Qt::ControlModifier);
    waitUntilStill();
    EXPECT_THAT(extension->calls, ElementsAre("will compact", "did compact"));
    waitForPhotos();
}

TEST_F(EndToEndTest, ReturnsToTheConversationAfterSendingFromAnAlbum) {
    openWindow();
    press(Qt::Key_E, Qt::ControlModifier);
    waitUntilStill();
    const auto navigation =
        std::dynamic_pointer_cast<UINavigationController>(extension->childViewControllers().front());
    ASSERT_TRUE(navigation);
    const auto screen = std::dynamic_pointer_cast<StickerPhotosExifViewController>(
        UIStoryboard::storyboardWithName(kMainInterfaceStoryboard)
            .instantiateViewControllerWithIdentifier(kAllPhotosScene));
    screen->conversation = window->feed().conversation();
    screen->messagesViewController = extension;
    screen->assetCollection = PHAssetCollection::fetchAssetCollectionsWithType(
        PHAssetCollectionType::SmartAlbum, PHAssetCollectionSubtype::SmartAlbumUserLibrary)
                                  ->firstObject();
    ASSERT_TRUE(screen->assetCollection);
    extension->screens.emplace_back(screen);
    navigation->pushViewController(screen, /*animated=*/false);
    waitForPhotos();
    ASSERT_EQ(photoScreen(), screen.get());
    extension->calls.clear();
    tapItem(3);
    waitForStored(2, State::Pending);
    waitFor([this] { return window->panel().style() == Style::Compact && !window->panel().isMoving(); });
    EXPECT_THAT(extension->calls, ElementsAre("will compact", "did compact"));
    ASSERT_FALSE(stored().empty());
    EXPECT_THAT(stored()[0].message.layout.caption.value_or(""), HasSubstr("ISO "));
}

TEST_F(EndToEndTest, ShowsSettingsOfTheCommandLineAtOnce) {
    openWindow();
    waitForPhotos();
    const auto set = [](const QString& setting, const QString& value) {
        return QProcess::execute(QStringLiteral(EXIFCARD_BINARY_DIR "/exifcard"),
            {QStringLiteral("--quiet"), QStringLiteral("settings"), QStringLiteral("set"), setting, value});
    };
    const auto date = [this] {
        const auto cells = list()->visibleCells();
        return cells.empty() ? QString()
                             : cells.front()->findChild<QLabel*>(QStringLiteral("dateTakenLabel"))->text();
    };
    const auto firstPhoto = [this] {
        const auto& records = photoScreen()->dataSource->exifDataItemsArray;
        return records.empty() ? std::string() : records.front()->phAsset->localIdentifier;
    };
    const std::string newest = firstPhoto();
    ASSERT_EQ(set(QStringLiteral("datePreferenceTimeAgoSinceNow"), QStringLiteral("false")), 0);
    ASSERT_EQ(set(QStringLiteral("dateFormatString"), QStringLiteral("'year' yyyy")), 0);
    waitFor([&] { return date().startsWith(QStringLiteral("year ")); });
    ASSERT_EQ(set(QStringLiteral("sortOrderAscending"), QStringLiteral("true")), 0);
    waitFor([&] { return !firstPhoto().empty() && firstPhoto() != newest; });
}

TEST_F(EndToEndTest, OpensTheAlbumsWithTheMessageThatIsTapped) {
    openWindow();
    waitForPhotos();
    constexpr int kNumber = kPhotoCount - 2;
    sendPhoto(kNumber);
    ASSERT_FALSE(bubbles().empty());
    extension->calls.clear();
    window->transcript().ensureWidgetVisible(bubbles()[0]);
    tap(*bubbles()[0]);
    waitUntilStill();
    EXPECT_THAT(extension->calls,
        ElementsAre("will expand", "selected " + numberedphoto::caption(kNumber), "did expand"));
    const auto& selected = window->feed().conversation()->selectedMessage();
    ASSERT_TRUE(selected);
    EXPECT_EQ(selected->layout.caption, numberedphoto::caption(kNumber));
    press(Qt::Key_Escape);
    waitUntilStill();
    EXPECT_FALSE(window->feed().conversation()->selectedMessage());
    QAccessible::queryAccessibleInterface(bubbles()[0])
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction()); // As a screen reader opens it.
    waitUntilStill();
    EXPECT_TRUE(window->feed().conversation()->selectedMessage());
}

} // namespace
} // namespace exifcard

#include "endtoend/Desktop.h"
#include "host/BubbleView.h"
#include "host/ConversationFeed.h"
#include "host/InputBar.h"
#include "host/SheetButton.h"
#include "platform/foundation/FilePaths.h"
#include "platform/uikit/UICollectionView.h"
#include "screens/ExifDataListDataSource.h"
#include "screens/StickerPhotosExifViewController.h"
#include "sending/PhotoSending.h"
#include "settings/PersistanceManager.h"
#include "support/MainQueueWatchdog.h"

#include <QLabel>

#include <fstream>

namespace exifcard {
namespace {

using testing::HasSubstr;
using State = ConversationEntry::State;

/// Of a text that somebody pastes by mistake.
constexpr std::size_t kLength = 1'000'000;

class BadInputTest : public Desktop {
protected:
    BadInputTest() { PersistanceManager::sharedInstance().setIncludeExifAsTextOniMessageApp(false); }

    void openWithPhotos(int count) {
        writePhotos(count);
        import();
        openWindow();
        waitForPhotos();
    }
    void waitForPending() const {
        waitFor([this] { return !window->feed().pending().empty(); });
    }
    /// What stands above the input field.
    std::string errorShown() const {
        std::string text;
        for (const QLabel* const label : window->inputBar().findChildren<QLabel*>()) {
            text += label->isVisible() ? label->text().toStdString() : "";
        }
        return text;
    }
    SheetButton* retryButton() const {
        for (SheetButton* const button : window->inputBar().findChildren<SheetButton*>()) {
            if (button->isVisible()) {
                return button;
            }
        }
        return nullptr;
    }
};

TEST_F(BadInputTest, AMessageIsStoredOnceThoughTheWindowClosesWhileItIsSent) {
    openWithPhotos(1);
    tapItem(0);
    waitForPending();
    press(Qt::Key_Return, Qt::ControlModifier);
    window->close();
    window.reset();
    const auto entries = store.content("Ada").entries;
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries[0].state, State::Sent);
}

TEST_F(BadInputTest, APhotoTappedBeforeTheWindowClosesIsInTheFieldOnceWithItsText) {
    PersistanceManager::sharedInstance().setIncludeExifAsTextOniMessageApp(true);
    openWithPhotos(1);
    tapItem(0);
    EXPECT_TRUE(PhotoSending::isAnyUnderWay());
    window.reset();
    waitFor([] { return !PhotoSending::isAnyUnderWay(); });
    const auto entries = store.content("Ada").entries;
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0].kind, ConversationEntry::Kind::Message);
    EXPECT_EQ(entries[1].kind, ConversationEntry::Kind::Text);
}

TEST_F(BadInputTest, AConversationThatCannotBeStoredIsToldAtTheInputFieldUntilItCan) {
    const std::filesystem::path file = dataFolder() + "/conversations.sqlite";
    std::filesystem::create_directories(file);
    openWithPhotos(1);
    waitFor([this] { return !errorShown().empty(); });
    EXPECT_THAT(errorShown(), HasSubstr("conversations.sqlite"));
    tapItem(0);
    waitFor([this] { return retryButton() != nullptr; });
    ASSERT_NE(retryButton(), nullptr);
    std::filesystem::remove(file);
    tap(*retryButton());
    waitForPending();
    EXPECT_EQ(retryButton(), nullptr);
    tapSend();
    waitFor([this] { return bubbles().size() == 1; });
    EXPECT_EQ(errorShown(), "");
}

TEST_F(BadInputTest, TextsOfAnyLengthAndScriptKeepTheWindowQuick) {
    const auto repeated = [](std::string_view part, std::size_t length = kLength) {
        std::string text;
        while (text.size() + part.size() <= length) {
            text += part;
        }
        return text;
    };
    expectNoLongStep([&](int go) {
        const std::string name = "Ada " + std::to_string(go);
        for (const char* const part :
            {"x", "word ", "مرحبا ", "a\u0301\u0302\u0303", "\n", "👨‍👩‍👧"}) {
            ASSERT_EQ(store.sendPendingAndText(name, repeated(part)), std::nullopt);
        }
        MSMessage message;
        message.layout.caption = repeated("a\u0301\u0302\u0303", kLength / 2);
        message.layout.imageTitle = repeated("مرحبا ", kLength / 2);
        ASSERT_EQ(store.insertMessage(name, message, std::nullopt), std::nullopt);
        ASSERT_EQ(store.insertText(name, repeated("ab\n")), std::nullopt);
        openWindow(name);
        waitFor([this] { return bubbles().size() == 6 && window->feed().pending().size() == 2; });
        window->resize(500, 700);
        tapSend();
        waitFor([this] { return bubbles().size() == 8; });
        window.reset();
    });
}

TEST_F(BadInputTest, PhotosWhosePictureDoesNotDecodeAreSentWithoutIt) {
    writePhotos(3);
    import();
    std::ofstream(photos / "0000.jpg") << "no picture";
    std::filesystem::resize_file(photos / "0001.jpg", 400);
    openWindow();
    waitForPhotos();
    ASSERT_EQ(list()->numberOfItemsInSection(0), 3U);
    for (const std::size_t item : {0U, 1U, 2U}) {
        tapItem(item);
        waitForPending();
        tapSend();
        waitFor([&] { return bubbles().size() == item + 1; });
    }
    const auto entries = stored();
    ASSERT_EQ(entries.size(), 3U);
    EXPECT_TRUE(entries[0].picture);
    EXPECT_FALSE(entries[1].picture);
    EXPECT_FALSE(entries[2].picture);
}

TEST_F(BadInputTest, APhotoThatIsDeletedWhileItIsShownIsSentWithoutItsPicture) {
    openWithPhotos(2);
    std::filesystem::remove(photos / "0001.jpg");
    tapItem(0);
    waitForPending();
    ASSERT_EQ(stored().size(), 1U);
    EXPECT_EQ(stored()[0].message.layout.caption, numberedphoto::caption(1));
    EXPECT_FALSE(stored()[0].picture);
}

TEST_F(BadInputTest, PhotosThatAreUnmountedStayInTheListAndHaveTheirPicturesOnceTheyAreBack) {
    openWithPhotos(2);
    const std::filesystem::path away = photos.string() + " away";
    std::filesystem::rename(photos, away);
    tapItem(0);
    waitForPending();
    ASSERT_EQ(stored().size(), 1U);
    EXPECT_FALSE(stored()[0].picture);
    import(); // Looks for them in vain.
    std::filesystem::rename(away, photos);
    tapItem(0);
    waitFor([this] { return stored().size() == 1 && stored()[0].picture; });
    EXPECT_EQ(stored()[0].message.layout.caption, numberedphoto::caption(1));
    EXPECT_EQ(list()->numberOfItemsInSection(0), 2U);
}

} // namespace
} // namespace exifcard

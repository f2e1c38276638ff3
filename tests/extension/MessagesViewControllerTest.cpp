#include "extension/MessagesViewController.h"

#include "platform/foundation/Log.h"
#include "platform/photos/Library.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UIStoryboard.h"
#include "screens/AlbumsListViewController.h"
#include "screens/ExifDataListDataSource.h"
#include "screens/ScreenScenes.h"
#include "screens/StickerPhotosExifViewController.h"
#include "sending/Conversations.h"
#include "settings/PersistanceManager.h"

#include <gmock/gmock.h>

#include <QTest>

namespace exifcard {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::StartsWith;

using Style = MSMessagesAppPresentationStyle;

/// Notes what a screen is told of its parent.
class NotingScreen : public UIViewController {
public:
    NotingScreen(std::string name, std::vector<std::string>& notes) : _name(std::move(name)), _notes(notes) {}

    void willMoveToParentViewController(const std::shared_ptr<UIViewController>& parent) override {
        _notes.push_back(_name + (parent ? " will come" : " will go"));
        UIViewController::willMoveToParentViewController(parent);
    }
    void didMoveToParentViewController(const std::shared_ptr<UIViewController>& parent) override {
        _notes.push_back(_name + (parent ? " has come" : " has gone"));
        UIViewController::didMoveToParentViewController(parent);
    }

private:
    std::string _name;
    std::vector<std::string>& _notes;
};

class MessagesViewControllerTest : public Library {
protected:
    MessagesViewControllerTest() { PersistanceManager::forgetSharedInstance(); }
    ~MessagesViewControllerTest() override {
        PersistanceManager::forgetSharedInstance();
        captureLog({});
        setDebugLogTarget(LogTarget::Nowhere);
    }

    std::shared_ptr<UIViewController> onlyChild() const {
        EXPECT_EQ(entry->childViewControllers().size(), 1U);
        return entry->childViewControllers().empty() ? nullptr : entry->childViewControllers().front();
    }
    void changeStyle(Style style) const {
        entry->beginTransition(style);
        entry->finishTransition();
    }

    /// Before the settings and the library of the test go, which the compact screen reads on other queues.
    void waitUntilLoaded() const {
        const auto screen =
            std::dynamic_pointer_cast<StickerPhotosExifViewController>(entry->exifViewController());
        ASSERT_TRUE(screen);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !screen->dataSource->isLoading(); }));
    }

    const std::shared_ptr<MessagesViewController> entry = MessagesViewController::makeEntry();
    const std::shared_ptr<MSConversation> conversation = conversationNamed("Ada");
};

TEST_F(MessagesViewControllerTest, ShowsAllPhotosWhileItIsCompact) {
    entry->view().resize(375, 300);
    entry->view().show();
    entry->becomeActive(conversation, Style::Compact);
    const auto screen = std::dynamic_pointer_cast<StickerPhotosExifViewController>(onlyChild());
    ASSERT_TRUE(screen);
    EXPECT_EQ(entry->exifViewController(), screen);
    EXPECT_EQ(screen->conversation, conversation);
    EXPECT_EQ(screen->messagesViewController.lock(), entry);
    EXPECT_EQ(screen->assetCollection, nullptr);
    EXPECT_EQ(screen->view().parentWidget(), &entry->view());
    entry->view().resize(500, 280);
    EXPECT_TRUE(QTest::qWaitFor([&] { return screen->view().geometry() == QRect(0, 0, 500, 280); }));
    waitUntilLoaded();
}

TEST_F(MessagesViewControllerTest, ShowsTheAlbumsInAnyOtherStyle) {
    entry->becomeActive(conversation, Style::Compact);
    waitUntilLoaded();
    const auto compactScreen = entry->exifViewController();
    for (const Style style : {Style::Expanded, Style::Transcript}) {
        changeStyle(style);
        const auto navigation = std::dynamic_pointer_cast<UINavigationController>(onlyChild());
        ASSERT_TRUE(navigation);
        const auto albums =
            std::dynamic_pointer_cast<AlbumsListViewController>(navigation->viewControllers().front());
        ASSERT_TRUE(albums);
        EXPECT_EQ(albums->conversation, conversation);
        EXPECT_EQ(albums->messagesViewController.lock(), entry);
        EXPECT_EQ(entry->exifViewController(), compactScreen);
    }
    changeStyle(Style::Compact);
    EXPECT_EQ(onlyChild(), entry->exifViewController());
    EXPECT_NE(onlyChild(), compactScreen);
    waitUntilLoaded();
}

TEST_F(MessagesViewControllerTest, LetsTheOldScreenGoBeforeTheNewOneComes) {
    std::vector<std::string> notes;
    int made = 0;
    UIStoryboard::registerScene(kMainInterfaceStoryboard, kAllPhotosScene,
        [&] { return std::make_shared<NotingScreen>(std::to_string(++made), notes); });
    const std::shared_ptr<MSConversation> none;
    entry->presentExifViewControllerWithConversation(none, Style::Compact);
    entry->presentExifViewControllerWithConversation(none, Style::Compact);
    EXPECT_THAT(notes,
        ElementsAre("1 will come", "1 has come", "1 will go", "1 has gone", "2 will come", "2 has come"));

    UIStoryboard::registerScene(kMainInterfaceStoryboard, kAllPhotosScene, {});
    entry->presentExifViewControllerWithConversation(none, Style::Compact);
    EXPECT_TRUE(entry->childViewControllers().empty());
    EXPECT_EQ(entry->exifViewController(), nullptr);
}

TEST_F(MessagesViewControllerTest, TellsTheSelectedMessageInTheLogAlone) {
    std::vector<std::string> lines;
    setDebugLogTarget(LogTarget::StandardError);
    captureLog([&](std::string_view line) { lines.emplace_back(line); });
    MSMessage message;
    message.url = URL::withString("https://exifcard.example/");
    conversation->setSelectedMessage(message);
    entry->becomeActive(conversation, Style::Expanded);
    EXPECT_THAT(lines, Contains("MSMessagesAppPresentationStyle 1"));
    EXPECT_THAT(lines, Contains(StartsWith("Selected Message (null) ")));
    EXPECT_TRUE(std::dynamic_pointer_cast<UINavigationController>(onlyChild()));
}

} // namespace
} // namespace exifcard

#include "host/LibraryAccess.h"

#include "host/ChoiceSheet.h"
#include "host/SheetButton.h"
#include "host/Waiting.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/NotificationCenter.h"
#include "platform/foundation/UserDefaults.h"
#include "screens/ListScreenRequests.h"
#include "support/TemporaryHome.h"

#include <QLineEdit>
#include <QTest>

#include <atomic>
#include <filesystem>
#include <fstream>

namespace exifcard {
namespace {

class LibraryAccessTest : public testing::Test {
protected:
    LibraryAccessTest() {
        PHPhotoLibrary::setAuthorization(PHAuthorizationStatus::NotDetermined);
        _window->resize(400, 600);
        _window->show();
    }

    ChoiceSheet* sheet() const { return _access->openSheet(); }
    void expectSheet() const {
        expectSoon([this] { return sheet() != nullptr; });
    }
    static int status() { return static_cast<int>(PHPhotoLibrary::authorizationStatus()); }
    /// A screen's own question; -1 before its answer.
    void ask() {
        PHPhotoLibrary::requestAuthorization(
            [this](PHAuthorizationStatus answer) { _answer = static_cast<int>(answer); });
    }

    TemporaryHome _home;
    std::atomic<int> _answer = -1;
    std::unique_ptr<QWidget> _window = std::make_unique<QWidget>();
    LibraryAccess* _access = new LibraryAccess(*_window);
};

TEST_F(LibraryAccessTest, AsksEveryStartUntilTheQuestionIsAnswered) {
    _access->start(std::nullopt);
    expectSheet();
    ask();
    QTest::keyClick(sheet(), Qt::Key_Escape);
    expectSoon([this] { return _answer == static_cast<int>(PHAuthorizationStatus::NotDetermined); });
    EXPECT_EQ(status(), static_cast<int>(PHAuthorizationStatus::NotDetermined));
    EXPECT_EQ(sheet(), nullptr) << "left open, it is not asked again by itself";

    NotificationCenter::defaultCenter().postNotificationName(kLibraryAccessRequestedNotification, nullptr);
    expectSheet();
    QTest::mouseClick(sheet()->findChildren<SheetButton*>().back(), Qt::LeftButton);
    EXPECT_EQ(status(), static_cast<int>(PHAuthorizationStatus::Denied));
    ask();
    expectSoon([this] { return _answer == static_cast<int>(PHAuthorizationStatus::Denied); });
}

TEST_F(LibraryAccessTest, DecidesNothingWhenItsWindowClosesWhileItAsks) {
    ask();
    expectSheet();
    _window.reset();
    expectSoon([this] { return _answer == static_cast<int>(PHAuthorizationStatus::NotDetermined); });
    EXPECT_EQ(status(), static_cast<int>(PHAuthorizationStatus::NotDetermined));
}

TEST_F(LibraryAccessTest, GivesTheKeysBackWhenItsQuestionIsAnswered) {
    QLineEdit before(_window.get());
    QLineEdit line(_window.get());
    line.show();
    line.setFocus();
    NotificationCenter::defaultCenter().postNotificationName(kAddPhotosRequestedNotification, nullptr);
    expectSheet();
    EXPECT_NE(_window->focusWidget(), &line);
    QTest::keyClick(sheet(), Qt::Key_Escape);
    EXPECT_EQ(_window->focusWidget(), &line);
}

TEST_F(LibraryAccessTest, AllowsAFolderThatIsChosenWhereOnlySomeAreAllowed) {
    const std::filesystem::path pictures = _home.path() / "pictures";
    std::filesystem::create_directories(pictures);
    std::filesystem::create_directories(_home.path() / "config");
    std::ofstream(_home.path() / "config" / "user-dirs.dirs") << "XDG_PICTURES_DIR=" << pictures << '\n';
    PHPhotoLibrary::setAuthorization(PHAuthorizationStatus::Limited, {"/first"});
    NotificationCenter::defaultCenter().postNotificationName(kAddPhotosRequestedNotification, nullptr);
    expectSheet();
    QTest::mouseClick(sheet()->findChildren<SheetButton*>().front(), Qt::LeftButton);
    EXPECT_EQ(PHPhotoLibrary::limitedFolders(), (std::vector<std::string>{"/first", pictures.string()}));
    PHPhotoLibrary::setAuthorization(PHAuthorizationStatus::Denied);
    PHPhotoLibrary::allowFolder(pictures.string());
    EXPECT_EQ(status(), static_cast<int>(PHAuthorizationStatus::Denied)) << "a folder more is no permission";
}

/// The last one, for nothing takes the permission back from the process.
TEST_F(LibraryAccessTest, TakesAFolderThatIsNamedLaterForTheAnswer) {
    std::atomic<int> told = 0;
    const auto observation = NotificationCenter::defaultCenter().addObserver(
        kUserDefaultsDidChangeNotification, nullptr, [&told](const Notification&) { ++told; });
    _access->start(std::nullopt);
    expectSheet();
    const int toldBefore = told;
    _access->addNamedFolder((_home.path() / "photos").string());
    expectSoon([this] { return sheet() == nullptr; });
    EXPECT_EQ(status(), static_cast<int>(PHAuthorizationStatus::Authorized));
    EXPECT_GT(told, toldBefore) << "lists that could not be read learn of it";
}

} // namespace
} // namespace exifcard

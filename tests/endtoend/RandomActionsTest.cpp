#include "endtoend/Desktop.h"
#include "host/BubbleView.h"
#include "host/ConversationFeed.h"
#include "host/ExtensionPanel.h"
#include "host/InputBar.h"
#include "metadata/ExifInformation.h"
#include "platform/foundation/DefaultsFile.h"
#include "platform/photos/PHAssetChangeRequest.h"
#include "platform/photos/PHPhotoLibrary.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UICollectionView.h"
#include "platform/uikit/UITraitCollection.h"
#include "screens/ExifDataListDataSource.h"
#include "screens/StickerPhotosExifViewController.h"
#include "settings/PersistanceManager.h"

#include <fmt/format.h>

#include <QApplication>
#include <QLineEdit>

#include <array>
#include <cstdio>
#include <random>
#include <set>

namespace exifcard {
namespace {

constexpr unsigned kSeed = 20'261'125;
constexpr int kActionCount = 1000;

/// A window that anything happens to, and the same again for the same seed.
class RandomActionsTest : public Desktop {
protected:
    struct Action {
        const char* name;
        int weight;
        void (RandomActionsTest::*run)();
    };
    static const std::vector<Action> kActions;

    int below(int end) { return static_cast<int>(_random() % static_cast<unsigned>(end)); }
    bool coin() { return below(2) == 0; }
    template<typename T>
    T oneOf(std::initializer_list<T> values) {
        return values.begin()[below(static_cast<int>(values.size()))];
    }
    static PersistanceManager& settings() { return PersistanceManager::sharedInstance(); }

    void addPhoto();
    void changeLibrary();
    void changeOneSetting();
    void changeSettingsOutside();
    void changeTraits();
    void doubleTapInPanel();
    void pressAnyKey();
    void resizeWindow();
    void send();
    void swipeInPanel();
    void switchConversation() { window->openConversation(oneOf<const char*>({"Ada", "Grace", "عائشة"})); }
    void tapBubble();
    void tapInPanel() { tap(window->panel(), placeInPanel()); }
    void tapTile();
    void toggleStyle();
    void turnWheelSomewhere() { turnWheel(below(21) - 10); }
    void warnOfMemory() { UIApplication::postMemoryWarning(); }

    const Action& nextAction();
    void perform(const Action& action);
    QPoint placeInPanel();
    PHAssetPtr anyAsset();
    std::filesystem::path anyFile();
    void expectStillAlive();
    void expectSentOnce() const;

    std::mt19937 _random{kSeed};
    int _photoCount = 0;
    std::size_t _sendsWithoutBubble = 0; ///< A photo that was on its way may have joined one.
};

const std::vector<RandomActionsTest::Action> RandomActionsTest::kActions = {
    {"add a photo", 3, &RandomActionsTest::addPhoto},
    {"change the library", 6, &RandomActionsTest::changeLibrary},
    {"change a setting", 8, &RandomActionsTest::changeOneSetting},
    {"change settings outside", 3, &RandomActionsTest::changeSettingsOutside},
    {"change the traits", 5, &RandomActionsTest::changeTraits},
    {"double tap", 5, &RandomActionsTest::doubleTapInPanel},
    {"press a key", 20, &RandomActionsTest::pressAnyKey},
    {"resize", 3, &RandomActionsTest::resizeWindow},
    {"send", 6, &RandomActionsTest::send},
    {"swipe", 8, &RandomActionsTest::swipeInPanel},
    {"switch the conversation", 4, &RandomActionsTest::switchConversation},
    {"tap a bubble", 3, &RandomActionsTest::tapBubble},
    {"tap in the panel", 8, &RandomActionsTest::tapInPanel},
    {"tap a tile", 10, &RandomActionsTest::tapTile},
    {"toggle the style", 8, &RandomActionsTest::toggleStyle},
    {"turn the wheel", 8, &RandomActionsTest::turnWheelSomewhere},
    {"warn of memory", 2, &RandomActionsTest::warnOfMemory},
};

QPoint RandomActionsTest::placeInPanel() {
    return {below(window->panel().width()), below(window->panel().height())};
}

PHAssetPtr RandomActionsTest::anyAsset() {
    if (photoScreen() == nullptr || photoScreen()->dataSource->exifDataItemsArray.empty()) {
        return nullptr;
    }
    const auto& records = photoScreen()->dataSource->exifDataItemsArray;
    return records[static_cast<std::size_t>(below(static_cast<int>(records.size())))]->phAsset;
}

std::filesystem::path RandomActionsTest::anyFile() {
    return photos / fmt::format("{:04}.jpg", below(_photoCount));
}

void RandomActionsTest::addPhoto() {
    numberedphoto::write(photos / fmt::format("{:04}.jpg", _photoCount), _photoCount);
    ++_photoCount;
    import();
}

void RandomActionsTest::changeLibrary() {
    const PHAssetPtr asset = anyAsset();
    const bool isDeleting = below(4) == 0;
    switch (below(3)) {
    case 0:
        if (asset) {
            PHPhotoLibrary::sharedPhotoLibrary().performChanges(
                [asset, isDeleting] {
                    if (isDeleting) {
                        PHAssetChangeRequest::deleteAssets(std::array{asset});
                    } else {
                        PHAssetChangeRequest::changeRequestForAsset(*asset).setFavorite(!asset->isFavorite);
                    }
                },
                {});
        }
        break;
    case 1: // Replaced by another program, seen by the import at once or later.
        numberedphoto::write(anyFile(), below(9000));
        break;
    default:
        std::filesystem::remove(anyFile());
    }
    if (coin()) {
        import();
    }
}

void RandomActionsTest::changeOneSetting() {
    switch (below(10)) {
    case 0:
        return settings().setLocationFilter(oneOf<std::uint64_t>({0, 0, 1, 2}));
    case 1:
        return settings().setShouldHidePhotosWithoutExifDetails(coin());
    case 2:
        return settings().setDateFormatString(oneOf<const char*>({"dd-MM-yyyy", "MM/dd/yyyy", "", "'"}));
    case 3:
        return settings().setDatePreference24HourFormat(coin());
    case 4:
        return settings().setDatePreferenceTimeAgoSinceNow(coin());
    case 5:
        return settings().setIncludeExifAsTextOniMessageApp(coin());
    case 6:
        return settings().setTavolinViewType(oneOf<std::uint64_t>({0, 1, 1, 2, 3}));
    case 7:
        return settings().setShouldShowExifDetailsOnGridView(coin());
    case 8:
        return settings().setSortOrderAscending(coin());
    default:
        return settings().setShouldShowExtraInformationOnEXIFCards(coin());
    }
}

void RandomActionsTest::changeSettingsOutside() {
    DefaultsFile(settings().userDefaults->path())
        .change({{"tavolinViewType", Value(below(4))}, {"locationFilter", Value(below(2) * below(3))},
            {"shouldHidePhotosWithoutExifDetails", Value(coin())}});
    if (coin()) {
        settings().userDefaults->synchronize();
    }
}

void RandomActionsTest::changeTraits() {
    UITraitCollection traits = UITraitCollection::currentTraitCollection();
    traits.userInterfaceStyle = coin() ? UIUserInterfaceStyle::Dark : UIUserInterfaceStyle::Light;
    traits.preferredContentSizeCategory = static_cast<UIContentSizeCategory>(below(12));
    traits.isRightToLeft = coin();
    traits.isMotionReduced = coin();
    QApplication::setLayoutDirection(traits.isRightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    UITraitCollection::setCurrentTraitCollection(traits);
}

void RandomActionsTest::doubleTapInPanel() {
    const QPoint place = placeInPanel();
    tap(window->panel(), place);
    tap(window->panel(), place);
}

void RandomActionsTest::pressAnyKey() {
    using Keys = std::pair<Qt::Key, Qt::KeyboardModifiers>;
    const Qt::KeyboardModifiers none = Qt::NoModifier;
    const auto [key, modifiers] = oneOf<Keys>(
        {{Qt::Key_Tab, none}, {Qt::Key_Tab, Qt::ShiftModifier}, {Qt::Key_F6, none}, {Qt::Key_F6, none},
            {Qt::Key_Up, none}, {Qt::Key_Down, none}, {Qt::Key_Left, none}, {Qt::Key_Right, none},
            {Qt::Key_Down, Qt::ShiftModifier}, {Qt::Key_Home, none}, {Qt::Key_End, none},
            {Qt::Key_PageUp, none}, {Qt::Key_PageDown, none}, {Qt::Key_Return, none}, {Qt::Key_Space, none},
            {Qt::Key_Left, Qt::AltModifier}, {Qt::Key_Right, Qt::AltModifier}, {Qt::Key_F, none},
            {Qt::Key_D, none}, {Qt::Key_L, none}, {Qt::Key_X, none}, {Qt::Key_E, Qt::ControlModifier},
            {Qt::Key_Escape, none}, {Qt::Key_F5, none}, {Qt::Key_R, Qt::ControlModifier},
            {Qt::Key_A, Qt::ControlModifier}, {Qt::Key_D, Qt::ControlModifier | Qt::ShiftModifier}});
    press(key, modifiers);
}

void RandomActionsTest::resizeWindow() {
    window->resize(360 + below(400), 640 + below(141));
}

void RandomActionsTest::send() {
    if (coin()) {
        window->findChild<QLineEdit*>()->setText(QStringLiteral("Look!"));
    }
    if (coin()) {
        tapSend();
        return tapSend();
    }
    press(Qt::Key_Return, Qt::ControlModifier);
    press(Qt::Key_Return, Qt::ControlModifier);
}

void RandomActionsTest::swipeInPanel() {
    const QPoint from = placeInPanel();
    drag(window->panel(), from, coin() ? placeInPanel() : QPoint(placeInPanel().x(), from.y()));
}

void RandomActionsTest::tapBubble() {
    const auto all = bubbles();
    if (!all.empty()) {
        tap(*all[static_cast<std::size_t>(below(static_cast<int>(all.size())))]);
    }
}

void RandomActionsTest::tapTile() {
    const auto cells = list() == nullptr ? std::vector<UICollectionViewCell*>() : list()->visibleCells();
    if (!cells.empty()) {
        tap(*cells[static_cast<std::size_t>(below(static_cast<int>(cells.size())))]);
    }
}

void RandomActionsTest::toggleStyle() {
    if (coin()) {
        return dragHandle(below(500) - 250);
    }
    extension->requestPresentationStyle(coin() ? Style::Expanded : Style::Compact);
}

const RandomActionsTest::Action& RandomActionsTest::nextAction() {
    int total = 0;
    for (const Action& action : kActions) {
        total += action.weight;
    }
    int chosen = below(total);
    const Action* action = kActions.data();
    for (; chosen >= action->weight; ++action) {
        chosen -= action->weight;
    }
    return *action;
}

void RandomActionsTest::perform(const Action& action) {
    const auto& pending = window->feed().pending();
    const bool hasNoBubble = pending.empty() || pending[0].kind == ConversationEntry::Kind::Text;
    const bool wasSending = window->feed().isSending();
    (this->*action.run)();
    _sendsWithoutBubble += hasNoBubble && !wasSending && window->feed().isSending() ? 1 : 0;
    if (QWidget* const dialog = QApplication::activeModalWidget()) {
        dialog->close();
    }
    constexpr int kMilliseconds = 10;
    window->feed().waitForStore();
    QCoreApplication::processEvents(QEventLoop::AllEvents, kMilliseconds);
}

/// A tap on the first photo still brings it into the input field.
void RandomActionsTest::expectStillAlive() {
    QApplication::setLayoutDirection(Qt::LeftToRight);
    UITraitCollection::setCurrentTraitCollection({});
    settings().setTavolinViewType(1);
    settings().setLocationFilter(0);
    settings().setSortOrderAscending(false);
    settings().setShouldHidePhotosWithoutExifDetails(false);
    window->resize(420, 780);
    window->panel().setStyle(Style::Compact, /*isAnimated=*/false);
    window->openConversation("Nobody yet");
    QCoreApplication::processEvents(); // The list begins anew where its order has changed.
    waitFor([this] { return list() != nullptr && !photoScreen()->dataSource->isLoading(); });
    _photoCount = 9500; // Younger than all others.
    addPhoto();
    waitForPhotos();
    scrollTo(0);
    const auto first = photoScreen()->dataSource->exifDataItemsArray.front();
    tapItem(0);
    waitFor([this] { return !stored().empty() && !window->feed().pending().empty(); });
    ASSERT_FALSE(stored().empty());
    EXPECT_THAT(stored()[0].message.layout.caption.value_or(""),
        testing::HasSubstr(fmt::format("ISO {} ", first->iSOSpeed.integerValue())));
}

void RandomActionsTest::expectSentOnce() const {
    std::size_t sent = 0;
    std::set<std::string> pictures;
    for (const std::string& name : store.conversations().names) {
        for (const ConversationEntry& entry : store.content(name).entries) {
            if (entry.kind == ConversationEntry::Kind::Message &&
                entry.state == ConversationEntry::State::Sent) {
                ++sent;
                EXPECT_TRUE(!entry.picture || pictures.insert(entry.picture->file).second) << name;
            }
        }
    }
    EXPECT_GT(sent, 0U);
    EXPECT_GE(sent, extension->startedSendings);
    EXPECT_LE(sent, extension->startedSendings + _sendsWithoutBubble);
}

TEST_F(RandomActionsTest, LeaveTheWindowAliveAndSendEachMessageOnce) {
    while (_photoCount < 150) {
        numberedphoto::write(photos / fmt::format("{:04}.jpg", _photoCount), _photoCount);
        ++_photoCount;
    }
    import();
    openWindow();
    waitForPhotos();
    for (int count = 0; count < kActionCount; ++count) {
        const Action& action = nextAction();
        // Seen when the test fails.
        std::fprintf(stderr, "%d of seed %u: %s\n", count, kSeed, action.name);
        perform(action);
    }
    waitFor([this] { return !window->feed().isSending(); });
    expectSentOnce();
    expectStillAlive();
}

} // namespace
} // namespace exifcard

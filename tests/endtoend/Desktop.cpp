#include "endtoend/Desktop.h"

#include "appearance/uikit/Apperance+Defaults.h"
#include "host/BubbleView.h"
#include "host/ConversationFeed.h"
#include "host/ExtensionPanel.h"
#include "host/InputBar.h"
#include "host/PanelHandle.h"
#include "host/Settling.h"
#include "host/TranscriptView.h"
#include "platform/photos/PHPhotoLibrary.h"
#include "platform/photos/PhotoCatalogue.h"
#include "platform/photos/import/Importer.h"
#include "platform/uikit/PictureButton.h"
#include "platform/uikit/UICollectionView.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UITraitCollection.h"
#include "screens/ExifDataListDataSource.h"
#include "screens/ScreenScenes.h"
#include "screens/StickerPhotosExifViewController.h"
#include "settings/PersistanceManager.h"

#include <fmt/format.h>

#include <QApplication>
#include <QTest>
#include <QWheelEvent>

#include <algorithm>
#include <fstream>
#include <future>
#include <iterator>
#include <utility>

namespace exifcard {
namespace {

using namespace std::string_view_literals;

constexpr int kLeastISO = 100;

/// What tells the copies of a sample apart is written over these bytes.
struct Sample {
    std::string_view file;
    std::string_view isoEntry; ///< The ISO number's two bytes follow.
    bool isLittleEndian = false;
    std::string_view date;
    std::string_view captionBeforeISO;
    std::string_view captionAfterISO;
    std::string_view camera;
};

constexpr Sample kSamples[] = {
    {"canon-1dmk3.jpg", "\x27\x88\x03\x00\x01\x00\x00\x00"sv, true, "2007:02:22 17:02:42",
        "f/5.6   1/125 seconds   ISO ", "   35mm", "Canon EOS-1D Mark III"},
    {"apple-iphone4s-lens.jpg", "\x88\x27\x00\x03\x00\x00\x00\x01"sv, false, "2014:09:01 15:03:47",
        "f/2.4   1/1284 seconds   ISO ", "   4mm", "iPhone 4S"},
};

const Sample& sampleOf(int number) {
    return kSamples[number % 2];
}

std::string bytesOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void replaceAll(std::string& bytes, std::string_view before, std::string_view after) {
    for (std::size_t at = bytes.find(before); at != std::string::npos; at = bytes.find(before, at + 1)) {
        bytes.replace(at, after.size(), after);
    }
}

} // namespace

void numberedphoto::write(const std::filesystem::path& file, int number) {
    const Sample& sample = sampleOf(number);
    std::string bytes = bytesOf(std::filesystem::path(EXIFCARD_TEST_DATA) / sample.file);
    const int iso = kLeastISO + number;
    const auto high = static_cast<char>(iso / 256);
    const auto low = static_cast<char>(iso % 256);
    bytes[bytes.find(sample.isoEntry) + sample.isoEntry.size()] = sample.isLittleEndian ? low : high;
    bytes[bytes.find(sample.isoEntry) + sample.isoEntry.size() + 1] = sample.isLittleEndian ? high : low;
    const int minute = number % 60;
    const int hour = number / 60 % 24;
    const int day = number / 60 / 24 + 1;
    replaceAll(bytes, sample.date, fmt::format("2020:01:{:02} {:02}:{:02}:00", day, hour, minute));
    std::ofstream(file, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::string numberedphoto::caption(int number) {
    const Sample& sample = sampleOf(number);
    return fmt::format("{}{}{}", sample.captionBeforeISO, kLeastISO + number, sample.captionAfterISO);
}

std::string numberedphoto::camera(int number) {
    return std::string(sampleOf(number).camera);
}

std::shared_ptr<WatchedExtension> WatchedExtension::make() {
    registerScreenScenes();
    updateAppApperance();
    auto extension = std::make_shared<WatchedExtension>();
    extension->sendingObserver = [weak = std::weak_ptr(extension)](const SendingOutcome&) {
        if (const auto self = weak.lock()) {
            ++self->endedSendings;
        }
    };
    return extension;
}

void WatchedExtension::didBecomeActiveWithConversation(const std::shared_ptr<MSConversation>& conversation) {
    MessagesViewController::didBecomeActiveWithConversation(conversation);
    screens.push_back(exifViewController());
}

void WatchedExtension::willTransitionToPresentationStyle(MSMessagesAppPresentationStyle presentationStyle) {
    calls.emplace_back(
        presentationStyle == MSMessagesAppPresentationStyle::Compact ? "will compact" : "will expand");
    MessagesViewController::willTransitionToPresentationStyle(presentationStyle);
    screens.push_back(exifViewController());
}

void WatchedExtension::didTransitionToPresentationStyle(MSMessagesAppPresentationStyle presentationStyle) {
    calls.emplace_back(
        presentationStyle == MSMessagesAppPresentationStyle::Compact ? "did compact" : "did expand");
    MessagesViewController::didTransitionToPresentationStyle(presentationStyle);
}

void WatchedExtension::didStartSendingMessage(
    const MSMessage& message, const std::shared_ptr<MSConversation>& conversation) {
    ++startedSendings;
    MessagesViewController::didStartSendingMessage(message, conversation);
}

void WatchedExtension::didSelectMessage(
    const MSMessage& message, const std::shared_ptr<MSConversation>& conversation) {
    calls.push_back("selected " + message.layout.caption.value_or(""));
    MessagesViewController::didSelectMessage(message, conversation);
}

Desktop::Desktop()
    : finger(QTest::createTouchDevice())
    , extension(WatchedExtension::make())
    , appearance(UIUserInterfaceStyle::Light, UIUserInterfaceStyle::Light) {
    std::filesystem::create_directories(photos);
    PhotoCatalogue::setShared(nullptr);
    PersistanceManager::forgetSharedInstance();
    PHPhotoLibrary::setAuthorization(PHAuthorizationStatus::Authorized);
}

Desktop::~Desktop() {
    window.reset();
    const auto screens = std::exchange(extension, nullptr)->screens;
    // A photo that is still on its way keeps its screen, and needs the settings.
    waitFor([&screens] {
        return std::ranges::all_of(screens, [](const auto& screen) { return screen.expired(); });
    });
    QApplication::setLayoutDirection(Qt::LeftToRight);
    UITraitCollection::setCurrentTraitCollection({});
    PhotoCatalogue::setShared(nullptr);
}

void Desktop::waitFor(const std::function<bool()>& isSo, const std::source_location& place) {
    if (!waitUntil(isSo)) {
        ADD_FAILURE_AT(place.file_name(), static_cast<int>(place.line())) << "waited in vain";
    }
}

void Desktop::writePhotos(int count) const {
    for (int number = 0; number < count; ++number) {
        numberedphoto::write(photos / fmt::format("{:04}.jpg", number), number);
    }
}

void Desktop::import() const {
    const auto run = [folder = photos.string()] {
        const ImportHandlers noHandlers{[](const auto&) {}, [](auto) {}, [](const auto&) {}};
        Importer(PhotoCatalogue::shared(), noHandlers, 2).importTrees({folder});
    };
    const auto imported = std::async(std::launch::async, run);
    waitFor([&] { return imported.wait_for(std::chrono::seconds(0)) == std::future_status::ready; });
}

void Desktop::openWindow(const std::string& conversation) {
    window = std::make_unique<MessagesWindow>(extension, WindowState(), appearance);
    window->resize(420, 780); // The screen is 800 high, and no finger reaches beyond.
    window->openConversation(conversation);
    window->show();
    window->activateExtension();
    window->activateWindow(); // Shortcuts belong to the active window.
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
}

void Desktop::waitForPhotos() const {
    waitFor([this] {
        return list() != nullptr && !photoScreen()->dataSource->isLoading() &&
               !list()->visibleCells().empty() && list()->contentOffset().y == 0;
    });
}

StickerPhotosExifViewController* Desktop::photoScreen() const {
    const auto children = extension->childViewControllers();
    auto screen = children.empty() ? nullptr : children.front();
    if (const auto navigation = std::dynamic_pointer_cast<UINavigationController>(screen)) {
        screen = navigation->topViewController();
    }
    return dynamic_cast<StickerPhotosExifViewController*>(screen.get());
}

UICollectionView* Desktop::list() const {
    auto* const screen = photoScreen();
    return screen == nullptr ? nullptr : screen->collectionView.data();
}

void Desktop::tap(QWidget& widget, QPoint place) const {
    QTest::touchEvent(&widget, finger.get()).press(0, place, &widget);
    QTest::touchEvent(&widget, finger.get()).release(0, place, &widget);
}

void Desktop::tap(QWidget& widget) const {
    QRect seen = widget.rect();
    for (const QWidget* above = widget.parentWidget(); above != nullptr; above = above->parentWidget()) {
        seen &= QRect(widget.mapFrom(above, QPoint()), above->size());
    }
    tap(widget, seen.center());
}

void Desktop::drag(QWidget& widget, QPoint from, QPoint to) const {
    constexpr int kSteps = 6;
    QWidget& ground = *widget.window(); // The widget may move along.
    const QPoint start = widget.mapTo(&ground, from);
    QTest::touchEvent(&ground, finger.get()).press(0, start, &ground);
    for (int step = 1; step <= kSteps; ++step) {
        const QPoint place = start + (to - from) * step / kSteps;
        QTest::qWait(10); // The list reads speeds from the events' times.
        QTest::touchEvent(&ground, finger.get()).move(0, place, &ground);
    }
    QTest::touchEvent(&ground, finger.get()).release(0, start + to - from, &ground);
}

void Desktop::turnWheel(int notches) const {
    if (list() == nullptr) {
        return;
    }
    QWidget& viewport = *list()->viewport();
    const QPointF center = QPointF(viewport.rect().center());
    QWheelEvent event(center, viewport.mapToGlobal(center), {}, {0, -notches * 120}, Qt::NoButton, {},
        Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&viewport, &event);
}

void Desktop::scrollTo(std::size_t item) const {
    waitFor([this, item] {
        const auto* const cell = list()->cellForItemAtIndexPath({0, item});
        if (cell != nullptr && list()->viewport()->rect().contains(cell->geometry().center())) {
            return true;
        }
        turnWheel(4);
        return false;
    });
    waitUntilStill();
}

void Desktop::tapItem(std::size_t item) const {
    scrollTo(item);
    tap(*list()->cellForItemAtIndexPath({0, item}));
}

void Desktop::press(Qt::Key key, Qt::KeyboardModifiers modifiers) const {
    QTest::keyClick(window->windowHandle(), key, modifiers);
}

void Desktop::tapSend() const {
    for (PictureButton* const button : window->inputBar().findChildren<PictureButton*>()) {
        if (button->accessibleName() == QStringLiteral("Send")) {
            tap(*button);
        }
    }
}

void Desktop::dragHandle(int distance) const {
    auto& handle = *window->findChild<PanelHandle*>();
    const QPoint center = handle.rect().center();
    drag(handle, center, center - QPoint(0, distance));
}

void Desktop::waitUntilStill() const {
    double before = -1;
    waitFor([&] {
        const double now = list() == nullptr ? 0 : list()->contentOffset().y;
        return std::exchange(before, now) == now && !window->panel().isMoving();
    });
}

std::vector<ConversationEntry> Desktop::stored() const {
    return store.content(window->feed().name()).entries;
}

std::vector<BubbleView*> Desktop::bubbles() const {
    const auto all = window->transcript().findChildren<BubbleView*>();
    return {all.begin(), all.end()};
}

} // namespace exifcard

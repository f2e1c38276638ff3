// The messaging window over the library of this user, off screen at twice the scale.
//
//     benchmark_panel first
//         until the tiles on screen have their pictures; prints the processor time of that in milliseconds
//     benchmark_panel scroll TILES
//         then scrolls past so many tiles, a row a frame; prints the resident memory in KiB and the frames'
//         times in milliseconds: median, 95 %, longest
//     benchmark_panel send ROUNDS
//         then taps a photo, each round, until its message waits in the input field; prints the median time
//         of that, and of decoding and fitting the same picture
#include "categories/UIImage+Resize.h"
#include "host/ConversationFeed.h"
#include "host/ExtensionPanel.h"
#include "host/HostAppearance.h"
#include "host/HostExtension.h"
#include "host/MessagesWindow.h"
#include "metadata/FieldKeys.h"
#include "platform/imageio/ImageDrawing.h"
#include "platform/photos/PHAsset.h"
#include "platform/photos/PHFetchOptions.h"
#include "platform/photos/PHImageManager.h"
#include "platform/photos/PHPhotoLibrary.h"
#include "platform/uikit/MSMessagesAppViewController.h"
#include "platform/uikit/SynthesizedClick.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UICollectionView.h"
#include "platform/uikit/UIImageView.h"
#include "platform/uivalues/UIScreen.h"
#include "programs/ResidentMemory.h"
#include "programs/Shown.h"
#include "settings/FieldList.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace exifcard {
namespace {

constexpr int kLongestWait = 60'000;
constexpr int kLook = 100;
constexpr double kPicture = 900;
constexpr double kScale = 2;
/// The message, and the text that comes after it.
constexpr std::size_t kPartsOfMessage = 2;

bool runUntil(const std::function<bool()>& isSo) {
    QElapsedTimer time;
    time.start();
    // What is waited for comes with an event. The timer ends a wait in vain, and takes nothing from the work.
    QTimer look;
    look.start(kLook);
    while (!isSo()) {
        if (time.elapsed() > kLongestWait) {
            std::fputs("nothing came in a minute\n", stderr);
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

UICollectionView* listOf(MessagesWindow& window) {
    return window.panel().extension().view().findChild<UICollectionView*>();
}

/// Whether there are tiles, and each one on screen shows its picture.
bool showsPictures(MessagesWindow& window) {
    const auto* const list = listOf(window);
    const auto cells = list != nullptr ? list->visibleCells() : std::vector<UICollectionViewCell*>();
    return !cells.empty() && std::ranges::all_of(cells, [](const UICollectionViewCell* cell) {
        const auto views = cell->findChildren<UIImageView*>();
        return std::ranges::any_of(views, [](const UIImageView* view) { return view->image() != nullptr; });
    });
}

double millisecondsOf(const std::function<void()>& work) {
    QElapsedTimer time;
    time.start();
    work();
    return double(time.nsecsElapsed()) / 1e6;
}

double quantile(std::vector<double> values, double part) {
    std::ranges::sort(values);
    return values[std::min(values.size() - 1, std::size_t(part * double(values.size())))];
}

int scroll(MessagesWindow& window, std::size_t tiles) {
    UICollectionView& list = *listOf(window);
    std::vector<double> frames;
    std::size_t seen = 0;
    while (seen < tiles) {
        const auto visible = list.indexPathsForVisibleItems();
        const auto row = list.collectionViewLayout().layoutAttributesForItemAtIndexPath(visible.front());
        const double step = row->frame.size.height + 2;
        const CGPoint offset = list.contentOffset();
        const double last = list.contentSize().height - list.bounds().size.height;
        if (offset.y + step > last) { // The next page is being read.
            if (!runUntil([&] { return list.contentSize().height - list.bounds().size.height > last; })) {
                return 1;
            }
            continue;
        }
        frames.push_back(millisecondsOf([&] {
            list.setContentOffset({0, offset.y + step}, /*animated=*/false);
            list.layoutIfNeeded();
            list.viewport()->repaint();
        }));
        QCoreApplication::processEvents();
        seen = list.indexPathsForVisibleItems().back().item;
    }
    runUntil([&] { return showsPictures(window); });
    std::printf("%ld %.2f %.2f %.2f\n", residentKibibytes(), quantile(frames, 0.5), quantile(frames, 0.95),
        quantile(frames, 1));
    return 0;
}

/// What nobody can do without: the newest photo's bytes decoded and fitted.
void decodeAndFit(const PHAsset& asset) {
    PHImageRequestOptions options;
    options.synchronous = true;
    PHImageManager::defaultManager().requestImageDataForAsset(asset, options,
        [](const std::optional<Data>& data, const std::string&, UIImageOrientation, const auto&) {
            const auto picture = data ? imageWithData(*data) : nullptr;
            const auto fitted = imageWithImageScaledToFitToSize(picture, {kPicture, kPicture});
            if (!fitted || !fitted->bitmap()) {
                std::fputs("the picture does not decode\n", stderr);
            }
        });
}

int send(MessagesWindow& window, int rounds) {
    PHFetchOptions options;
    options.sortDescriptors = {{"creationDate", false}, {"modificationDate", false}};
    const auto newest = PHAsset::fetchAssetsWithOptions(options)->firstObject();
    std::vector<double> taps;
    std::vector<double> bare;
    for (int round = 0; round < rounds; ++round) {
        window.feed().dropPending();
        if (!runUntil([&] { return window.feed().pending().empty(); })) {
            return 1;
        }
        taps.push_back(millisecondsOf([&] {
            QWidget& tile = *listOf(window)->visibleCells().front();
            sendClick(tile, tile.rect().center());
            runUntil([&] { return window.feed().pending().size() == kPartsOfMessage; });
        }));
        bare.push_back(millisecondsOf([&] { decodeAndFit(*newest); }));
    }
    std::printf("%.2f %.2f\n", quantile(taps, 0.5), quantile(bare, 0.5));
    return 0;
}

int run(int argumentCount, char** arguments) {
    const std::string what = argumentCount > 1 ? arguments[1] : "";
    const int number = argumentCount > 2 ? std::atoi(arguments[2]) : 0;
    HostAppearance appearance(UIUserInterfaceStyle::Light, UIUserInterfaceStyle::Light);
    MessagesWindow window(makeExtension(), {}, appearance);
    window.openConversation("Benchmark");
    window.show();
    window.activateExtension();
    if (!runUntil([&] { return showsPictures(window); })) {
        return 1;
    }
    QCoreApplication::sendPostedEvents(&window, QEvent::UpdateRequest); // Paints those that came last.
    if (what == "first") {
        tellShown();
    }
    return what == "scroll" ? scroll(window, std::size_t(number)) : what == "send" ? send(window, number) : 0;
}

} // namespace
} // namespace exifcard

int main(int argumentCount, char** arguments) {
    using namespace exifcard;
    setFieldTest(isFieldKey);
    PHPhotoLibrary::grantForThisProcess();
    UIScreen::setMainScreen({.scale = kScale});             // As the toolkit is told: --screen 390x844@2.
    UIApplication::prepare(UIApplication::Fonts::OwnFirst); // As the program does.
    QApplication application(argumentCount, arguments);
    UIApplication::start();
    const int status = run(argumentCount, arguments);
    std::fflush(nullptr);
    std::_Exit(status);
}

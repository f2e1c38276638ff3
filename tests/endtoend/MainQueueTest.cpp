#include "endtoend/Desktop.h"
#include "host/LibraryAccess.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/uikit/UICollectionView.h"
#include "support/MainQueueWatchdog.h"

#include <thread>

namespace exifcard {
namespace {

class MainQueueTest : public Desktop {};

TEST_F(MainQueueTest, IsMeasuredByItsLongestStep) {
    const MainQueueWatchdog watchdog;
    constexpr std::chrono::milliseconds kBusyTime(30);
    bool hasRun = false;
    DispatchQueue::mainQueue().async([&] {
        std::this_thread::sleep_for(kBusyTime); // As a step that waits for the disk.
        hasRun = true;
    });
    waitFor([&] { return hasRun; });
    EXPECT_GE(watchdog.longestStep(), kBusyTime);
}

TEST_F(MainQueueTest, StaysFreeWhileManyPhotosAreImportedAndTheListIsScrolled) {
    constexpr int kPhotoCount = 300;
    writePhotos(1);
    import();
    openWindow();
    waitForPhotos();
    writePhotos(kPhotoCount);
    bool isImported = false;
    QObject::connect(&window->libraryAccess(), &LibraryAccess::progressed, window.get(),
        [&isImported](double part) { isImported = part < 0; });
    const MainQueueWatchdog watchdog;
    window->openLibrary(photos.string());
    waitFor([&] {
        turnWheel(isImported ? 3 : -1);
        return isImported && list()->numberOfItemsInSection(0) == kPhotoCount;
    });
    EXPECT_LE(watchdog.longestStep(), MainQueueWatchdog::limit()) << watchdog.longestStepName();
    EXPECT_GT(watchdog.stepCount(), 100U);
}

} // namespace
} // namespace exifcard

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
    bool isImported = false;
    QObject::connect(&window->libraryAccess(), &LibraryAccess::progressed, window.get(),
        [&isImported](double part) { isImported = part < 0; });
    expectNoLongStep([&](int go) {
        const int count = (go + 1) * kPhotoCount;
        writePhotos(count);
        isImported = false;
        window->openLibrary(photos.string());
        waitFor([&] {
            turnWheel(isImported ? 3 : -1);
            return isImported && list()->numberOfItemsInSection(0) == static_cast<std::size_t>(count);
        });
    });
}

} // namespace
} // namespace exifcard

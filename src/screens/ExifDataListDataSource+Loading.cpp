#include "screens/ExifDataListDataSource.h"

#include "cards/LoadingMoreCollectionViewCell.h"
#include "hud/MBProgressHUD.h"
#include "library/LocalImageFiles.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/LocalizedString.h"
#include "platform/foundation/Log.h"
#include "platform/uikit/Text+Qt.h"
#include "platform/uikit/UICollectionView.h"
#include "screens/ExifDataListViewController.h"
#include "screens/ListPresentation.h"
#include "screens/ListViewTypes.h"
#include "settings/PersistanceManager.h"

#include <QLabel>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <limits>
#include <utility>

namespace exifcard {
namespace {

constexpr std::int64_t kLibrarySource = 1;
constexpr std::int64_t kAnySubtype = std::numeric_limits<std::int64_t>::max();
constexpr double kBarSeconds = 0.25;

void call(const ExifDataListDataSource::CompletionBlock& completionBlock) {
    if (completionBlock) {
        completionBlock();
    }
}

/// Lets through as much progress as a screen shows, for the main queue wakes for each step: what is left out
/// is followed by more, or by the page. All of it where it is logged. Any thread.
class ProgressPace {
public:
    bool isDue() {
        const auto now = Clock::now().time_since_epoch().count();
        const bool isFrameOver = Clock::duration(now - _latest.load()) >= kFrame;
        if (!isFrameOver && !isDebugLogWanted()) {
            return false;
        }
        _latest = now;
        return true;
    }

private:
    using Clock = std::chrono::steady_clock;
    static constexpr std::chrono::milliseconds kFrame{16};

    std::atomic<Clock::rep> _latest = 0;
};

DispatchQueue& readingQueue() {
    return DispatchQueue::globalQueue(DispatchQueue::Priority::High);
}

} // namespace

/// One page on its way.
struct ExifDataListDataSource::Page {
    PHAssetFetchResultPtr fetchResult;
    std::size_t location = 0;
    std::size_t size = 0; ///< When it is full.
    std::uint64_t generation = 0;
    bool beginsAnew = false; ///< Takes the place of all that is shown.
    CompletionBlock completionBlock;

    /// Blocks on the disk.
    AssetRange range() const {
        const std::size_t end = fetchResult ? fetchResult->countUpTo(location + size) : 0;
        return {location, std::min(end - std::min(end, location), size)};
    }
};

void ExifDataListDataSource::refreshAllPhotosWithFavoritesOnly(
    bool favoritesOnly, const ProgressBlock& /*progressBlock*/, CompletionBlock completionBlock) {
    refresh(
        [favoritesOnly] {
            const auto& settings = PersistanceManager::sharedInstance();
            PHAssetFetchResultPtr found;
            LocalImageFiles::getPHFetchResultFromPhotosSource(kLibrarySource, kAnySubtype, favoritesOnly,
                settings.sortByKeyValue(), settings.sortOrderAscending(),
                [&found](const PHAssetFetchResultPtr& result) { found = result; });
            return found;
        },
        std::move(completionBlock));
}

void ExifDataListDataSource::refreshAndLoadPhotosFromPHCollection(const PHAssetCollectionPtr& album,
    bool favoritesOnly,
    const ProgressBlock& /*progressBlock*/,
    CompletionBlock completionBlock) {
    refresh(
        [album, favoritesOnly] {
            const bool ascending = PersistanceManager::sharedInstance().sortOrderAscending();
            PHAssetFetchResultPtr found;
            LocalImageFiles::getPHFetchResultFromPHAssetCollection(*album, favoritesOnly, ascending,
                [&found](const PHAssetFetchResultPtr& result) { found = result; });
            if (isDebugLogWanted()) {
                debugLog("FETCH_RESULTS %@", {std::to_string(found ? found->count() : 0)});
            }
            return found;
        },
        std::move(completionBlock));
}

void ExifDataListDataSource::refresh(Fetch fetch, CompletionBlock completionBlock) {
    exifDataItemsArray.clear();
    unFilteredExifDataItemsArray.clear();
    ++_generation;
    _isFetching = true;
    readingQueue().async([weakSelf = weak_from_this(), fetch = std::move(fetch), generation = _generation,
                             completionBlock = std::move(completionBlock)] {
        DispatchQueue::mainQueue().async([weakSelf, result = fetch(), generation, completionBlock] {
            const auto self = weakSelf.lock();
            self ? self->fetched(result, generation, completionBlock) : call(completionBlock);
        });
    });
}

void ExifDataListDataSource::fetched(
    PHAssetFetchResultPtr result, std::uint64_t generation, CompletionBlock completionBlock) {
    if (generation != _generation) {
        call(completionBlock); // A newer refresh is under way.
        return;
    }
    ++_generation; // A page of the result before may have been asked for meanwhile.
    _isFetching = false;
    exifDataItemsArray.clear();
    unFilteredExifDataItemsArray.clear();
    fetchResult = std::move(result);
    isLoadingMoreExifObjects = false; // A load always starts, even if one was running.
    loadMoreResultsWithCompletionBlock(std::move(completionBlock));
}

void ExifDataListDataSource::replaceFetchResult(PHAssetFetchResultPtr replacement) {
    ++_generation;
    isLoadingMoreExifObjects = true;
    read({std::move(replacement), /*location=*/0, pageSize(), _generation, /*beginsAnew=*/true, {}});
}

void ExifDataListDataSource::loadMoreResultsWithCompletionBlock(CompletionBlock completionBlock) {
    if (isLoading()) { // What is being asked for takes the place of the list.
        call(completionBlock);
        return;
    }
    updateProgressOnLoading(0, /*containsICloud=*/false);
    isLoadingMoreExifObjects = true;
    if (exifDataItemsArray.empty() && _presentation->viewType() != kQuietCardsViewType) {
        showFirstLoadingSpinnerHUD();
    }
    read({fetchResult, unFilteredExifDataItemsArray.size(), pageSize(), _generation, /*beginsAnew=*/false,
        std::move(completionBlock)});
}

void ExifDataListDataSource::showFirstLoadingSpinnerHUD() {
    const auto parent = weakParentViewController.lock();
    if (!parent || !parent->isViewLoaded()) {
        return;
    }
    MBProgressHUD::hideAllHUDsForView(parent->view(), /*animated=*/false);
    firstLoadingSpinnerHUD = MBProgressHUD::showHUDAddedTo(parent->view(), /*animated=*/true);
    firstLoadingSpinnerHUD->setMode(MBProgressHUDMode::DeterminateHorizontalBar);
}

void ExifDataListDataSource::read(const Page& page) {
    readingQueue().async([weakSelf = weak_from_this(), page] {
        const auto pace = std::make_shared<ProgressPace>();
        const auto showProgress = [weakSelf, pace, generation = page.generation](
                                      bool containsICloud, float progress) {
            if (!pace->isDue()) {
                return;
            }
            DispatchQueue::mainQueue().async([weakSelf, generation, containsICloud, progress] {
                debugLog("PROGRESS %f", {progress});
                const auto self = weakSelf.lock();
                if (self && self->_generation == generation) {
                    self->updateProgressOnLoading(progress, containsICloud);
                }
            });
        };
        const auto land = [weakSelf, page](const Records& records) {
            DispatchQueue::mainQueue().async([weakSelf, page, records] {
                debugLog("exifDataArrayInPHFetchResults COmpletionBlock ");
                const auto self = weakSelf.lock();
                self ? self->pageArrived(page, records) : call(page.completionBlock);
            });
        };
        ExifManager::exifDataArrayInPHFetchResults(page.fetchResult, page.range(), showProgress, land);
    });
}

void ExifDataListDataSource::pageArrived(const Page& page, const Records& records) {
    if (page.generation != _generation) {
        call(page.completionBlock); // The list began anew meanwhile.
        return;
    }
    take(page, records);
    isLoadingMoreExifObjects = false;
    reloadCollectionView();
    checkAndGoToExifDetailsScreenForPHAssetID();
    const auto parent = weakParentViewController.lock();
    if (parent && parent->isViewLoaded()) {
        MBProgressHUD::hideAllHUDsForView(parent->view(), /*animated=*/true);
    }
    call(page.completionBlock);
    if (parent) {
        parent->dataSourceDidLoadPage();
    }
}

void ExifDataListDataSource::take(const Page& page, const Records& records) {
    if (page.beginsAnew) {
        fetchResult = page.fetchResult;
        exifDataItemsArray.clear();
        unFilteredExifDataItemsArray.clear();
    }
    hasMoreExifObjects = !records.empty() && records.size() >= page.size;
    unFilteredExifDataItemsArray.insert(unFilteredExifDataItemsArray.end(), records.begin(), records.end());
    const Records shown = ExifManager::exifDataItemsArrayAndFilterFromExifArray(records);
    exifDataItemsArray.insert(exifDataItemsArray.end(), shown.begin(), shown.end());
}

void ExifDataListDataSource::updateProgressOnLoading(float progress, bool containsICloud) {
    const QString message = qString(messageForProgress(progress, containsICloud));
    if (!collectionView || collectionView->numberOfSections() <= kLoadingMoreSection) {
        if (firstLoadingSpinnerHUD) {
            firstLoadingSpinnerHUD->setLabelText(textFromQString(message));
            firstLoadingSpinnerHUD->setProgress(progress);
        }
        return;
    }
    auto* const cell = dynamic_cast<LoadingMoreCollectionViewCell*>(
        collectionView->cellForItemAtIndexPath({kLoadingMoreSection, 0}));
    if (cell != nullptr) {
        cell->progressBarWidthConstraint.setConstant(
            cell->frame().size.width * static_cast<double>(progress));
        cell->layOutBar(progress != 0 ? kBarSeconds : 0);
        cell->loadingMessageLabel().setText(message);
    }
}

std::string ExifDataListDataSource::messageForProgress(float progress, bool containsICloud) {
    if (!containsICloud) {
        return {};
    }
    return localizedStringWithFormat(
        "Downloading photos from iCloud :- %0.2f%%", {static_cast<double>(progress * 100.0F)});
}

} // namespace exifcard

#include "screens/ExifDataListViewController.h"

#include "cards/ExifGridWithDetailsCollectionViewCell.h"
#include "library/QueueManager.h"
#include "metadata/ExifInformation.h"
#include "platform/foundation/Log.h"
#include "platform/uikit/UICollectionView.h"
#include "screens/ExifDataListDataSource.h"
#include "screens/ListViewTypes.h"
#include "settings/PersistanceManager.h"

#include <algorithm>
#include <utility>

namespace exifcard {
namespace {

// So many places before its end a list asks for more.
constexpr std::size_t kCardsBeforeEnd = 6;
constexpr std::size_t kTilesBeforeEnd = 12;

using Record = ExifManager::Record;
using CellLookup = ExifDataCollectionListViewCell::ExifOriginalCellBlock;

/// Answers the cell that shows that place at the time of the call.
CellLookup cellLookup(const QPointer<UICollectionView>& collectionView, IndexPath indexPath) {
    return [collectionView, indexPath]() -> ExifDataCollectionListViewCell* {
        return collectionView ? dynamic_cast<ExifDataCollectionListViewCell*>(
                                    collectionView->cellForItemAtIndexPath(indexPath))
                              : nullptr;
    };
}

/// The cell that shows the record now, if any does.
ExifDataCollectionListViewCell* cellOfRecord(const UICollectionView& collectionView, const Record& record) {
    for (UICollectionViewCell* const cell : collectionView.visibleCells()) {
        auto* const card = dynamic_cast<ExifDataCollectionListViewCell*>(cell);
        if (card != nullptr && card->exifInfo() == record) {
            return card;
        }
    }
    return nullptr;
}

} // namespace

void ExifDataListViewController::willDisplayCell(
    UICollectionView& view, UICollectionViewCell& cell, IndexPath indexPath) {
    if (indexPath.section == kLoadingMoreSection) {
        dataSource->loadMoreResultsWithCompletionBlock({});
        return;
    }
    const auto viewType = presentation->viewType();
    auto* const card = dynamic_cast<ExifDataCollectionListViewCell*>(&cell);
    if (card == nullptr || (!isGrid(viewType) && !isListOfCards(viewType))) {
        return;
    }
    const std::size_t count = dataSource->exifDataItemsArray.size();
    const std::size_t trigger = isGrid(viewType) ? kTilesBeforeEnd : kCardsBeforeEnd;
    // A list shorter than that asks only when its loading-more cell is seen.
    const bool wantsMore = indexPath.item + trigger == count && dataSource->hasMoreExifObjects;
    if (isListOfCards(viewType)) {
        card->setShouldDisplayAlbumName(dataSource->shouldDisplayAlbumName);
        card->setIndexPath(indexPath);
        card->setListViewController(weakSelf());
        showRecord(*card, indexPath);
    }
    if (wantsMore) {
        dataSource->loadMoreResultsWithCompletionBlock({});
    }
    if (isGrid(viewType)) {
        if (dynamic_cast<ExifGridWithDetailsCollectionViewCell*>(card) != nullptr) {
            card->setIndexPath(indexPath);
        }
        showRecord(*card, indexPath);
        const bool isSelected = viewType == kSelectionViewType && indexPath.item < count &&
                                selectedItems.contains(dataSource->exifDataItemsArray[indexPath.item]);
        card->setIsSelected(isSelected);
        if (isSelected) {
            view.selectItemAtIndexPath(indexPath, /*animated=*/false, UICollectionViewScrollPosition::None);
        }
        card->setListViewController(weakSelf());
    }
    if (viewType != kQuietCardsViewType &&
        PersistanceManager::sharedInstance().automaticallyDownloadCloudPhotos()) {
        card->forceDownloadFromICloudIfNeeded();
    }
}

void ExifDataListViewController::showRecord(ExifDataCollectionListViewCell& card, IndexPath indexPath) {
    if (indexPath.item < dataSource->exifDataItemsArray.size()) {
        card.setExifInfo(
            dataSource->exifDataItemsArray[indexPath.item], cellLookup(collectionView, indexPath));
    }
}

void ExifDataListViewController::requestToDownloadiCloudAssetAtCell(ExifDataCollectionListViewCell& cell) {
    const std::size_t item = cell.indexPath().item;
    if (item >= dataSource->exifDataItemsArray.size()) {
        return;
    }
    const Record record = dataSource->exifDataItemsArray[item];
    if (!record->imageResultIsInCloud || record->iCloudDownloadProgress >= 0) {
        return; // It is here, or on its way.
    }
    record->iCloudDownloadProgress = 0;
    record->hasForceDownloadedImageResultFromCloud = true;
    cell.setICloudDownloadProgress(0);
    const auto tellProgress = [weak = weakSelf(), record](
                                  double progress, const auto&, bool&, const auto&, bool isDownloading) {
        debugLog("PROGRES__ %f", {progress});
        DispatchQueue::mainQueue().async([weak, record, progress, isDownloading] {
            const auto self = weak.lock();
            if (!self || !isDownloading) {
                return; // The end is told with the result.
            }
            record->iCloudDownloadProgress = progress;
            if (auto* const shown = cellOfRecord(*self->collectionView, record)) {
                shown->setICloudDownloadProgress(progress);
            }
        });
    };
    QueueManager::sharedInstance().imageTransferOperationQueue.addOperation(
        BlockOperation::blockOperationWithBlock([weak = weakSelf(), record, tellProgress] {
            const Record downloaded = ExifManager::exifInformationFromPHAssett(
                record->phAsset, /*forceDownload=*/true, tellProgress);
            debugLog("Going to Set download progress = 1.0");
            DispatchQueue::mainQueue().async([weak, record, downloaded] {
                if (const auto self = weak.lock()) {
                    self->downloadEnded(record, downloaded);
                }
            });
        }));
}

void ExifDataListViewController::downloadEnded(const Record& record, const Record& downloaded) {
    auto* const card = cellOfRecord(*collectionView, record);
    if (downloaded->imageResultIsInCloud) {
        record->iCloudDownloadProgress = -1; // It did not come; the badge offers it again.
        record->hasForceDownloadedImageResultFromCloud = false;
        if (card != nullptr) {
            card->stopShowingDownloadingFromCloud();
        }
        return;
    }
    debugLog("Setting download progress = 1.0");
    for (const Record& finished : {record, downloaded}) {
        finished->hasForceDownloadedImageResultFromCloud = true;
        finished->hasFinishedDownloadingImageResultFromCloud = true;
        finished->iCloudDownloadProgress = 1;
    }
    std::ranges::replace(dataSource->unFilteredExifDataItemsArray, record, downloaded);
    std::ranges::replace(dataSource->exifDataItemsArray, record, downloaded);
    followSelection();
    if (card == nullptr) {
        return;
    }
    const IndexPath indexPath = card->indexPath();
    card->setICloudDownloadProgress(1, [weak = weakSelf(), lookup = cellLookup(collectionView, indexPath),
                                           record, downloaded](bool /*isFinished*/) {
        auto* const shown = weak.expired() ? nullptr : lookup();
        if (shown != nullptr && shown->exifInfo() == record) {
            shown->setShouldUseFullResolutionImage(true);
            shown->setExifInfo(downloaded, lookup);
        }
    });
}

} // namespace exifcard

#include "screens/ExifDataListViewController.h"

#include "library/QueueManager.h"
#include "metadata/ExifInformation.h"
#include "platform/foundation/Log.h"
#include "platform/uikit/UICollectionView.h"
#include "screens/CardLookup.h"
#include "screens/ExifDataListDataSource.h"

#include <algorithm>
#include <atomic>
#include <utility>

namespace exifcard {

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
    const auto operation = downloadOperation(record);
    cell.setICloudDownloadOperation(operation);
    QueueManager::sharedInstance().imageTransferOperationQueue.addOperation(operation);
}

std::shared_ptr<BlockOperation> ExifDataListViewController::downloadOperation(const Record& record) {
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
    const auto hasBegun = std::make_shared<std::atomic<bool>>(false);
    // Its own operation is known to the block only when both are made.
    const auto self = std::make_shared<std::weak_ptr<BlockOperation>>();
    auto operation =
        BlockOperation::blockOperationWithBlock([weak = weakSelf(), record, tellProgress, hasBegun, self] {
            const auto running = self->lock();
            if (!running || running->isCancelled()) {
                return;
            }
            *hasBegun = true;
            const Record downloaded = ExifManager::exifInformationFromPHAssett(
                record->phAsset, /*forceDownload=*/true, tellProgress);
            debugLog("Going to Set download progress = 1.0");
            DispatchQueue::mainQueue().async([weak, record, downloaded] {
                if (const auto screen = weak.lock()) {
                    screen->downloadEnded(record, downloaded);
                }
            });
        });
    *self = operation;
    operation->setCompletionBlock([weak = weakSelf(), record, hasBegun] {
        if (*hasBegun) {
            return;
        }
        DispatchQueue::mainQueue().async([weak, record] {
            if (const auto screen = weak.lock()) {
                screen->offerDownloadAgain(record);
            }
        });
    });
    return operation;
}

/// The card was needed for another photo before the download's turn had come.
void ExifDataListViewController::offerDownloadAgain(const Record& record) {
    record->iCloudDownloadProgress = -1;
    record->hasForceDownloadedImageResultFromCloud = false;
    if (auto* const card = cellOfRecord(*collectionView, record)) {
        card->forceDownloadFromICloudIfNeeded(); // The list was merely laid out anew.
    }
}

void ExifDataListViewController::downloadEnded(const Record& record, const Record& downloaded) {
    if (downloaded->imageResultIsInCloud) {
        record->iCloudDownloadProgress = -1; // It did not come; the badge offers it again.
        record->hasForceDownloadedImageResultFromCloud = false;
        if (auto* const card = cellOfRecord(*collectionView, record)) {
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
    takeDownloaded(record, downloaded);
    auto* const card = cellOfRecord(*collectionView, record);
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

/// What could not be known of the photo before may decide whether it is shown.
void ExifDataListViewController::takeDownloaded(const Record& record, const Record& downloaded) {
    std::ranges::replace(dataSource->unFilteredExifDataItemsArray, record, downloaded);
    auto& shown = dataSource->exifDataItemsArray;
    const std::size_t countBefore = shown.size();
    shown = ExifManager::exifDataItemsArrayAndFilterFromExifArray(dataSource->unFilteredExifDataItemsArray);
    if (shown.size() != countBefore) {
        dataSource->replaceRecords(dataSource->unFilteredExifDataItemsArray);
    }
    followSelection();
}

} // namespace exifcard

#include "screens/ExifDataListDataSource.h"

#include "library/LocalImageFiles.h"
#include "metadata/ExifInformation.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/photos/PHAsset.h"
#include "platform/uikit/UICollectionView.h"
#include "platform/uikit/UINavigationController.h"
#include "screens/DetailScreen.h"
#include "screens/ExifDataListViewController.h"
#include "screens/ListViewTypes.h"

#include <algorithm>
#include <utility>

namespace exifcard {

void ExifDataListDataSource::popFromDetailViewControllers() {
    const auto parent = weakParentViewController.lock();
    const auto navigation = parent ? parent->navigationController() : nullptr;
    if (navigation) {
        navigation->popToViewController(parent, /*animated=*/false);
    }
}

void ExifDataListDataSource::checkAndGoToExifDetailsScreenForPHAssetID() {
    if (!onLoadOpenPHAssetIDsArray.empty()) {
        findRecordsAndOpenDetailScreen(
            std::exchange(onLoadOpenPHAssetIDsArray, {}), onLoadOpenPHAssetIDsArrayCurrentIndexPosition);
        return;
    }
    if (onLoadOpenPHAssetID.empty()) {
        checkAndGoToExifDetailsScreenForEXIFInfo();
        return;
    }
    const std::string identifier = std::exchange(onLoadOpenPHAssetID, {});
    const auto found = std::ranges::find_if(exifDataItemsArray, [&](const Record& record) {
        return record->phAsset && record->phAsset->localIdentifier == identifier;
    });
    if (found == exifDataItemsArray.end()) {
        findRecordsAndOpenDetailScreen({identifier}, /*position=*/0);
        return;
    }
    const auto parent = weakParentViewController.lock();
    if (parent && collectionView) {
        const auto item = static_cast<std::size_t>(found - exifDataItemsArray.begin());
        parent->didSelectItemAtIndexPath(*collectionView, {kPhotosSection, item});
    }
}

void ExifDataListDataSource::checkAndGoToExifDetailsScreenForEXIFInfo() {
    if (const Record record = std::exchange(onLoadOpenEXIFInformation, nullptr)) {
        openDetailScreen({record}, /*position=*/0);
    }
}

void ExifDataListDataSource::findRecordsAndOpenDetailScreen(
    std::vector<std::string> identifiers, std::size_t position) {
    DispatchQueue::globalQueue().async(
        [weakSelf = weak_from_this(), identifiers = std::move(identifiers), position] {
            Records records;
            for (const std::string& identifier : identifiers) {
                if (auto record = LocalImageFiles::exifInfoOfPHAssetWithID(identifier)) {
                    records.push_back(std::move(record));
                }
            }
            DispatchQueue::mainQueue().async([weakSelf, records, position] {
                const auto self = weakSelf.lock();
                if (self && !records.empty()) {
                    self->openDetailScreen(records, position);
                }
            });
        });
}

void ExifDataListDataSource::openDetailScreen(Records records, std::size_t position) {
    const auto parent = weakParentViewController.lock();
    const auto detailScreen = parent ? makeDetailScreen(std::move(records), position) : nullptr;
    if (!detailScreen) {
        return;
    }
    parent->exifPhotoDetailViewController = detailScreen;
    if (const auto navigation = parent->navigationController()) {
        navigation->pushViewController(detailScreen, /*animated=*/true);
    }
}

} // namespace exifcard

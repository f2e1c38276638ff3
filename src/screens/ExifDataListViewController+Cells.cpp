#include "screens/ExifDataListViewController.h"

#include "cards/ExifGridWithDetailsCollectionViewCell.h"
#include "platform/uikit/UICollectionView.h"
#include "screens/CardLookup.h"
#include "screens/ExifDataListDataSource.h"
#include "screens/ListViewTypes.h"
#include "settings/PersistanceManager.h"

namespace exifcard {
namespace {

// So many places before its end a list asks for more.
constexpr std::size_t kCardsBeforeEnd = 6;
constexpr std::size_t kTilesBeforeEnd = 12;

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

} // namespace exifcard

#include "screens/CardLookup.h"

#include "platform/uikit/UICollectionView.h"

namespace exifcard {

ExifDataCollectionListViewCell::ExifOriginalCellBlock cellLookup(
    const QPointer<UICollectionView>& collectionView, IndexPath indexPath) {
    return [collectionView, indexPath]() -> ExifDataCollectionListViewCell* {
        return collectionView ? dynamic_cast<ExifDataCollectionListViewCell*>(
                                    collectionView->cellForItemAtIndexPath(indexPath))
                              : nullptr;
    };
}

ExifDataCollectionListViewCell* cellOfRecord(
    const UICollectionView& collectionView, const ExifManager::Record& record) {
    for (UICollectionViewCell* const cell : collectionView.visibleCells()) {
        auto* const card = dynamic_cast<ExifDataCollectionListViewCell*>(cell);
        if (card != nullptr && card->exifInfo() == record) {
            return card;
        }
    }
    return nullptr;
}

} // namespace exifcard

#pragma once

#include "cards/ExifDataCollectionListViewCell.h"
#include "library/ExifManager.h"

#include <QPointer>

namespace exifcard {

class UICollectionView;

/// Answers the card that shows that place at the time of the call; null when none does.
ExifDataCollectionListViewCell::ExifOriginalCellBlock cellLookup(
    const QPointer<UICollectionView>& collectionView, IndexPath indexPath);

/// The card that shows the record now; null when none does. Main queue.
ExifDataCollectionListViewCell* cellOfRecord(
    const UICollectionView& collectionView, const ExifManager::Record& record);

} // namespace exifcard

#pragma once

#include "platform/uikit/UICollectionViewDelegates.h"

#include <memory>
#include <set>
#include <vector>

namespace exifcard {

/// Tells a prefetching data source of each item once while it is coming up, and takes it back when the item
/// no longer is.
class CollectionPrefetcher {
public:
    void setDataSource(std::weak_ptr<UICollectionViewDataSourcePrefetching> dataSource);
    /// The items seen now need no more telling.
    void itemsAreShown(const std::vector<IndexPath>& shown);
    /// @param upcoming  What follows in the direction of scrolling; nothing of it is on screen.
    void itemsAreComingUp(UICollectionView& collectionView, const std::vector<IndexPath>& upcoming);
    /// After `reloadData`, when the places mean other items: takes back what it told.
    void forget(UICollectionView& collectionView);

private:
    std::weak_ptr<UICollectionViewDataSourcePrefetching> _dataSource;
    std::set<IndexPath> _told;
};

} // namespace exifcard

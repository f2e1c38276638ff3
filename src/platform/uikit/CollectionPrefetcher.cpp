#include "platform/uikit/CollectionPrefetcher.h"

#include <algorithm>
#include <iterator>

namespace exifcard {

void CollectionPrefetcher::setDataSource(std::weak_ptr<UICollectionViewDataSourcePrefetching> dataSource) {
    _dataSource = std::move(dataSource);
    _told.clear();
}

void CollectionPrefetcher::forget(UICollectionView& collectionView) {
    const std::vector<IndexPath> told(_told.begin(), _told.end());
    _told.clear();
    const auto dataSource = _dataSource.lock();
    if (dataSource && !told.empty()) {
        dataSource->cancelPrefetchingForItemsAtIndexPaths(collectionView, told);
    }
}

void CollectionPrefetcher::itemsAreShown(const std::vector<IndexPath>& shown) {
    for (const IndexPath indexPath : shown) {
        _told.erase(indexPath);
    }
}

void CollectionPrefetcher::itemsAreComingUp(
    UICollectionView& collectionView, const std::vector<IndexPath>& upcoming) {
    const auto dataSource = _dataSource.lock();
    if (!dataSource) {
        return;
    }
    std::set<IndexPath> wanted(upcoming.begin(), upcoming.end());
    std::vector<IndexPath> cancelled;
    std::vector<IndexPath> added;
    std::ranges::set_difference(_told, wanted, std::back_inserter(cancelled));
    std::ranges::set_difference(wanted, _told, std::back_inserter(added));
    _told = std::move(wanted);
    if (!cancelled.empty()) {
        dataSource->cancelPrefetchingForItemsAtIndexPaths(collectionView, cancelled);
    }
    if (!added.empty()) {
        dataSource->prefetchItemsAtIndexPaths(collectionView, added);
    }
}

} // namespace exifcard

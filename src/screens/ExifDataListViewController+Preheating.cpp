#include "screens/ExifDataListViewController.h"

#include "cards/ExifDataCollectionListViewCell.h"
#include "categories/ImageManager.h"
#include "metadata/ExifInformation.h"
#include "platform/uikit/UICollectionView.h"
#include "screens/ExifDataListDataSource.h"
#include "screens/ListViewTypes.h"

#include <algorithm>
#include <cmath>

namespace exifcard {
namespace {

constexpr CGSize kThumbnailSize = {300, 300};

double bottom(const CGRect& rect) {
    return rect.origin.y + rect.size.height;
}

double middle(const CGRect& rect) {
    return rect.origin.y + rect.size.height / 2;
}

bool intersect(const CGRect& one, const CGRect& other) {
    return one.origin.x < other.origin.x + other.size.width &&
           other.origin.x < one.origin.x + one.size.width && one.origin.y < bottom(other) &&
           other.origin.y < bottom(one);
}

/// The photos whose cells touch the rectangle.
std::vector<IndexPath> photosInRect(const UICollectionView& view, const CGRect& rect) {
    std::vector<IndexPath> indexPaths;
    for (const auto& element : view.collectionViewLayout().layoutAttributesForElementsInRect(rect)) {
        if (!element.isHeader && element.indexPath.section == kPhotosSection) {
            indexPaths.push_back(element.indexPath);
        }
    }
    return indexPaths;
}

CGSize sizeOfThumbnails(const UICollectionView& view) {
    const auto cells = view.visibleCells();
    const auto* const card =
        cells.empty() ? nullptr : dynamic_cast<const ExifDataCollectionListViewCell*>(cells.front());
    return card != nullptr ? card->sizeForImageView() : kThumbnailSize;
}

} // namespace

void ExifDataListViewController::updateCachedAssets() {
    if (!isViewLoaded() || !isViewInWindow()) {
        return;
    }
    const CGRect visible = collectionView->bounds();
    const CGRect preheat = {{visible.origin.x, visible.origin.y - visible.size.height / 2},
        {visible.size.width, visible.size.height * 2}};
    if (std::abs(middle(preheat) - middle(previousPreheatRect)) <= visible.size.height / 3) {
        return;
    }
    thumbnailSize = sizeOfThumbnails(*collectionView);
    std::vector<IndexPath> added;
    std::vector<IndexPath> removed;
    const auto collectInto = [this](std::vector<IndexPath>& indexPaths) {
        return [this, &indexPaths](const CGRect& rect) {
            const auto found = photosInRect(*collectionView, rect);
            indexPaths.insert(indexPaths.end(), found.begin(), found.end());
        };
    };
    computeDifferenceBetweenRect(previousPreheatRect, preheat, collectInto(removed), collectInto(added));
    auto& manager = ImageManager::sharedInstance().imageCachingManager();
    manager.startCachingImagesForAssets(
        assetsAtIndexPaths(added), thumbnailSize, PHImageContentMode::AspectFill, {});
    manager.stopCachingImagesForAssets(
        assetsAtIndexPaths(removed), thumbnailSize, PHImageContentMode::AspectFill, {});
    previousPreheatRect = preheat;
}

void ExifDataListViewController::computeDifferenceBetweenRect(const CGRect& oldRect,
    const CGRect& andRect,
    const RectHandler& removedHandler,
    const RectHandler& addedHandler) {
    const CGRect& newRect = andRect;
    if (!intersect(oldRect, newRect)) {
        addedHandler(newRect);
        removedHandler(oldRect);
        return;
    }
    const auto tellStrip = [&newRect](const RectHandler& handler, double from, double to) {
        if (to > from) {
            handler({{newRect.origin.x, from}, {newRect.size.width, to - from}});
        }
    };
    tellStrip(addedHandler, bottom(oldRect), bottom(newRect));
    tellStrip(addedHandler, newRect.origin.y, oldRect.origin.y);
    tellStrip(removedHandler, bottom(newRect), bottom(oldRect));
    tellStrip(removedHandler, oldRect.origin.y, newRect.origin.y);
}

std::vector<PHAssetPtr> ExifDataListViewController::assetsAtIndexPaths(
    const std::vector<IndexPath>& indexPaths) const {
    const auto& records = dataSource->exifDataItemsArray;
    std::vector<PHAssetPtr> assets;
    for (const IndexPath& indexPath : indexPaths) {
        if (indexPath.item < records.size() && records[indexPath.item]->phAsset) {
            assets.push_back(records[indexPath.item]->phAsset);
        }
    }
    return assets;
}

} // namespace exifcard

#include "screens/ExifDataListViewController.h"

#include "cards/ExifDataCollectionListViewCell.h"
#include "metadata/ExifInformation.h"
#include "platform/photos/PHAsset.h"
#include "platform/uikit/GestureRecognizers.h"
#include "platform/uikit/UICollectionView.h"
#include "screens/ExifDataListDataSource.h"
#include "screens/ListViewTypes.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace exifcard {
namespace {

/// Whether `position` lies between the two, ends included.
bool isBetween(IndexPath position, IndexPath one, IndexPath other) {
    return std::min(one, other) <= position && position <= std::max(one, other);
}

/// The items that a pan takes back when it moves on from `previous` to `current`.
std::vector<IndexPath> revertedItems(IndexPath start, IndexPath previous, IndexPath current) {
    const bool isCrossing = (previous > start && current < start) || (previous < start && current > start);
    if (isCrossing) {
        return ExifDataListViewController::indexPaths(start, previous);
    }
    return isBetween(current, start, previous) ? ExifDataListViewController::indexPaths(current, previous)
                                               : std::vector<IndexPath>();
}

} // namespace

bool ExifDataListViewController::isSelecting() const {
    return presentation->viewType() == kSelectionViewType;
}

void ExifDataListViewController::didSelectItemAtIndexPath(UICollectionView& /*view*/, IndexPath indexPath) {
    if (indexPath.section == kPhotosSection && isSelecting()) {
        setSelected(indexPath, true);
    }
}

void ExifDataListViewController::didDeselectItemAtIndexPath(UICollectionView& /*view*/, IndexPath indexPath) {
    if (indexPath.section == kPhotosSection && isSelecting()) {
        setSelected(indexPath, false);
    }
}

void ExifDataListViewController::setSelected(IndexPath indexPath, bool isSelected) {
    if (indexPath.item >= dataSource->exifDataItemsArray.size()) {
        return;
    }
    const Record record = dataSource->exifDataItemsArray[indexPath.item];
    isSelected ? (void)selectedItems.insert(record) : (void)selectedItems.erase(record);
    auto* const cell =
        dynamic_cast<ExifDataCollectionListViewCell*>(collectionView->cellForItemAtIndexPath(indexPath));
    if (cell != nullptr) {
        cell->setIsSelected(isSelected);
    }
    didUpdateSelectedItems();
    if (isSelected) {
        collectionView->selectItemAtIndexPath(
            indexPath, /*animated=*/false, UICollectionViewScrollPosition::None);
    } else {
        collectionView->deselectItemAtIndexPath(indexPath, /*animated=*/false);
    }
}

void ExifDataListViewController::didTapOnSelectAllButton() {
    selectedItems = {dataSource->exifDataItemsArray.begin(), dataSource->exifDataItemsArray.end()};
    didUpdateSelectedItems();
    dataSource->reloadCollectionView();
}

void ExifDataListViewController::didTapOnCancelMultipleSelectionButton() {
    cancelSelectionMode(); // Intended: the bar keeps its buttons until it is built anew.
}

void ExifDataListViewController::cancelSelectionMode() {
    selectedItems.clear();
    didUpdateSelectedItems();
    dataSource->reloadCollectionView();
    presentation->setViewType(presentation->previousViewType());
    previouslySelectedIndexPath.reset();
}

void ExifDataListViewController::cancelSelectionsAndRefreshUI() {
    cancelSelectionMode();
    updateNavigationBarUI();
}

void ExifDataListViewController::didUpdateSelectedItems() {
    updateNavigationTitleUI();
    updateBottomBarUI();
}

void ExifDataListViewController::followSelection() {
    if (selectedItems.empty()) {
        return;
    }
    std::map<std::string, Record> listed;
    for (const Record& record : dataSource->unFilteredExifDataItemsArray) {
        if (record->phAsset) {
            listed.emplace(record->phAsset->localIdentifier, record);
        }
    }
    std::set<Record> followed;
    for (const Record& record : selectedItems) {
        const auto found = record->phAsset ? listed.find(record->phAsset->localIdentifier) : listed.end();
        if (found != listed.end()) {
            followed.insert(found->second);
        } else if (dataSource->hasMoreExifObjects) {
            followed.insert(record); // A later page may hold it.
        }
    }
    if (followed != selectedItems) {
        selectedItems = std::move(followed);
        didUpdateSelectedItems();
    }
}

bool ExifDataListViewController::gestureRecognizerShouldBegin(UIGestureRecognizer& recognizer) {
    const auto* const pan = dynamic_cast<UIPanGestureRecognizer*>(&recognizer);
    if (pan == nullptr) {
        return true;
    }
    const CGPoint velocity = pan->velocity();
    return isSelecting() && std::abs(velocity.x) > std::abs(velocity.y);
}

bool ExifDataListViewController::shouldRecognizeSimultaneouslyWithGestureRecognizer(
    UIGestureRecognizer& /*recognizer*/, UIGestureRecognizer& /*other*/) {
    return isSelecting();
}

std::optional<IndexPath> ExifDataListViewController::indexPathUnderFinger(
    const UIGestureRecognizer& recognizer) const {
    const CGPoint finger = recognizer.locationInView(*collectionView->viewport());
    const CGPoint offset = collectionView->contentOffset();
    const auto found = collectionView->indexPathForItemAtPoint({finger.x + offset.x, finger.y + offset.y});
    return found && found->section == kPhotosSection ? found : std::nullopt;
}

void ExifDataListViewController::panGestureCallback(UIGestureRecognizer& recognizer) {
    const auto under = indexPathUnderFinger(recognizer);
    switch (recognizer.state()) {
    case UIGestureRecognizerState::Began:
        collectionView->setUserInteractionEnabled(false);
        collectionView->setScrollEnabled(false);
        isSwipeSelecting = true;
        beginRangeAt(under);
        break;
    case UIGestureRecognizerState::Changed:
        if (isSelecting() && under && under != previouslySelectedIndexPath) {
            panMovedTo(*under);
        }
        break;
    case UIGestureRecognizerState::Ended:
    case UIGestureRecognizerState::Cancelled:
    case UIGestureRecognizerState::Failed:
        collectionView->setScrollEnabled(true);
        collectionView->setUserInteractionEnabled(true);
        isSwipeSelecting = false;
        previouslySelectedIndexPath.reset();
        break;
    case UIGestureRecognizerState::Possible:
        break;
    }
}

void ExifDataListViewController::beginRangeAt(std::optional<IndexPath> start) {
    const auto& records = dataSource->exifDataItemsArray;
    panGestureStartingSelectedIndexPath = start;
    isSelectingInPanGestureMode =
        start && start->item < records.size() && !selectedItems.contains(records[start->item]);
}

void ExifDataListViewController::panMovedTo(IndexPath current) {
    if (!panGestureStartingSelectedIndexPath) {
        beginRangeAt(current); // The finger came down between items.
    }
    const IndexPath start = *panGestureStartingSelectedIndexPath;
    if (previouslySelectedIndexPath) {
        for (const IndexPath reverted : revertedItems(start, *previouslySelectedIndexPath, current)) {
            setSelected(reverted, !isSelectingInPanGestureMode);
        }
    }
    previouslySelectedIndexPath = current;
    for (const IndexPath reached : indexPaths(start, current)) {
        setSelected(reached, isSelectingInPanGestureMode);
    }
}

std::vector<IndexPath> ExifDataListViewController::indexPaths(
    IndexPath startIndexPath, IndexPath andEndIndexPath) {
    std::vector<IndexPath> range;
    const auto [first, last] = std::minmax(startIndexPath.item, andEndIndexPath.item);
    for (std::size_t item = first; item <= last; ++item) {
        range.push_back(IndexPath::indexPathForItem(item, kPhotosSection));
    }
    return range;
}

} // namespace exifcard

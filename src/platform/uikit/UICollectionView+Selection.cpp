#include "platform/uikit/UICollectionViewState.h"

#include <QAccessible>

#include <utility>

namespace exifcard {

void UICollectionView::setAllowsMultipleSelection(bool isAllowed) {
    _implementation->allowsMultipleSelection = isAllowed;
}

bool UICollectionView::allowsMultipleSelection() const {
    return _implementation->allowsMultipleSelection;
}

std::vector<IndexPath> UICollectionView::indexPathsForSelectedItems() const {
    return {_implementation->selection.begin(), _implementation->selection.end()};
}

void UICollectionView::selectItemAtIndexPath(
    IndexPath indexPath, bool animated, UICollectionViewScrollPosition scrollPosition) {
    Implementation& its = *_implementation;
    if (!its.contains(indexPath)) {
        return;
    }
    if (!its.allowsMultipleSelection && !its.selection.contains(indexPath)) {
        its.deselectAll();
    }
    its.setSelected(indexPath, true);
    if (scrollPosition != UICollectionViewScrollPosition::None) {
        scrollToItemAtIndexPath(indexPath, scrollPosition, animated);
    }
}

void UICollectionView::deselectItemAtIndexPath(IndexPath indexPath, bool) {
    _implementation->setSelected(indexPath, false);
}

void UICollectionView::Implementation::tap(IndexPath indexPath) {
    const auto listener = delegate.lock();
    if (allowsMultipleSelection && selection.contains(indexPath)) {
        if (!listener || listener->shouldDeselectItemAtIndexPath(view, indexPath)) {
            setSelected(indexPath, false);
            if (listener) {
                listener->didDeselectItemAtIndexPath(view, indexPath);
            }
        }
        return;
    }
    if (listener && !listener->shouldSelectItemAtIndexPath(view, indexPath)) {
        return;
    }
    const auto before = selection;
    for (const IndexPath other : before) {
        if (!allowsMultipleSelection && other != indexPath) {
            setSelected(other, false);
            if (listener) {
                listener->didDeselectItemAtIndexPath(view, other);
            }
        }
    }
    setSelected(indexPath, true);
    if (listener) {
        listener->didSelectItemAtIndexPath(view, indexPath);
    }
}

void UICollectionView::Implementation::setSelected(IndexPath indexPath, bool isSelected) {
    if (isSelected) {
        selection.insert(indexPath);
    } else {
        selection.erase(indexPath);
    }
    if (const auto live = cells.find(indexPath); live != cells.end()) {
        live->second.cell->setSelected(isSelected);
        QAccessible::State changed;
        changed.selected = true;
        QAccessibleStateChangeEvent event(live->second.cell, changed);
        QAccessible::updateAccessibility(&event);
    }
}

void UICollectionView::Implementation::deselectAll() {
    for (const IndexPath indexPath : std::exchange(selection, {})) {
        if (const auto live = cells.find(indexPath); live != cells.end()) {
            live->second.cell->setSelected(false);
        }
    }
}

} // namespace exifcard

#include "platform/foundation/PlatformException.h"
#include "platform/uikit/UICollectionViewState.h"

#include <QCoreApplication>
#include <QScopedValueRollback>
#include <QScroller>
#include <QThread>

#include <algorithm>
#include <functional>
#include <span>

namespace exifcard {

void UICollectionView::reloadData() {
    if (QThread::currentThread() != thread()) {
        throw PlatformException(
            "NSInternalInconsistencyException", "a collection view is reloaded on the main queue only");
    }
    _implementation->deselectAll();
    _implementation->isReloadWanted = true;
    setNeedsLayout();
}

void UICollectionView::setNeedsLayout() {
    Implementation& its = *_implementation;
    its.isPassDue = true;
    if (its.isPassPosted) {
        return;
    }
    its.isPassPosted = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            _implementation->isPassPosted = false;
            if (isVisible()) { // Else when it is shown, in the size that it has then.
                layoutIfNeeded();
            }
        },
        Qt::QueuedConnection);
}

void UICollectionView::layoutIfNeeded() {
    Implementation& its = *_implementation;
    its.fitViewport();
    if (its.isPassDue || its.areItemsOutdated()) {
        its.layoutPass();
    }
}

std::size_t UICollectionView::numberOfSections() const {
    return _implementation->itemCounts.size();
}

std::size_t UICollectionView::numberOfItemsInSection(std::size_t section) const {
    const auto& counts = _implementation->itemCounts;
    return section < counts.size() ? counts[section] : 0;
}

void UICollectionView::Implementation::layoutPass() {
    if (isInPass) { // A handler moved the list or wants it laid out: once more, when this is done.
        view.setNeedsLayout();
        return;
    }
    const QScopedValueRollback inPass(isInPass, true);
    isPassDue = false;
    if (areItemsOutdated()) {
        readCounts();
    }
    const double width = view.viewport()->width() - contentInset.left - contentInset.right;
    if (layout.prepare(std::max(0.0, width))) {
        keepOffsetInContent();
        placeElements();
    }
    updateElements();
    pool.settle();
    placeOverlays();
}

/// The toolkit lays out what is not shown yet only when it is; a list may be asked before.
void UICollectionView::Implementation::fitViewport() {
    if (view.viewport()->geometry() != view.contentsRect()) {
        view.viewport()->setGeometry(view.contentsRect());
        isPassDue = true;
    }
}

std::vector<std::size_t> UICollectionView::Implementation::countsOfDataSource() const {
    const auto source = dataSource.lock();
    if (!source) {
        return {};
    }
    std::vector<std::size_t> counts(source->numberOfSectionsInCollectionView(view));
    for (std::size_t section = 0; section < counts.size(); ++section) {
        counts[section] = source->numberOfItemsInSection(view, section);
    }
    return counts;
}

/// Items that have come wait for the reload which shows them, and are not made twice.
bool UICollectionView::Implementation::areItemsOutdated() const {
    if (isReloadWanted) {
        return true;
    }
    const std::vector<std::size_t> now = countsOfDataSource();
    return now.size() < itemCounts.size() ||
           !std::ranges::equal(itemCounts, std::span(now).first(itemCounts.size()), std::less_equal());
}

void UICollectionView::Implementation::readCounts() {
    isReloadWanted = false;
    const HeldPress heldPress = pressed ? held : HeldPress();
    dropElements();
    prefetcher.forget(view);
    itemCounts = countsOfDataSource();
    holdPress(heldPress);
    layout._isValid = false;
    std::erase_if(selection, [this](IndexPath indexPath) { return !contains(indexPath); });
    if (focused && !contains(*focused)) {
        focused = navigation().lastItem();
    }
}

bool UICollectionView::Implementation::contains(IndexPath indexPath) const {
    return indexPath.section < itemCounts.size() && indexPath.item < itemCounts[indexPath.section];
}

/// A data source may have lost items that it did not tell of yet.
bool UICollectionView::Implementation::isStillThere(IndexPath indexPath) const {
    const auto source = dataSource.lock();
    return source && indexPath.section < source->numberOfSectionsInCollectionView(view) &&
           indexPath.item < source->numberOfItemsInSection(view, indexPath.section);
}

std::optional<IndexPath> UICollectionView::indexPathForItemAtPoint(CGPoint point) const {
    for (const auto& attributes :
        _implementation->layout.layoutAttributesForElementsInRect({point, {1e-3, 1e-3}})) {
        if (!attributes.isHeader) {
            return attributes.indexPath;
        }
    }
    return std::nullopt;
}

} // namespace exifcard

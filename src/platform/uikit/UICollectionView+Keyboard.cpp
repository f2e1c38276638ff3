#include "platform/uikit/UICollectionViewState.h"

#include <QAccessible>
#include <QFocusEvent>
#include <QKeyEvent>

namespace exifcard {
namespace {

constexpr double kRingRadius = 8; ///< Of a tile; for cells whose layer has none.

constexpr double kRoomForRing = 4; ///< Above and below the item, so that its ring is seen whole.

bool canTakeFocusByTab(const QWidget& widget) {
    return (widget.focusPolicy() & Qt::TabFocus) == Qt::TabFocus && widget.isEnabled() && widget.isVisible();
}

bool isByKey(Qt::FocusReason reason) {
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
           reason == Qt::ShortcutFocusReason;
}

} // namespace

std::optional<IndexPath> UICollectionView::focusedIndexPath() const {
    return _implementation->focused;
}

/// Tab leaves the items: the arrows move within them. What lies over an empty list is no item.
bool UICollectionView::focusNextPrevChild(bool isNext) {
    QWidget* next = this;
    do {
        next = isNext ? next->nextInFocusChain() : next->previousInFocusChain();
    } while (next != this && (viewport()->isAncestorOf(next) || !canTakeFocusByTab(*next)));
    if (next == this || !next) {
        return false;
    }
    next->setFocus(isNext ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

void UICollectionView::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    if (isByKey(event->reason()) && isUserInteractionEnabled()) {
        const auto item =
            _implementation->focused ? _implementation->focused : _implementation->firstVisibleItem();
        if (item) {
            _implementation->focus(*item);
        }
    }
}

void UICollectionView::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);
    _implementation->placeFocusRing();
}

/// @return Whether the key means something here.
bool UICollectionView::Implementation::key(const QKeyEvent& event) {
    if (!isInteractionEnabled || (event.modifiers() & ~Qt::KeypadModifier) != 0) {
        return false;
    }
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        if (focused && contains(*focused) && !event.isAutoRepeat()) {
            tap(*focused);
        }
        return focused.has_value();
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        break;
    default:
        return false;
    }
    view.layoutIfNeeded();
    const bool isAnywhere = event.key() == Qt::Key_Home || event.key() == Qt::Key_End;
    const auto target = focused || isAnywhere
                            ? navigation().itemInDirection(focused.value_or(IndexPath{}), event.key())
                            : firstVisibleItem();
    if (const auto item = target ? target : focused) {
        focus(*item);
    }
    return true;
}

std::optional<IndexPath> UICollectionView::Implementation::firstVisibleItem() const {
    const CGRect visible = view.bounds();
    std::optional<IndexPath> first;
    for (const auto& attributes : layout.layoutAttributesForElementsInRect(visible)) {
        if (attributes.isHeader) {
            continue;
        }
        if (attributes.frame.origin.y >= visible.origin.y) {
            return attributes.indexPath;
        }
        first = first ? first : attributes.indexPath; // Cut off by the top edge.
    }
    return first;
}

ItemNavigation UICollectionView::Implementation::navigation() const {
    return {layout, itemCounts, view.isRightToLeft(), static_cast<double>(view.viewport()->height())};
}

void UICollectionView::Implementation::focus(IndexPath indexPath) {
    focused = indexPath;
    isKeyboardInUse = true;
    ensureVisible(
        navigation().frameOf(indexPath), UICollectionViewScrollPosition::None, /*isAnimated=*/false);
    placeFocusRing();
    if (UICollectionViewCell* const cell = view.cellForItemAtIndexPath(indexPath)) {
        QAccessibleEvent event(cell, QAccessible::Focus);
        QAccessible::updateAccessibility(&event);
    }
}

void UICollectionView::Implementation::placeFocusRing() {
    UICollectionViewCell* const cell = focused ? view.cellForItemAtIndexPath(*focused) : nullptr;
    if (!cell || !isKeyboardInUse || !view.hasFocus()) {
        focusRing->hide();
        return;
    }
    const double radius = cell->layer().cornerRadius;
    focusRing->showAround(cell->geometry(), radius > 0 ? radius : kRingRadius);
}

} // namespace exifcard

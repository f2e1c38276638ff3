#include "platform/uikit/UICollectionViewState.h"
#include "platform/uikit/UIGestureRecognizer.h"

#include <QAbstractButton>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QScrollEvent>
#include <QScrollPrepareEvent>
#include <QScroller>
#include <QStyleHints>
#include <QTouchEvent>

#include <utility>

namespace exifcard {

void UICollectionView::setScrollEnabled(bool isEnabled) {
    Implementation& its = *_implementation;
    its.isScrollEnabled = isEnabled;
    if (!isEnabled && its.isTouchScrolling()) {
        its.scroller()->stop();
    }
}

bool UICollectionView::isScrollEnabled() const {
    return _implementation->isScrollEnabled;
}

QScroller* UICollectionView::Implementation::scroller() const {
    return QScroller::scroller(view.viewport());
}

bool UICollectionView::Implementation::isTouchScrolling() const {
    return scroller()->state() != QScroller::Inactive;
}

/// The scroller counts from the smallest offset on.
void UICollectionView::Implementation::prepareTouchScroll(QScrollPrepareEvent& event) {
    if (!isInteractionEnabled || !isScrollEnabled) {
        event.ignore();
        return;
    }
    scrollAnimation.stop();
    event.setViewportSize(view.viewport()->size());
    touchOrigin = minimumOffset();
    event.setContentPosRange({0, 0, 0, maximumOffset() - touchOrigin});
    event.setContentPos({0, offset - touchOrigin});
    event.accept();
}

void UICollectionView::Implementation::touchScroll(const QScrollEvent& event) {
    moveTo(touchOrigin + event.contentPos().y() + event.overshootDistance().y());
    if (scroller()->state() == QScroller::Dragging) {
        pulledByUser();
    }
}

/// With a refresh control, short content can be pulled too.
void UICollectionView::Implementation::updateOvershoot() const {
    QScrollerProperties properties = scroller()->scrollerProperties();
    properties.setScrollMetric(QScrollerProperties::HorizontalOvershootPolicy,
        QVariant::fromValue(QScrollerProperties::OvershootAlwaysOff));
    properties.setScrollMetric(QScrollerProperties::VerticalOvershootPolicy,
        QVariant::fromValue(refreshControl ? QScrollerProperties::OvershootAlwaysOn
                                           : QScrollerProperties::OvershootWhenScrollable));
    // Far enough, also in a low panel, to pull past the refresh control's trigger.
    properties.setScrollMetric(QScrollerProperties::OvershootDragDistanceFactor, 0.6);
    // The scroller expects that the viewport moves beyond the ends, and adds those steps to the finger's.
    // Where the content moves instead, a third makes the list follow by half of the finger's way.
    properties.setScrollMetric(QScrollerProperties::OvershootDragResistanceFactor, 1.0 / 3);
    scroller()->setScrollerProperties(properties);
}

bool UICollectionView::Implementation::mouse(QEvent& event) {
    const auto& mouse = static_cast<const QMouseEvent&>(event);
    const QPoint position = mouse.position().toPoint();
    if (!isInteractionEnabled) {
        return false;
    }
    if (event.type() == QEvent::MouseMove) {
        movePress(position);
        return pressed.has_value();
    }
    if (mouse.button() != Qt::LeftButton) {
        return false;
    }
    if (event.type() == QEvent::MouseButtonRelease) {
        release(position);
    } else {
        press(position);
    }
    return true;
}

/// A finger reaches the list before what lies below it; buttons in cells are pressed from here.
bool UICollectionView::Implementation::touch(QEvent& event) {
    const auto& touch = static_cast<const QTouchEvent&>(event);
    if (!isInteractionEnabled || event.type() == QEvent::TouchCancel || touch.points().size() != 1) {
        cancelPress();
        return isInteractionEnabled;
    }
    const QPoint position = touch.points().front().position().toPoint();
    if (event.type() == QEvent::TouchBegin) {
        touchedButton = buttonAt(position);
        press(position);
    } else if (event.type() == QEvent::TouchUpdate) {
        movePress(position);
    } else if (touchedButton && pressed) {
        // After a reload the button may belong to another item.
        const bool isInside = !held.isMoved && buttonAt(position) == touchedButton;
        cancelPress();
        if (isInside) {
            touchedButton->click();
        }
    } else {
        release(position);
    }
    return true;
}

QAbstractButton* UICollectionView::Implementation::buttonAt(QPoint position) const {
    QWidget* child = view.viewport()->childAt(position);
    while (child && child != view.viewport()) {
        if (auto* const button = qobject_cast<QAbstractButton*>(child); button && button->isEnabled()) {
            return button;
        }
        child = child->parentWidget();
    }
    return nullptr;
}

std::optional<IndexPath> UICollectionView::Implementation::itemAt(QPoint position) const {
    const CGRect bounds = view.bounds();
    return view.indexPathForItemAtPoint(
        {bounds.origin.x + position.x() + 0.5, pixelOffset() + position.y() + 0.5});
}

void UICollectionView::Implementation::press(QPoint position) {
    cancelPress();
    isKeyboardInUse = false;
    placeFocusRing();
    pressed = itemAt(position);
    held.position = position;
    UICollectionViewCell* const cell = pressed ? view.cellForItemAtIndexPath(*pressed) : nullptr;
    if (cell) {
        cell->setHighlighted(!isTouchDelayed());
        const auto source = dataSource.lock();
        held.model = source ? source->modelIdentifierForElementAtIndexPath(*pressed) : std::nullopt;
    } else {
        pressed.reset();
    }
}

/// The release is meant for what the finger came down on.
void UICollectionView::Implementation::holdPress(HeldPress heldPress) {
    const auto place = heldPress.placeIn(dataSource.lock().get());
    if (place && contains(*place)) {
        pressed = place;
        held = std::move(heldPress);
        held.isMoved = true;
    }
}

void UICollectionView::Implementation::movePress(QPoint position) {
    const int farthest = QGuiApplication::styleHints()->startDragDistance();
    if (pressed && (position - held.position).manhattanLength() > farthest) {
        cancelPress();
    }
}

void UICollectionView::Implementation::release(QPoint position) {
    const auto item = pressed;
    const bool isStillMeant = held.isMoved || itemAt(position) == item;
    cancelPress();
    if (item && isStillMeant) {
        tap(*item);
    }
}

void UICollectionView::Implementation::cancelPress() {
    const auto item = std::exchange(pressed, std::nullopt);
    held = {};
    if (item && cells.contains(*item)) {
        cells.at(*item).cell->setHighlighted(false);
    }
}

} // namespace exifcard

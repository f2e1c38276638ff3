#include "platform/uikit/UICollectionViewState.h"
#include "platform/uikit/UITraitCollection.h"

#include <QScroller>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace exifcard {
namespace {

constexpr int kAnimationMilliseconds = 250;
constexpr double kPointsOfNotch = 60; ///< One notch of a wheel: three lines of text.
constexpr double kAnglesOfNotch = 120;
constexpr int kShortestIndicator = 36;

} // namespace

CGRect UICollectionView::bounds() const {
    const QSize size = viewport()->size();
    return {contentOffset(), {static_cast<double>(size.width()), static_cast<double>(size.height())}};
}

CGSize UICollectionView::contentSize() const {
    return _implementation->layout.collectionViewContentSize();
}

CGPoint UICollectionView::contentOffset() const {
    return {-_implementation->contentInset.left, _implementation->offset};
}

void UICollectionView::setContentOffset(CGPoint offset, bool animated) {
    if (animated && !UITraitCollection::currentTraitCollection().isMotionReduced) {
        _implementation->animateTo(offset.y);
    } else {
        _implementation->scrollAnimation.stop();
        _implementation->moveTo(offset.y);
    }
}

void UICollectionView::scrollToItemAtIndexPath(
    IndexPath indexPath, UICollectionViewScrollPosition scrollPosition, bool animated) {
    layoutIfNeeded();
    if (const auto attributes = _implementation->layout.layoutAttributesForItemAtIndexPath(indexPath)) {
        _implementation->ensureVisible(attributes->frame, scrollPosition, animated);
    }
}

UIEdgeInsets UICollectionView::contentInset() const {
    return _implementation->contentInset;
}

void UICollectionView::setContentInset(const UIEdgeInsets& insets) {
    Implementation& its = *_implementation;
    const bool isAtTop = its.offset == its.restingTop();
    its.contentInset = insets;
    if (isAtTop) {
        its.moveTo(its.restingTop());
    }
    setNeedsLayout();
    its.placeOverlays();
}

UIEdgeInsets UICollectionView::scrollIndicatorInsets() const {
    return _implementation->indicatorInset;
}

void UICollectionView::setScrollIndicatorInsets(const UIEdgeInsets& insets) {
    _implementation->indicatorInset = insets;
    _implementation->placeOverlays();
}

int UICollectionView::Implementation::pixelOffset() const {
    return static_cast<int>(std::floor(offset + 0.5));
}

/// The very top: above the content lies its inset.
double UICollectionView::Implementation::restingTop() const {
    return -contentInset.top;
}

double UICollectionView::Implementation::minimumOffset() const {
    const bool isRefreshing = refreshControl && refreshControl->isRefreshing();
    return restingTop() - (isRefreshing ? UIRefreshControl::kHeight : 0);
}

double UICollectionView::Implementation::maximumOffset() const {
    const double end = layout.collectionViewContentSize().height + contentInset.bottom;
    return std::max(restingTop(), end - view.viewport()->height());
}

/// @return Whether that was a change.
bool UICollectionView::Implementation::moveTo(double y) {
    constexpr double kFarthest = 1e9; // So that whole pixels fit an int.
    if (y == offset || !std::isfinite(y) || std::abs(y) > kFarthest) {
        return false;
    }
    const int before = pixelOffset();
    isScrollingDown = y > offset;
    offset = y;
    const int distance = before - pixelOffset();
    if (distance != 0) {
        // Copies the pixels that stay seen, and moves the cells along.
        view.viewport()->scroll(0, distance);
        placeElements();
    }
    layoutPass();
    indicator->flash();
    if (const auto listener = delegate.lock()) {
        listener->scrollViewDidScroll(view);
    }
    return true;
}

/// After a new layout. What is pulled beyond the top stays: it returns by itself when it is let go.
void UICollectionView::Implementation::keepOffsetInContent() {
    const double largest = maximumOffset();
    if (offset > largest) {
        if (isTouchScrolling()) {
            scroller()->stop();
        }
        scrollAnimation.stop();
        const double before = offset;
        offset = largest;
        view.viewport()->update();
        if (const auto listener = delegate.lock(); listener && before != offset) {
            listener->scrollViewDidScroll(view);
        }
    } else if (isTouchScrolling()) {
        scroller()->resendPrepareEvent();
    }
}

void UICollectionView::Implementation::animateTo(double y) {
    scrollAnimation.stop();
    scrollAnimation.setDuration(kAnimationMilliseconds);
    scrollAnimation.setEasingCurve(QEasingCurve::InOutQuad);
    scrollAnimation.setStartValue(offset);
    scrollAnimation.setEndValue(y);
    scrollAnimation.start();
}

void UICollectionView::Implementation::ensureVisible(
    const CGRect& frame, UICollectionViewScrollPosition position, bool isAnimated) {
    const double height = view.viewport()->height();
    const double top = frame.origin.y - contentInset.top;
    const double bottom = frame.origin.y + frame.size.height + contentInset.bottom - height;
    double y = offset;
    switch (position) {
    case UICollectionViewScrollPosition::None:
        y = std::min(std::max(y, bottom), top); // The top edge wins where not all of it fits.
        break;
    case UICollectionViewScrollPosition::Top:
        y = top;
        break;
    case UICollectionViewScrollPosition::CenteredVertically:
        y = frame.origin.y + frame.size.height / 2 - height / 2;
        break;
    case UICollectionViewScrollPosition::Bottom:
        y = bottom;
        break;
    }
    y = std::clamp(y, restingTop(), maximumOffset());
    if (y != offset) {
        view.setContentOffset({0, y}, isAnimated);
    }
}

/// The refresh control, the scroll indicator and the focus ring, which stand above or beside the cells.
void UICollectionView::Implementation::placeOverlays() {
    const QSize size = view.viewport()->size();
    if (refreshControl) {
        refreshControl->setFrame({{0, -UIRefreshControl::kHeight - pixelOffset()},
            {static_cast<double>(size.width()), UIRefreshControl::kHeight}});
        refreshControl->setPull(std::max(0.0, restingTop() - offset));
    }
    placeFocusRing();
    const double content = layout.collectionViewContentSize().height + contentInset.top + contentInset.bottom;
    const double track =
        size.height() - indicatorInset.top - indicatorInset.bottom - 2 * ScrollIndicator::kEndMargin;
    if (content <= size.height() || track < kShortestIndicator) {
        indicator->setGeometry({}); // Nothing to be seen either when it flashes.
        indicator->hide();
        return;
    }
    const double length = std::max<double>(kShortestIndicator, track * size.height() / content);
    const double part = std::clamp((offset - restingTop()) / (maximumOffset() - restingTop()), 0.0, 1.0);
    const double y = indicatorInset.top + ScrollIndicator::kEndMargin + part * (track - length);
    const int x = view.isRightToLeft()
                      ? ScrollIndicator::kSideMargin
                      : size.width() - ScrollIndicator::kSideMargin - ScrollIndicator::kThickness;
    indicator->setGeometry(x, qRound(y), ScrollIndicator::kThickness, qRound(length));
}

/// @return Whether the wheel moved the list.
bool UICollectionView::Implementation::wheel(QWheelEvent& event) {
    constexpr double kBurstGap = 300; // Milliseconds without the wheel, after which it may pull.
    const double distance = event.pixelDelta().isNull()
                                ? event.angleDelta().y() / kAnglesOfNotch * kPointsOfNotch
                                : event.pixelDelta().y();
    if (!isInteractionEnabled || !isScrollEnabled || distance == 0) {
        return false;
    }
    scrollAnimation.stop();
    const auto time = static_cast<double>(event.timestamp());
    const bool isNewBurst = lastWheelTime < 0 || time - lastWheelTime > kBurstGap;
    lastWheelTime = time;
    if (isNewBurst) {
        // A burst that began further down stops at the top and does not pull.
        isWheelPull = offset <= minimumOffset() && distance > 0;
    }
    if (refreshControl && isWheelPull && event.phase() != Qt::ScrollMomentum &&
        (distance > 0 || offset < minimumOffset())) {
        wheelPull(distance);
        return true;
    }
    return moveTo(std::clamp(offset - distance, minimumOffset(), maximumOffset()));
}

} // namespace exifcard

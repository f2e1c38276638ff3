#include "platform/uikit/UICollectionViewState.h"

#include <QScroller>

#include <algorithm>

namespace exifcard {
namespace {

/// The wheel has no end to be let go at: it pulls with more resistance than a finger, and lets go by resting.
constexpr double kWheelResistance = 0.3;
constexpr int kWheelRestMilliseconds = 400;
constexpr double kFarthestWheelPull = 1.5 * UIRefreshControl::kHeight;

} // namespace

void UICollectionView::setRefreshControl(std::unique_ptr<UIRefreshControl> refreshControl) {
    Implementation& its = *_implementation;
    delete its.refreshControl.data();
    its.refreshControl = refreshControl.release();
    if (its.refreshControl) {
        its.refreshControl->setParent(viewport());
        its.refreshControl->lower();
        its.refreshControl->show();
        connect(its.refreshControl, &UIRefreshControl::began, this,
            [this] { _implementation->refreshingChanged(); });
        connect(its.refreshControl, &UIRefreshControl::ended, this,
            [this] { _implementation->refreshingChanged(); });
    }
    its.updateOvershoot();
    its.placeOverlays();
}

UIRefreshControl* UICollectionView::refreshControl() const {
    return _implementation->refreshControl;
}

void UICollectionView::Implementation::wheelPull(double distance) {
    const double lowest = minimumOffset() - kFarthestWheelPull;
    moveTo(std::clamp(offset - distance * kWheelResistance, lowest, std::max(lowest, minimumOffset())));
    wheelPullTimer.start(kWheelRestMilliseconds, &view);
    pulledByUser();
}

/// Sends once a pull, when it passes the trigger.
void UICollectionView::Implementation::pulledByUser() {
    if (!refreshControl) {
        return;
    }
    const double pull = restingTop() - offset;
    if (pull <= 0) {
        isPullArmed = true;
    } else if (isPullArmed && pull >= UIRefreshControl::kHeight && !refreshControl->isRefreshing()) {
        isPullArmed = false;
        refreshControl->pullPastTrigger();
    }
}

/// Finger or wheel let go: what is beyond the top returns.
void UICollectionView::Implementation::releasePull() {
    wheelPullTimer.stop();
    isWheelPull = false;
    isPullArmed = true;
    if (offset < minimumOffset()) {
        view.setContentOffset({0, minimumOffset()}, /*animated=*/true);
    }
}

/// While it refreshes, the list may rest with the control in sight.
void UICollectionView::Implementation::refreshingChanged() {
    if (isTouchScrolling()) {
        // Later: the scroller may be in the middle of a step.
        QMetaObject::invokeMethod(
            &view,
            [this] {
                if (isTouchScrolling()) {
                    scroller()->resendPrepareEvent();
                }
            },
            Qt::QueuedConnection);
    } else if (!refreshControl->isRefreshing() && !wheelPullTimer.isActive()) {
        releasePull();
    }
}

} // namespace exifcard

#include "platform/uikit/GestureRecognizers.h"

#include <QAbstractButton>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace exifcard {
namespace {

using State = UIGestureRecognizerState;

// In points and seconds, as on the platform or close to it.
constexpr double kStillness = 10;
constexpr double kTapSpread = 45;
constexpr double kTapInterval = 0.4;
constexpr double kSwipeDistance = 40;
constexpr double kSwipeDuration = 0.5;
constexpr double kSwipeDeviation = 0.6; ///< Across, of what is along.
constexpr double kVelocityWindow = 0.1;
constexpr int kLongPressInMilliseconds = 500;

CGPoint difference(CGPoint to, CGPoint from) {
    return {to.x - from.x, to.y - from.y};
}

double distance(CGPoint to, CGPoint from) {
    const CGPoint between = difference(to, from);
    return std::hypot(between.x, between.y);
}

bool isOnButton(const QWidget* touched, const QWidget* until) {
    for (; touched && touched != until; touched = touched->parentWidget()) {
        if (qobject_cast<const QAbstractButton*>(touched) && touched->isEnabled()) {
            return true;
        }
    }
    return false;
}

} // namespace

void UITapGestureRecognizer::touchBegan(const Touch& touch) {
    const bool goesOn = _taps > 0 && touch.time - _lastTap.time < kTapInterval &&
                        distance(touch.position, _lastTap.position) < kTapSpread;
    if (!goesOn) {
        _taps = 0;
    }
    _began = touch;
    if (isOnButton(touchedView(), view())) {
        setState(State::Failed);
    }
}

void UITapGestureRecognizer::touchMoved(const Touch& touch) {
    if (!_began || distance(touch.position, _began->position) > kStillness) {
        _taps = 0;
        setState(State::Failed);
    }
}

void UITapGestureRecognizer::touchEnded(const Touch& touch) {
    touchMoved(touch);
    if (state() != State::Possible) {
        return;
    }
    _lastTap = touch;
    if (++_taps < _tapsRequired) {
        return;
    }
    _taps = 0;
    if (begin()) {
        setState(State::Ended);
    }
}

bool UITapGestureRecognizer::isPreventedBy(const UIGestureRecognizer& other) const {
    const auto* const tap = qobject_cast<const UITapGestureRecognizer*>(&other);
    return !tap || tap->_tapsRequired >= _tapsRequired;
}

void UISwipeGestureRecognizer::touchBegan(const Touch& touch) {
    _began = touch;
}

void UISwipeGestureRecognizer::touchMoved(const Touch& touch) {
    const CGPoint moved = difference(touch.position, _began->position);
    const bool isHorizontal = _direction == Direction::Right || _direction == Direction::Left;
    const bool isForward = _direction == Direction::Right || _direction == Direction::Down;
    const double along = (isHorizontal ? moved.x : moved.y) * (isForward ? 1 : -1);
    const double across = std::abs(isHorizontal ? moved.y : moved.x);
    if (touch.time - _began->time > kSwipeDuration || along < -kStillness || across > kSwipeDistance) {
        setState(State::Failed);
    } else if (along >= kSwipeDistance) {
        if (across > along * kSwipeDeviation || !begin()) {
            setState(State::Failed);
        } else {
            setState(State::Ended);
        }
    }
}

void UISwipeGestureRecognizer::touchEnded(const Touch& touch) {
    touchMoved(touch);
}

CGPoint UIPanGestureRecognizer::translation() const {
    return _began ? difference(latestTouch().position, _began->position) : CGPoint();
}

CGPoint UIPanGestureRecognizer::velocity() const {
    if (_recent.size() < 2) {
        return {};
    }
    const CGPoint moved = difference(_recent.back().position, _recent.front().position);
    const double seconds = std::max(_recent.back().time - _recent.front().time, 0.001);
    return {moved.x / seconds, moved.y / seconds};
}

void UIPanGestureRecognizer::keepRecent(const Touch& touch) {
    _recent.push_back(touch);
    // The last one before the window stays, so that two are left of slow events; none of a pause.
    const auto isOld = [&touch](const Touch& earlier) { return touch.time - earlier.time > kVelocityWindow; };
    const auto firstRecent = std::ranges::find_if_not(_recent, isOld);
    _recent.erase(_recent.begin(), firstRecent);
}

void UIPanGestureRecognizer::touchBegan(const Touch& touch) {
    _began = touch;
    _recent.clear();
    keepRecent(touch);
}

void UIPanGestureRecognizer::touchMoved(const Touch& touch) {
    keepRecent(touch);
    if (isRunning()) {
        setState(State::Changed);
    } else if (distance(touch.position, _began->position) >= kStillness && begin()) {
        setState(State::Began);
    }
}

void UIPanGestureRecognizer::touchEnded(const Touch& touch) {
    keepRecent(touch);
    setState(isRunning() ? State::Ended : State::Failed);
}

void UIPanGestureRecognizer::touchCancelled() {
    UIGestureRecognizer::touchCancelled();
    _recent.clear();
}

UILongPressGestureRecognizer::UILongPressGestureRecognizer() {
    _timer.setSingleShot(true);
    _timer.setInterval(kLongPressInMilliseconds);
    connect(&_timer, &QTimer::timeout, this, [this] {
        if (begin()) {
            setState(State::Began);
        }
    });
}

void UILongPressGestureRecognizer::touchBegan(const Touch& touch) {
    _began = touch;
    _timer.start();
}

void UILongPressGestureRecognizer::touchMoved(const Touch& touch) {
    if (isRunning()) {
        setState(State::Changed);
    } else if (distance(touch.position, _began->position) > kStillness) {
        _timer.stop();
        setState(State::Failed);
    }
}

void UILongPressGestureRecognizer::touchEnded(const Touch&) {
    _timer.stop();
    setState(isRunning() ? State::Ended : State::Failed);
}

void UILongPressGestureRecognizer::touchCancelled() {
    _timer.stop();
    UIGestureRecognizer::touchCancelled();
}

} // namespace exifcard

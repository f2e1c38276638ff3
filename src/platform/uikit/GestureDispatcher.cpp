#include "platform/uikit/GestureDispatcher.h"

#include <QApplication>
#include <QMouseEvent>
#include <QTouchEvent>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace exifcard {
namespace {

/// So far outside of everything that a release there presses nothing.
constexpr QPointF kNowhere(-100'000, -100'000);

QWidget* widgetOf(const QWindow& window, QPointF globalPosition) {
    for (QWidget* const top : QApplication::topLevelWidgets()) {
        if (top->windowHandle() == &window) {
            QWidget* const inner = top->childAt(top->mapFromGlobal(globalPosition.toPoint()));
            return inner ? inner : top;
        }
    }
    return nullptr;
}

} // namespace

GestureDispatcher& GestureDispatcher::instance() {
    // Goes with the application object, whose events it filters.
    static QPointer<GestureDispatcher> dispatcher;
    if (!dispatcher) {
        dispatcher = new GestureDispatcher;
    }
    return *dispatcher;
}

GestureDispatcher::GestureDispatcher() : QObject(qApp) {
    _clock.start();
    qApp->installEventFilter(this);
}

bool isTouchDelayed() {
    return GestureDispatcher::instance().isTouchDelayed();
}

bool GestureDispatcher::isTouchDelayed() const {
    return std::ranges::any_of(_session, [](const auto& recognizer) {
        return recognizer && recognizer->delaysTouchesBegan() &&
               recognizer->state() == UIGestureRecognizerState::Possible;
    });
}

GestureDispatcher::Touch GestureDispatcher::touchAt(QPointF position, quint64 timestamp) const {
    const double milliseconds = timestamp > 0 ? double(timestamp) : double(_clock.elapsed());
    return {{position.x(), position.y()}, milliseconds / 1000};
}

bool GestureDispatcher::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
        if (auto* const view = qobject_cast<QWidget*>(watched); view && !_isCancellingPress) {
            return handleMouse(*view, *static_cast<QMouseEvent*>(event));
        }
        return false;
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
        if (auto* const window = qobject_cast<QWindow*>(watched); window && !_isCancellingPress) {
            return handleFinger(*window, *static_cast<QTouchEvent*>(event));
        }
        return false;
    default:
        return false;
    }
}

/// The same event comes several times where views hand it on to those around them.
bool GestureDispatcher::handleMouse(QWidget& view, const QMouseEvent& event) {
    const bool isRelease = event.type() == QEvent::MouseButtonRelease;
    if (event.source() != Qt::MouseEventNotSynthesized) { // Made of a touch, which is known already.
        const bool isSwallowed = _swallowsMouseOfTouch;
        _swallowsMouseOfTouch = _swallowsMouseOfTouch && !isRelease;
        return isSwallowed;
    }
    if (_source == Source::Finger) {
        return false;
    }
    const Touch touch = touchAt(event.globalPosition(), event.timestamp());
    if (event.type() == QEvent::MouseMove) {
        if (_source && (event.buttons() & Qt::LeftButton) != 0) {
            deliver(touch, Phase::Moved);
        }
        return _hasTakenOver;
    }
    if (event.button() != Qt::LeftButton) {
        return false;
    }
    if (!isRelease) {
        if (!_source) {
            beginSession(view, touch, Source::Mouse);
        }
        return _hasTakenOver;
    }
    if (!_source) {
        return false;
    }
    deliver(touch, Phase::Ended);
    const bool isSwallowed = _hasTakenOver;
    endSession();
    return isSwallowed;
}

bool GestureDispatcher::handleFinger(QWindow& window, const QTouchEvent& event) {
    if (event.type() == QEvent::TouchBegin && !event.points().isEmpty()) {
        cancelSession(); // Whose end was lost.
        _swallowsMouseOfTouch = false;
        const QPointF position = event.points().front().globalPosition();
        if (QWidget* const view = widgetOf(window, position)) {
            _touchedWindow = &window;
            _touchDevice = event.pointingDevice();
            beginSession(*view, touchAt(position, event.timestamp()), Source::Finger);
        }
        return _hasTakenOver;
    }
    if (_source != Source::Finger || &window != _touchedWindow) {
        return false;
    }
    if (event.type() == QEvent::TouchCancel || event.points().isEmpty()) {
        const bool isSwallowed = _hasTakenOver;
        cancelSession();
        return isSwallowed;
    }
    const Touch touch = touchAt(event.points().front().globalPosition(), event.timestamp());
    const bool isEnd = event.type() == QEvent::TouchEnd;
    deliver(touch, isEnd ? Phase::Ended : Phase::Moved);
    const bool isSwallowed = _hasTakenOver;
    if (isEnd) {
        endSession();
    }
    return isSwallowed;
}

void GestureDispatcher::beginSession(QWidget& view, const Touch& touch, Source source) {
    _source = source;
    _pressed = &view;
    for (QWidget* around = &view; around; around = around->isWindow() ? nullptr : around->parentWidget()) {
        for (QObject* const child : around->children()) {
            auto* const recognizer = qobject_cast<UIGestureRecognizer*>(child);
            if (!recognizer || !recognizer->isEnabled()) {
                continue;
            }
            recognizer->_latest = touch;
            recognizer->_touchedView = &view;
            const auto delegate = recognizer->_delegate.lock();
            if (!delegate || delegate->shouldReceiveTouch(*recognizer)) {
                _session.emplace_back(recognizer);
            }
        }
    }
    deliver(touch, Phase::Began);
}

void GestureDispatcher::deliver(const Touch& touch, Phase phase) {
    const auto session = _session; // An action may end it, or destroy recognizers.
    for (const auto& recognizer : session) {
        if (!recognizer || recognizer->state() > UIGestureRecognizerState::Changed) {
            continue;
        }
        recognizer->_latest = touch;
        switch (phase) {
        case Phase::Began:
            recognizer->touchBegan(touch);
            break;
        case Phase::Moved:
            recognizer->touchMoved(touch);
            break;
        case Phase::Ended:
            recognizer->touchEnded(touch);
            break;
        }
    }
}

void GestureDispatcher::endSession() {
    _swallowsMouseOfTouch = _source == Source::Finger && _hasTakenOver;
    _source.reset();
    _hasTakenOver = false;
    _pressed = nullptr;
    const auto session = std::exchange(_session, {});
    for (const auto& recognizer : session) {
        if (recognizer) {
            recognizer->_state = UIGestureRecognizerState::Possible;
        }
    }
}

void GestureDispatcher::cancelSession() {
    const auto session = _session;
    for (const auto& recognizer : session) {
        if (recognizer && recognizer->state() <= UIGestureRecognizerState::Changed) {
            recognizer->touchCancelled();
        }
    }
    endSession();
}

bool GestureDispatcher::letBegin(UIGestureRecognizer& recognizer) {
    const auto mayBoth = [&recognizer](UIGestureRecognizer& other) {
        const auto allows = [](UIGestureRecognizer& asked, UIGestureRecognizer& about) {
            const auto delegate = asked._delegate.lock();
            return delegate && delegate->shouldRecognizeSimultaneouslyWithGestureRecognizer(asked, about);
        };
        return allows(recognizer, other) || allows(other, recognizer);
    };
    const auto others = _session;
    for (const auto& other : others) {
        const bool hasBegun = other && other != &recognizer &&
                              (other->isRunning() || other->state() == UIGestureRecognizerState::Ended);
        if (hasBegun && recognizer.isPreventedBy(*other) && !mayBoth(*other)) {
            return false;
        }
    }
    const auto delegate = recognizer._delegate.lock();
    if (delegate && !delegate->gestureRecognizerShouldBegin(recognizer)) {
        return false;
    }
    for (const auto& other : others) {
        const bool isWaiting =
            other && other != &recognizer && other->state() == UIGestureRecognizerState::Possible;
        if (isWaiting && other->isPreventedBy(recognizer) && !mayBoth(*other)) {
            other->touchCancelled();
            other->setState(UIGestureRecognizerState::Failed);
        }
    }
    cancelPressBelow();
    return true;
}

void GestureDispatcher::cancelPressBelow() {
    if (!_source || std::exchange(_hasTakenOver, true)) {
        return;
    }
    _isCancellingPress = true;
    if (_source == Source::Finger && _touchedWindow && _touchDevice) {
        _swallowsMouseOfTouch = true;
        QTouchEvent cancel(QEvent::TouchCancel, _touchDevice);
        QApplication::sendEvent(_touchedWindow, &cancel);
    }
    if (_pressed) {
        QMouseEvent release(
            QEvent::MouseButtonRelease, kNowhere, kNowhere, Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(_pressed, &release);
    }
    _isCancellingPress = false;
}

} // namespace exifcard

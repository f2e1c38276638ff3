#pragma once

#include "platform/uivalues/CGGeometry.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

namespace exifcard {

class UIGestureRecognizer;

/// The platform's numbers; recognized is ended.
enum class UIGestureRecognizerState { Possible = 0, Began, Changed, Ended, Cancelled, Failed };

/// Has a say in whether a gesture begins.
class UIGestureRecognizerDelegate {
public:
    UIGestureRecognizerDelegate() = default;
    virtual ~UIGestureRecognizerDelegate() = default;
    UIGestureRecognizerDelegate(const UIGestureRecognizerDelegate&) = delete;
    UIGestureRecognizerDelegate& operator=(const UIGestureRecognizerDelegate&) = delete;

    virtual bool gestureRecognizerShouldBegin(UIGestureRecognizer&) { return true; }
    virtual bool shouldReceiveTouch(UIGestureRecognizer&) { return true; }
    virtual bool shouldRecognizeSimultaneouslyWithGestureRecognizer(
        UIGestureRecognizer&, UIGestureRecognizer&) {
        return false;
    }
};

/// Watches the touches and the mouse's left button over a view and its children, and calls its actions at
/// each change of state. A gesture that began ends the press of what lies below it. Owned by the view that
/// it is added to. Main queue.
class UIGestureRecognizer : public QObject {
    Q_OBJECT

public:
    using State = UIGestureRecognizerState;
    using Action = std::function<void(UIGestureRecognizer& recognizer)>;

    ~UIGestureRecognizer() override;

    State state() const { return _state; }
    /// Null before it is added.
    QWidget* view() const { return _view.data(); }
    bool isEnabled() const { return _isEnabled; }
    /// Switching a running gesture off cancels it.
    void setEnabled(bool isEnabled);
    /// Whether what lies below hears of a touch only when this gesture has failed: a pressed item does not
    /// show so while it may become one.
    bool delaysTouchesBegan() const { return _delaysTouchesBegan; }
    void setDelaysTouchesBegan(bool delays) { _delaysTouchesBegan = delays; }
    void addTarget(Action action) { _actions.push_back(std::move(action)); }
    void setDelegate(std::weak_ptr<UIGestureRecognizerDelegate> delegate) { _delegate = std::move(delegate); }
    /// Where the finger is, in the coordinates of `view`.
    CGPoint locationInView(const QWidget& view) const;

protected:
    /// A finger or the pressed mouse at one moment.
    struct Touch {
        CGPoint position; ///< In global coordinates.
        double time = 0;  ///< Seconds.
    };

    UIGestureRecognizer() = default;

    virtual void touchBegan(const Touch& touch) = 0;
    virtual void touchMoved(const Touch& touch) = 0;
    virtual void touchEnded(const Touch& touch) = 0;
    /// The desktop took the touch away, or the gesture was switched off. Cancels one that had begun.
    virtual void touchCancelled();
    /// Whether the beginning of that other gesture makes this one fail, where the delegates allow no both.
    virtual bool isPreventedBy(const UIGestureRecognizer&) const { return true; }

    /// Asked before a change to began, or to ended for a gesture of one moment.
    /// @return Whether the delegate and the other gestures of this touch let it begin. If not, it has failed.
    bool begin();
    /// Calls the actions, but not for possible and failed.
    void setState(State state);
    bool isRunning() const { return _state == State::Began || _state == State::Changed; }
    const Touch& latestTouch() const { return _latest; }
    /// The innermost view that the touch began on; null when it is gone.
    const QWidget* touchedView() const { return _touchedView.data(); }

private:
    friend class GestureDispatcher;
    friend void addGestureRecognizer(QWidget& view, std::unique_ptr<UIGestureRecognizer> recognizer);

    State _state = State::Possible;
    QPointer<QWidget> _view;
    bool _isEnabled = true;
    bool _delaysTouchesBegan = false;
    std::vector<Action> _actions;
    std::weak_ptr<UIGestureRecognizerDelegate> _delegate;
    Touch _latest;
    QPointer<QWidget> _touchedView;
};

/// Hands the recognizer to the view, which owns it.
void addGestureRecognizer(QWidget& view, std::unique_ptr<UIGestureRecognizer> recognizer);

/// Whether a gesture that delays touches may still come of the present one.
bool isTouchDelayed();

} // namespace exifcard

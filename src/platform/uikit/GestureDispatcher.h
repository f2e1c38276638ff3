#pragma once

#include "platform/uikit/UIGestureRecognizer.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QPointingDevice>

#include <optional>
#include <vector>

class QMouseEvent;
class QTouchEvent;
class QWidget;
class QWindow;

namespace exifcard {

/// Hands touches and the mouse's left button to the gestures around the view where they began, before anybody
/// else sees them. One for the program; there is one touch at a time, and further fingers do not count.
class GestureDispatcher : public QObject {
public:
    static GestureDispatcher& instance();
    bool isTouchDelayed() const;

    /// See `UIGestureRecognizer::begin`.
    bool letBegin(UIGestureRecognizer& recognizer);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    using Touch = UIGestureRecognizer::Touch;
    enum class Source { Mouse, Finger };
    enum class Phase { Began, Moved, Ended };

    GestureDispatcher();

    bool handleMouse(QWidget& view, const QMouseEvent& event);
    bool handleFinger(QWindow& window, const QTouchEvent& event);
    void beginSession(QWidget& view, const Touch& touch, Source source);
    void deliver(const Touch& touch, Phase phase);
    void endSession();
    void cancelSession();
    void cancelPressBelow();
    Touch touchAt(QPointF position, quint64 timestamp) const;

    QElapsedTimer _clock;
    std::vector<QPointer<UIGestureRecognizer>> _session; ///< Those that receive the touch, innermost first.
    std::optional<Source> _source;                       ///< Nothing while there is no touch.
    QPointer<QWidget> _pressed;
    QPointer<QWindow> _touchedWindow;
    QPointer<const QPointingDevice> _touchDevice;
    bool _hasTakenOver = false;         ///< A gesture has begun: nobody else hears of this touch any more.
    bool _swallowsMouseOfTouch = false; ///< What the toolkit makes of a touch that was taken over.
    bool _isCancellingPress = false;
};

} // namespace exifcard

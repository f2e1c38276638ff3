#pragma once

#include "platform/uikit/UIGestureRecognizer.h"

#include <QTimer>

#include <optional>
#include <vector>

namespace exifcard {

/// So many taps at one place, one after the other; not on a button, which takes them itself.
class UITapGestureRecognizer : public UIGestureRecognizer {
    Q_OBJECT

public:
    explicit UITapGestureRecognizer(int numberOfTapsRequired = 1) : _tapsRequired(numberOfTapsRequired) {}

protected:
    void touchBegan(const Touch& touch) override;
    void touchMoved(const Touch& touch) override;
    void touchEnded(const Touch& touch) override;
    bool isPreventedBy(const UIGestureRecognizer& other) const override;

private:
    int _tapsRequired;
    int _taps = 0;
    std::optional<Touch> _began;
    Touch _lastTap;
};

/// The platform's numbers.
enum class UISwipeGestureRecognizerDirection { Right = 1, Left = 2, Up = 4, Down = 8 };

/// A quick stroke in one direction. Recognized while the finger is still down.
class UISwipeGestureRecognizer : public UIGestureRecognizer {
    Q_OBJECT

public:
    using Direction = UISwipeGestureRecognizerDirection;
    explicit UISwipeGestureRecognizer(Direction direction = Direction::Right) : _direction(direction) {}
    Direction direction() const { return _direction; }

protected:
    void touchBegan(const Touch& touch) override;
    void touchMoved(const Touch& touch) override;
    void touchEnded(const Touch& touch) override;

private:
    Direction _direction;
    std::optional<Touch> _began;
};

/// A finger that moves on: from the first 10 points on until it lifts.
class UIPanGestureRecognizer : public UIGestureRecognizer {
    Q_OBJECT

public:
    UIPanGestureRecognizer() = default;

    /// Since the finger came down, in points.
    CGPoint translation() const;
    /// In points a second, of the last moments.
    CGPoint velocity() const;

protected:
    void touchBegan(const Touch& touch) override;
    void touchMoved(const Touch& touch) override;
    void touchEnded(const Touch& touch) override;
    void touchCancelled() override;

private:
    void keepRecent(const Touch& touch);

    std::optional<Touch> _began;
    std::vector<Touch> _recent; ///< Of the last moments, the latest last.
};

/// A finger that stays for half a second.
class UILongPressGestureRecognizer : public UIGestureRecognizer {
    Q_OBJECT

public:
    UILongPressGestureRecognizer();

protected:
    void touchBegan(const Touch& touch) override;
    void touchMoved(const Touch& touch) override;
    void touchEnded(const Touch& touch) override;
    void touchCancelled() override;

private:
    QTimer _timer;
    std::optional<Touch> _began;
};

} // namespace exifcard

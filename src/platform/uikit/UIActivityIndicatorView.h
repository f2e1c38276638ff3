#pragma once

#include "platform/uikit/UIView.h"

#include <QBasicTimer>

namespace exifcard {

/// Twelve turning spokes. Turns only while it is visible; stopped, it is hidden.
class UIActivityIndicatorView : public UIView {
    Q_OBJECT

public:
    explicit UIActivityIndicatorView(QWidget* parent = nullptr);

    void startAnimating();
    void stopAnimating();
    bool isAnimating() const { return _isAnimating; }
    void setColor(const UIColor& color);
    /// Shows the spokes as after that part of a turn (0 … 1), standing still; for a list that is pulled.
    void setStandingPhase(double phase);

    QSize sizeHint() const override { return {24, 24}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    QBasicTimer _timer;
    UIColor _color;
    int _step = 0;
    bool _isAnimating = false;
};

} // namespace exifcard

#pragma once

#include "platform/uikit/UIView.h"

#include <QBasicTimer>

namespace exifcard {

/// A white bar that fills with progress, in the direction of reading.
class MBBarProgressView : public UIView {
    Q_OBJECT

public:
    explicit MBBarProgressView(QWidget* parent = nullptr) : UIView(parent) {}

    float progress() const { return _progress; }
    /// 0 … 1. Seen with the screen's next frame.
    void setProgress(float progress);

    QSize sizeHint() const override { return {150, 12}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    float _progress = 0;
    QBasicTimer _nextFrame;
};

} // namespace exifcard

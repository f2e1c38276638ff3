#pragma once

#include "platform/uikit/UIView.h"

namespace exifcard {

/// A white bar that fills with progress, in the direction of reading.
class MBBarProgressView : public UIView {
    Q_OBJECT

public:
    explicit MBBarProgressView(QWidget* parent = nullptr) : UIView(parent) {}

    float progress() const { return _progress; }
    void setProgress(float progress); ///< 0 … 1

    QSize sizeHint() const override { return {150, 12}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    float _progress = 0;
};

} // namespace exifcard

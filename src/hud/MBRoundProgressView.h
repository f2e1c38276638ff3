#pragma once

#include "platform/uikit/UIView.h"

namespace exifcard {

/// A white disc, or a ring, that fills clockwise from the top.
class MBRoundProgressView : public UIView {
    Q_OBJECT

public:
    explicit MBRoundProgressView(QWidget* parent = nullptr) : UIView(parent) {}

    float progress() const { return _progress; }
    void setProgress(float progress); ///< 0 … 1
    bool isAnnular() const { return _isAnnular; }
    void setAnnular(bool isAnnular);

    QSize sizeHint() const override { return {44, 44}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    float _progress = 0;
    bool _isAnnular = false;
};

} // namespace exifcard

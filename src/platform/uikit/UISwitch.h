#pragma once

#include <QCheckBox>

class QVariantAnimation;

namespace exifcard {

/// A switch of 51 by 31 points, in the middle of a target of 51 by 44: a check box to keys and screen
/// readers.
class UISwitch : public QCheckBox {
    Q_OBJECT

public:
    explicit UISwitch(QWidget* parent = nullptr);

    /// As `toggled` tells.
    bool isOn() const { return isChecked(); }
    void setOn(bool isOn, bool animated);

    QSize sizeHint() const override { return {51, 44}; }
    QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    /// Switched, but not by `setOn`.
    void valueChanged(bool isOn);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool hitButton(const QPoint& position) const override;

private:
    QRectF trackRect() const;
    void moveKnob(bool animated);

    QVariantAnimation* _movement;
    double _knob = 0; ///< 0 off … 1 on.
    bool _movesGently = true;
    bool _isBeingSet = false;
};

} // namespace exifcard

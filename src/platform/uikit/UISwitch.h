#pragma once

#include <QCheckBox>

namespace exifcard {

/// A switch of 51 by 31 points: a check box to keys and screen readers.
class UISwitch : public QCheckBox {
    Q_OBJECT

public:
    explicit UISwitch(QWidget* parent = nullptr);

    bool isOn() const { return isChecked(); }
    void setOn(bool isOn, bool animated);

    QSize sizeHint() const override { return {51, 31}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    bool hitButton(const QPoint& position) const override;

private:
    double _knob = 0; ///< 0 off … 1 on.
};

} // namespace exifcard

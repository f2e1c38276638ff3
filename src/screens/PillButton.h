#pragma once

#include <QAbstractButton>

namespace exifcard {

/// The one button that an empty list offers: 40 points high, round at its ends.
class PillButton : public QAbstractButton {
    Q_OBJECT

public:
    explicit PillButton(QWidget& parent);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace exifcard

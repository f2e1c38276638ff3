#pragma once

#include "platform/uivalues/UIColor.h"

#include <QAbstractButton>

#include <string>

namespace exifcard {

/// A button of a navigation bar, 44 by 44 points: a picture, and maybe a title after it. Drawn in one colour
/// that follows the appearance.
class BarButton : public QAbstractButton {
    Q_OBJECT

public:
    /// @param imageName         A bundled picture's.
    /// @param contentAlignment  Horizontal; seen from left to right.
    BarButton(std::string imageName, QString title, Qt::Alignment contentAlignment, UIColor color);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::string _imageName;
    Qt::Alignment _contentAlignment;
    UIColor _color;
};

} // namespace exifcard

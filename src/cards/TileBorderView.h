#pragma once

#include "platform/uikit/UIView.h"

#include <QPixmap>

namespace exifcard {

/// Lies over a tile and gives it its shape: along the edge a line of one point in its background colour and
/// the border of the tile's own layer, which the picture would cover, and beyond the rounded corners the
/// colour of the list.
class TileBorderView : public UIView {
    Q_OBJECT

public:
    explicit TileBorderView(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPixmap shape() const;
    void drawBorder(QPainter& painter, const QColor& color, double lineWidth) const;
};

} // namespace exifcard

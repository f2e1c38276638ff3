#include "hud/MBBarProgressView.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace exifcard {
namespace {

constexpr double kLineWidth = 2;
constexpr double kGap = 1.5; ///< Between the outline and what fills it.

} // namespace

void MBBarProgressView::setProgress(float progress) {
    _progress = progress;
    update();
}

void MBBarProgressView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double half = kLineWidth / 2;
    const QRectF outline = QRectF(rect()).adjusted(half, half, -half, -half);
    painter.setPen(QPen(Qt::white, kLineWidth));
    painter.drawRoundedRect(outline, outline.height() / 2, outline.height() / 2);

    const double inset = half + kGap;
    const QRectF inside = outline.adjusted(inset, inset, -inset, -inset);
    QRectF filled = inside;
    filled.setWidth(inside.width() * std::clamp(_progress, 0.0F, 1.0F));
    if (layoutDirection() == Qt::RightToLeft) {
        filled.moveRight(inside.right());
    }
    QPainterPath shape;
    shape.addRoundedRect(inside, inside.height() / 2, inside.height() / 2);
    painter.setClipRect(filled);
    painter.fillPath(shape, Qt::white);
}

} // namespace exifcard

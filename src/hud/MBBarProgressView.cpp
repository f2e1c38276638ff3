#include "hud/MBBarProgressView.h"

#include <QPainter>

#include <algorithm>

namespace exifcard {
namespace {

constexpr double kLineWidth = 2;
constexpr double kGap = 1.5; ///< Between the outline and what fills it.

} // namespace

void MBBarProgressView::setProgress(float progress) {
    if (progress != _progress) {
        _progress = progress;
        update();
    }
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
    filled.setWidth(inside.width() * double(std::clamp(_progress, 0.0F, 1.0F)));
    if (layoutDirection() == Qt::RightToLeft) {
        filled.moveRight(inside.right());
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(filled, filled.height() / 2, filled.height() / 2);
}

} // namespace exifcard

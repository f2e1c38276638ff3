#include "hud/MBRoundProgressView.h"

#include <QPainter>

#include <algorithm>

namespace exifcard {
namespace {

constexpr double kLineWidth = 2;
constexpr double kRingWidth = 5;
constexpr double kGap = 1.5;  ///< Between the outline and what fills it.
constexpr int kTop = 90 * 16; ///< As the toolkit counts: sixteenths of a degree, against the clock.
constexpr double kWholeTurn = 360 * 16;
const QColor kTrack(255, 255, 255, 51);

QRectF inset(const QRectF& rect, double by) {
    return rect.adjusted(by, by, -by, -by);
}

} // namespace

void MBRoundProgressView::setProgress(float progress) {
    _progress = progress;
    update();
}

void MBRoundProgressView::setAnnular(bool isAnnular) {
    _isAnnular = isAnnular;
    update();
}

void MBRoundProgressView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const int turn = -static_cast<int>(std::clamp(_progress, 0.0F, 1.0F) * kWholeTurn);
    if (_isAnnular) {
        const QRectF ring = inset(rect(), kRingWidth / 2);
        painter.setPen(QPen(kTrack, kRingWidth));
        painter.drawEllipse(ring);
        painter.setPen(QPen(Qt::white, kRingWidth, Qt::SolidLine, Qt::FlatCap));
        painter.drawArc(ring, kTop, turn);
        return;
    }
    const QRectF outline = inset(rect(), kLineWidth / 2);
    painter.setPen(QPen(Qt::white, kLineWidth));
    painter.drawEllipse(outline);
    painter.setPen(Qt::NoPen);
    const QRectF disc = inset(outline, kLineWidth / 2 + kGap);
    painter.setBrush(kTrack);
    painter.drawEllipse(disc);
    painter.setBrush(Qt::white);
    painter.drawPie(disc, kTop, turn);
}

} // namespace exifcard

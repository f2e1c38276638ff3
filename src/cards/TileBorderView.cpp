#include "cards/TileBorderView.h"

#include "appearance/UIColor+Hex.h"
#include "platform/uikit/UIColor+Qt.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmapCache>

namespace exifcard {
namespace {

constexpr double kCornerRadius = 8;
constexpr double kLineWidth = 1;

/// What lies between a corner of the bounds and its rounded shape; the others are mirrored from it.
QPainterPath outsideOfCorner() {
    QPainterPath path(QPointF(0, 0));
    path.lineTo(kCornerRadius, 0);
    path.arcTo(QRectF(0, 0, 2 * kCornerRadius, 2 * kCornerRadius), 90, 90);
    path.closeSubpath();
    return path;
}

} // namespace

TileBorderView::TileBorderView(QWidget* parent) : UIView(parent) {
    layer().cornerRadius = kCornerRadius;
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void TileBorderView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.drawPixmap(0, 0, shape());
    const auto* const tile = qobject_cast<const UIView*>(parentWidget());
    if (tile && tile->layer().borderWidth > 0) {
        painter.setRenderHint(QPainter::Antialiasing);
        drawBorder(painter, qColor(tile->layer().borderColor), tile->layer().borderWidth);
    }
}

/// Drawn once for all tiles of a size: curves are dear.
QPixmap TileBorderView::shape() const {
    const QColor outside = qColor(themeColor());
    const QColor line = qColor(backgroundColor());
    const auto key = QStringLiteral("exifcard-tile-%1-%2-%3-%4-%5")
                         .arg(width())
                         .arg(height())
                         .arg(devicePixelRatioF())
                         .arg(outside.rgba())
                         .arg(line.rgba());
    QPixmap drawn;
    if (QPixmapCache::find(key, &drawn)) {
        return drawn;
    }
    static const QPainterPath corner = outsideOfCorner();
    drawn = QPixmap(size() * devicePixelRatioF());
    drawn.setDevicePixelRatio(devicePixelRatioF());
    drawn.fill(Qt::transparent);
    QPainter painter(&drawn);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const int horizontal : {1, -1}) {
        for (const int vertical : {1, -1}) {
            painter.save();
            painter.translate(horizontal > 0 ? 0 : width(), vertical > 0 ? 0 : height());
            painter.scale(horizontal, vertical);
            painter.fillPath(corner, outside);
            painter.restore();
        }
    }
    drawBorder(painter, line, kLineWidth);
    painter.end();
    QPixmapCache::insert(key, drawn);
    return drawn;
}

void TileBorderView::drawBorder(QPainter& painter, const QColor& color, double lineWidth) const {
    const double half = lineWidth / 2;
    painter.setPen(QPen(color, lineWidth));
    painter.drawRoundedRect(
        QRectF(rect()).adjusted(half, half, -half, -half), kCornerRadius - half, kCornerRadius - half);
}

} // namespace exifcard

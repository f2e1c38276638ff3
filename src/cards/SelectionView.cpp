#include "cards/SelectionView.h"

#include "appearance/Apperance.h"
#include "platform/uikit/NamedImages.h"
#include "platform/uikit/UIColor+Qt.h"

#include <QPainter>

namespace exifcard {
namespace {

constexpr double kCornerRadius = 8;
constexpr double kBorderWidth = 3.5;
constexpr double kWashOpacity = 0.18;
constexpr double kTickDiscSide = 24;
constexpr double kTickSide = 15;
constexpr double kTickInset = 6; ///< From the edges: over the heart.

} // namespace

SelectionView::SelectionView(QWidget* parent) : UIView(parent) {
    layer().cornerRadius = kCornerRadius;
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void SelectionView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double half = kBorderWidth / 2;
    painter.setPen(QPen(qColor(Apperance::yellowColor()), kBorderWidth));
    painter.setBrush(qColor(Apperance::yellowColor().withAlpha(kWashOpacity)));
    painter.drawRoundedRect(
        QRectF(rect()).adjusted(half, half, -half, -half), kCornerRadius - half, kCornerRadius - half);

    QRectF disc(0, kTickInset, kTickDiscSide, kTickDiscSide);
    disc.moveLeft(layoutDirection() == Qt::RightToLeft ? kTickInset : width() - kTickInset - kTickDiscSide);
    painter.setPen(Qt::NoPen);
    painter.setBrush(qColor(Apperance::yellowColor()));
    painter.drawEllipse(disc);
    QRectF tick(0, 0, kTickSide, kTickSide);
    tick.moveCenter(disc.center());
    painter.drawPixmap(
        tick.topLeft(), imageNamed("check", kTickSide, UIColor::blackColor(), devicePixelRatioF()));
}

} // namespace exifcard

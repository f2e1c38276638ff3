#include "host/IconButton.h"

#include "appearance/Apperance.h"
#include "host/HostColors.h"
#include "platform/foundation/LocalizedString.h"
#include "platform/uikit/FocusRing.h"
#include "platform/uikit/NamedImages.h"
#include "platform/uikit/Text+Qt.h"
#include "platform/uikit/UIColor+Qt.h"

#include <QKeyEvent>
#include <QPainter>

namespace exifcard {

IconButton::IconButton(Look look, const QString& name, QWidget* parent)
    : QAbstractButton(parent)
    , _look(std::move(look)) {
    setAccessibleName(name);
    setToolTip(name);
    setFocusPolicy(Qt::StrongFocus);
    setFixedSize(sizeHint());
    setCursor(Qt::PointingHandCursor);
}

IconButton* IconButton::forRemoving(QWidget* parent) {
    const Look look = {.icon = "closebutton",
        .iconSide = 14,
        .discSide = 24,
        .disc = HostColors::fieldButton(),
        .color = Apperance::appearanceTextColor()};
    return new IconButton(look, qString(localizedString("Remove")), parent);
}

void IconButton::paintEvent(QPaintEvent*) {
    constexpr double kPressedOpacity = 0.6;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(!isEnabled() ? Apperance::disabledAlpha() : isDown() ? kPressedOpacity : 1);
    const QPointF center = QRectF(rect()).center();
    const double half = _look.discSide / 2;
    const QRectF disc(center.x() - half, center.y() - half, _look.discSide, _look.discSide);
    if (_look.disc) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(qColor(*_look.disc));
        painter.drawEllipse(disc);
    }
    const double inset = (_look.discSide - _look.iconSide) / 2;
    const QPixmap icon = imageNamed(_look.icon, _look.iconSide, _look.color, devicePixelRatioF());
    painter.drawPixmap(disc.adjusted(inset, inset, -inset, -inset).topLeft(), icon);
    if (showsFocusRing(*this)) {
        paintFocusRing(painter, disc.adjusted(-3, -3, 3, 3).intersected(QRectF(rect())), half + 3);
    }
}

void IconButton::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QAbstractButton::keyPressEvent(event);
}

} // namespace exifcard

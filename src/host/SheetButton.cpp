#include "host/SheetButton.h"

#include "appearance/Apperance.h"
#include "appearance/ThemeColors.h"
#include "host/HostFont.h"
#include "platform/uikit/FocusRing.h"
#include "platform/uikit/UIColor+Qt.h"

#include <QFontMetrics>
#include <QKeyEvent>
#include <QPainter>

namespace exifcard {
namespace {

constexpr int kFilledHeight = 40;
constexpr int kQuietHeight = 32;
constexpr int kFilledPadding = 18;
constexpr int kQuietPadding = 12;

int paddingOfKind(SheetButton::Kind kind) {
    return kind == SheetButton::Kind::Filled ? kFilledPadding : kQuietPadding;
}

QFont fontOfKind(SheetButton::Kind kind) {
    return hostFont(kind == SheetButton::Kind::Filled ? 15 : 13, HostFontWeight::DemiBold);
}

} // namespace

SheetButton::SheetButton(Kind kind, const QString& text, QWidget* parent)
    : QPushButton(text, parent)
    , _kind(kind) {
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void SheetButton::setKind(Kind kind) {
    _kind = kind;
    updateGeometry();
    update();
}

QSize SheetButton::sizeHint() const {
    const QFontMetrics metrics(fontOfKind(_kind));
    const int least = _kind == Kind::Filled ? kFilledHeight : kQuietHeight;
    return {
        metrics.horizontalAdvance(text()) + 2 * paddingOfKind(_kind), std::max(least, metrics.height() + 12)};
}

void SheetButton::paintEvent(QPaintEvent*) {
    constexpr double kPressedOpacity = 0.7;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(!isEnabled() ? Apperance::disabledAlpha() : isDown() ? kPressedOpacity : 1);
    const QRectF shape = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    const double radius = shape.height() / 2;
    const bool isFilled = _kind == Kind::Filled;
    painter.setPen(isFilled ? QPen(Qt::NoPen) : QPen(qColor(hairlineColor()), 1));
    painter.setBrush(isFilled ? qColor(Apperance::appearanceTextColor()) : QColor(Qt::transparent));
    painter.drawRoundedRect(shape, radius, radius);
    painter.setPen(
        qColor(isFilled ? Apperance::appearanceBackgroundColor() : Apperance::appearanceTextColor()));
    painter.setFont(fontOfKind(_kind));
    painter.setLayoutDirection(text().isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    const QFontMetrics metrics(painter.font());
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextHideMnemonic,
        metrics.elidedText(text(), Qt::ElideRight, width() - paddingOfKind(_kind)));
    if (showsFocusRing(*this)) {
        paintFocusRing(painter, QRectF(rect()), radius);
    }
}

void SheetButton::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QPushButton::keyPressEvent(event);
}

} // namespace exifcard

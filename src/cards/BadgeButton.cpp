#include "cards/BadgeButton.h"

#include "appearance/ThemeColors.h"
#include "platform/uikit/NamedImages.h"
#include "platform/uikit/Text+Qt.h"
#include "platform/uikit/UIColor+Qt.h"

#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace exifcard {
namespace {

/// From the disc to the edges that it is placed at.
constexpr double kInset = 5;

QRectF squareIn(const QRectF& bounds, double side, Qt::Alignment place) {
    QRectF square(0, 0, side, side);
    square.moveCenter(bounds.center());
    if (place & Qt::AlignLeft) {
        square.moveLeft(bounds.left() + kInset);
    } else if (place & Qt::AlignRight) {
        square.moveRight(bounds.right() - kInset);
    }
    if (place & Qt::AlignTop) {
        square.moveTop(bounds.top() + kInset);
    } else if (place & Qt::AlignBottom) {
        square.moveBottom(bounds.bottom() - kInset);
    }
    return square;
}

} // namespace

BadgeButton::BadgeButton(QWidget* parent) : QAbstractButton(parent), _discColor(pictureBadgeColor()) {
    setFocusPolicy(Qt::NoFocus); // Keys go to the list, which knows them.
}

void BadgeButton::setPicture(const QString& picture) {
    if (picture != _picture) {
        _picture = picture;
        update();
    }
}

void BadgeButton::setPictureColor(const UIColor& color) {
    _pictureColor = color;
    update();
}

void BadgeButton::setDiscColor(const UIColor& color) {
    _discColor = color;
    update();
}

void BadgeButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const auto place = QStyle::visualAlignment(layoutDirection(), _place);
    const QRectF disc = squareIn(rect(), std::max(_discSide, _pictureSide), place);
    if (_discSide > 0) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(qColor(_discColor));
        painter.setOpacity(isDown() ? 0.7 : 1);
        painter.drawEllipse(disc);
    }
    const QString& picture = isChecked() || _uncheckedPicture.isEmpty() ? _picture : _uncheckedPicture;
    if (!picture.isEmpty()) {
        QRectF frame(0, 0, _pictureSide, _pictureSide);
        frame.moveCenter(disc.center());
        const auto pixmap =
            imageNamed(textFromQString(picture), _pictureSide, _pictureColor, devicePixelRatioF());
        painter.drawPixmap(frame.topLeft(), pixmap);
    }
}

} // namespace exifcard

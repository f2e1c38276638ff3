#include "platform/uikit/PictureButton.h"

#include "appearance/Apperance.h"
#include "platform/uikit/FocusRing.h"
#include "platform/uikit/NamedImages.h"
#include "platform/uikit/UIColor+Qt.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyle>

#include <algorithm>
#include <utility>

namespace exifcard {
namespace {

constexpr double kPressedOpacity = 0.5;
constexpr double kFocusCornerRadius = 10; ///< Of the ring around a button without disc.
constexpr double kRingOutsideDisc = 3;
constexpr double kBeforeText = 1;

} // namespace

PictureButton::PictureButton(Look look, const QString& name, QWidget* parent)
    : QAbstractButton(parent)
    , _look(std::move(look)) {
    if (!name.isEmpty()) { // The many badges of a grid have none.
        setAccessibleName(name);
        setToolTip(name);
    }
    setFocusPolicy(Qt::StrongFocus);
    resize(sizeHint());
}

void PictureButton::setLook(Look look) {
    _look = std::move(look);
    update();
}

/// Of the disc, or of picture and text.
QRectF PictureButton::contentRect() const {
    const double side = std::max(_look.discSide, _look.pictureSide);
    const double textWidth = text().isEmpty() ? 0 : kBeforeText + fontMetrics().horizontalAdvance(text());
    const QRectF bounds = QRectF(rect()).adjusted(_look.inset, _look.inset, -_look.inset, -_look.inset);
    const auto place = QStyle::visualAlignment(layoutDirection(), _look.place);
    QRectF content(0, 0, side + textWidth, side);
    content.moveCenter(bounds.center());
    if (place & Qt::AlignLeft) {
        content.moveLeft(bounds.left());
    } else if (place & Qt::AlignRight) {
        content.moveRight(bounds.right());
    }
    if (place & Qt::AlignTop) {
        content.moveTop(bounds.top());
    } else if (place & Qt::AlignBottom) {
        content.moveBottom(bounds.bottom());
    }
    return content;
}

void PictureButton::paintPicture(QPainter& painter, const QPointF& corner) const {
    const bool isOther = !isChecked() && !_look.uncheckedPicture.empty();
    const std::string& name = isOther ? _look.uncheckedPicture : _look.picture;
    if (name.empty()) {
        return;
    }
    const QPixmap picture = imageNamed(name, _look.pictureSide, _look.color, devicePixelRatioF());
    if (!_look.isMirrored || layoutDirection() == Qt::LeftToRight) {
        painter.drawPixmap(corner, picture);
        return;
    }
    painter.save();
    painter.translate(2 * corner.x() + _look.pictureSide, 0);
    painter.scale(-1, 1);
    painter.drawPixmap(corner, picture);
    painter.restore();
}

void PictureButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF content = contentRect();
    const bool isFromRight = layoutDirection() == Qt::RightToLeft;
    QRectF picture(0, 0, content.height(), content.height()); // Or its disc.
    picture.moveTopLeft(content.topLeft());
    if (isFromRight) {
        picture.moveRight(content.right());
    }
    const bool hasDisc = _look.discSide > 0;
    if (showsFocusRing(*this)) {
        const double out = kRingOutsideDisc;
        const QRectF ring = hasDisc ? picture.adjusted(-out, -out, out, out) : QRectF(rect());
        paintFocusRing(painter, ring.intersected(QRectF(rect())),
            hasDisc ? _look.discSide / 2 + out : kFocusCornerRadius);
    }
    painter.setOpacity(!isEnabled() ? Apperance::disabledAlpha() : isDown() ? kPressedOpacity : 1);
    if (hasDisc) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(qColor(_look.discColor));
        painter.drawEllipse(picture);
    }
    const double inset = (picture.width() - _look.pictureSide) / 2;
    paintPicture(painter, picture.topLeft() + QPointF(inset, inset));
    if (!text().isEmpty()) {
        painter.setPen(qColor(_look.color));
        painter.drawText(content,
            Qt::AlignVCenter | Qt::AlignAbsolute | (isFromRight ? Qt::AlignLeft : Qt::AlignRight), text());
    }
}

void PictureButton::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QAbstractButton::keyPressEvent(event);
}

} // namespace exifcard

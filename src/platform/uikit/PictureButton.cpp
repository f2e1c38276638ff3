#include "platform/uikit/PictureButton.h"

#include "appearance/Apperance.h"
#include "platform/uikit/FocusRing.h"
#include "platform/uikit/NamedImages.h"

#include <QPainter>

#include <utility>

namespace exifcard {
namespace {

constexpr double kPressedOpacity = 0.45;
constexpr double kFocusCornerRadius = 10;

} // namespace

PictureButton::PictureButton(std::string pictureName, const QString& name, QWidget* parent)
    : QAbstractButton(parent)
    , _pictureName(std::move(pictureName))
    , _color(Apperance::appearanceTextColor()) {
    setAccessibleName(name);
    setToolTip(name);
    setFocusPolicy(Qt::StrongFocus);
    resize(sizeHint());
}

void PictureButton::setPictureName(std::string pictureName) {
    _pictureName = std::move(pictureName);
    update();
}

void PictureButton::setPictureSide(double side) {
    _side = side;
    update();
}

void PictureButton::setColor(const UIColor& color) {
    _color = color;
    update();
}

void PictureButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (showsFocusRing(*this)) {
        paintFocusRing(painter, rect(), kFocusCornerRadius);
    }
    if (!isEnabled()) {
        painter.setOpacity(Apperance::disabledAlpha());
    } else if (isDown()) {
        painter.setOpacity(kPressedOpacity);
    }
    const QPixmap picture = imageNamed(_pictureName, _side, _color, devicePixelRatioF());
    if (_isMirrored && layoutDirection() == Qt::RightToLeft) {
        painter.translate(width(), 0);
        painter.scale(-1, 1);
    }
    const QSizeF size = picture.deviceIndependentSize();
    painter.drawPixmap(QPointF((width() - size.width()) / 2, (height() - size.height()) / 2), picture);
}

} // namespace exifcard

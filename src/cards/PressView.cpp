#include "cards/PressView.h"

#include "appearance/UIColor+Hex.h"
#include "platform/uikit/UIColor+Qt.h"

#include <QPainter>
#include <QVariantAnimation>

namespace exifcard {
namespace {

constexpr double kPressedScale = 0.97;
constexpr int kMilliseconds = 120;

} // namespace

PressView::PressView(QWidget& card) : _picture(card.grab()), _animation(new QVariantAnimation(this)) {
    setParent(&card);
    setGeometry(card.rect());
    setAttribute(Qt::WA_TransparentForMouseEvents);
    _animation->setDuration(kMilliseconds);
    connect(_animation, &QVariantAnimation::valueChanged, this, [this](const QVariant& scale) {
        _scale = scale.toDouble();
        update();
    });
    connect(_animation, &QVariantAnimation::finished, this, [this] {
        if (_scale == 1) {
            deleteLater();
        }
    });
    show();
    raise();
}

void PressView::setPressed(bool isPressed) {
    _animation->stop();
    _animation->setStartValue(_scale);
    _animation->setEndValue(isPressed ? kPressedScale : 1.0);
    _animation->start();
}

void PressView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), qColor(themeColor())); // What lies around a card in every list.
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    QRectF place(QPointF(), QSizeF(size()) * _scale);
    place.moveCenter(QRectF(rect()).center());
    painter.drawPixmap(place, _picture, _picture.rect());
}

} // namespace exifcard

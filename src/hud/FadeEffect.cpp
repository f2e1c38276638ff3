#include "hud/FadeEffect.h"

#include <QPainter>

namespace exifcard {

void FadeEffect::setOpacity(double opacity) {
    _opacity = opacity;
    _isStale = true;
    update();
}

void FadeEffect::draw(QPainter* painter) {
    if (_opacity <= 0) {
        return;
    }
    if (_opacity >= 1) {
        drawSource(painter);
        return;
    }
    if (_isStale || painter->worldTransform() != _transform) {
        _transform = painter->worldTransform();
        _picture = sourcePixmap(Qt::DeviceCoordinates, &_place, NoPad);
        _isStale = false;
    }
    painter->save();
    painter->setOpacity(_opacity);
    painter->setWorldTransform(QTransform());
    painter->drawPixmap(_place, _picture);
    painter->restore();
}

} // namespace exifcard

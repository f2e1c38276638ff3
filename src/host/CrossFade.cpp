#include "host/CrossFade.h"

#include <QPainter>
#include <QVariantAnimation>

namespace exifcard {

CrossFade::CrossFade(QWidget& covered) : QWidget(&covered), _picture(covered.grab()) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setGeometry(covered.rect());
    show();
    raise();
}

void CrossFade::start() {
    constexpr int kMilliseconds = 200;
    auto* const fading = new QVariantAnimation(this);
    fading->setDuration(kMilliseconds);
    fading->setStartValue(1.0);
    fading->setEndValue(0.0);
    connect(fading, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        _opacity = value.toDouble();
        update();
    });
    connect(fading, &QVariantAnimation::finished, this, &CrossFade::deleteLater);
    raise();
    fading->start();
}

void CrossFade::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setOpacity(_opacity);
    painter.drawPixmap(0, 0, _picture);
}

} // namespace exifcard

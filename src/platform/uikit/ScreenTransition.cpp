#include "platform/uikit/ScreenTransition.h"

#include "platform/uikit/UITraitCollection.h"

#include <QPainter>

namespace exifcard {
namespace {

constexpr int kSlideInMilliseconds = 350;
constexpr int kFadeInMilliseconds = 200;
constexpr double kParallax = 0.3;
constexpr double kVeil = 0.1;

QPixmap picture(QWidget& view, const QRect& place) {
    const double scale = view.devicePixelRatioF();
    QPixmap pixmap((QSizeF(place.size()) * scale).toSize());
    pixmap.setDevicePixelRatio(scale);
    pixmap.fill(view.palette().color(QPalette::Window));
    view.render(&pixmap, QPoint(), QRegion(), QWidget::DrawChildren);
    return pixmap;
}

} // namespace

ScreenTransition::ScreenTransition(QWidget& from, QWidget& to, Kind kind, const QRect& place, QWidget* parent)
    : QWidget(parent)
    , _from(picture(from, place))
    , _to(kind == Kind::CrossFade ? QPixmap() : picture(to, place))
    , _kind(kind) {
    setGeometry(place);
    setAttribute(Qt::WA_OpaquePaintEvent, kind != Kind::CrossFade);
    _progress.setStartValue(0.0);
    _progress.setEndValue(1.0);
    _progress.setDuration(kind == Kind::CrossFade ? kFadeInMilliseconds : kSlideInMilliseconds);
    _progress.setEasingCurve(kind == Kind::CrossFade ? QEasingCurve::Linear : QEasingCurve::OutCubic);
    connect(&_progress, &QVariantAnimation::valueChanged, this, [this] { update(); });
    connect(&_progress, &QVariantAnimation::finished, this, &ScreenTransition::finished);
}

void ScreenTransition::start() {
    show();
    raise();
    _progress.start();
}

void ScreenTransition::cancel() {
    disconnect(&_progress, nullptr, this, nullptr);
    _progress.stop();
    hide();
}

void ScreenTransition::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const double progress = _progress.currentValue().toDouble();
    if (_kind == Kind::CrossFade) {
        painter.setOpacity(1 - progress);
        painter.drawPixmap(0, 0, _from);
    } else if (_kind == Kind::Push) {
        paintSlide(painter, _from, _to, progress);
    } else {
        paintSlide(painter, _to, _from, 1 - progress);
    }
}

void ScreenTransition::paintSlide(
    QPainter& painter, const QPixmap& below, const QPixmap& above, double covered) {
    // Screens come from where lines end.
    const double distance = layoutDirection() == Qt::RightToLeft ? -width() : width();
    painter.fillRect(rect(), palette().color(QPalette::Window));
    painter.drawPixmap(QPointF(-distance * kParallax * covered, 0), below);
    painter.fillRect(rect(), QColor::fromRgbF(0, 0, 0, static_cast<float>(kVeil * covered)));
    painter.drawPixmap(QPointF(distance * (1 - covered), 0), above);
}

} // namespace exifcard

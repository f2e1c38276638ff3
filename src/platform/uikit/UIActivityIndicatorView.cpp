#include "platform/uikit/UIActivityIndicatorView.h"

#include "platform/uikit/UIColor+Qt.h"

#include <QPainter>
#include <QTimerEvent>

#include <algorithm>
#include <cmath>

namespace exifcard {
namespace {

constexpr int kSpokes = 12;
constexpr int kStepInMilliseconds = 83; // A turn a second.
constexpr float kFaintest = 0.16F;

} // namespace

UIActivityIndicatorView::UIActivityIndicatorView(QWidget* parent)
    : UIView(parent)
    , _color(RGBA{0.42, 0.42, 0.43, 1}, RGBA{0.61, 0.61, 0.63, 1}) {
    setVisible(false);
}

void UIActivityIndicatorView::startAnimating() {
    _isAnimating = true;
    setVisible(true);
    if (isVisible() && !_timer.isActive()) {
        _timer.start(kStepInMilliseconds, this);
    }
}

void UIActivityIndicatorView::stopAnimating() {
    _isAnimating = false;
    _timer.stop();
    setVisible(false);
}

void UIActivityIndicatorView::setColor(const UIColor& color) {
    _color = color;
    update();
}

void UIActivityIndicatorView::setStandingPhase(double phase) {
    _isAnimating = false;
    _timer.stop();
    _step = static_cast<int>(std::lround(std::clamp(phase, 0.0, 1.0) * kSpokes)) % kSpokes;
    update();
}

void UIActivityIndicatorView::paintEvent(QPaintEvent* event) {
    UIView::paintEvent(event);
    const double diameter = std::min(width(), height());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(rect().toRectF().center());
    QColor color = qColor(_color);
    const float opacity = color.alphaF();
    for (int spoke = 0; spoke < kSpokes; ++spoke) {
        const int age = (_step - spoke + kSpokes) % kSpokes;
        const float strength = 1 - static_cast<float>(age) / (kSpokes - 1);
        color.setAlphaF(opacity * (kFaintest + (1 - kFaintest) * strength));
        painter.save();
        painter.rotate(spoke * 360.0 / kSpokes);
        painter.setPen(QPen(color, diameter * 0.085, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(0, -diameter * 0.24), QPointF(0, -diameter * 0.45));
        painter.restore();
    }
}

void UIActivityIndicatorView::timerEvent(QTimerEvent* event) {
    if (event->timerId() != _timer.timerId()) {
        UIView::timerEvent(event);
        return;
    }
    _step = (_step + 1) % kSpokes;
    update();
}

void UIActivityIndicatorView::showEvent(QShowEvent* event) {
    UIView::showEvent(event);
    if (_isAnimating) {
        _timer.start(kStepInMilliseconds, this);
    }
}

void UIActivityIndicatorView::hideEvent(QHideEvent* event) {
    UIView::hideEvent(event);
    _timer.stop();
}

} // namespace exifcard

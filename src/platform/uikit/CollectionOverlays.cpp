#include "platform/uikit/CollectionOverlays.h"

#include "platform/uikit/FocusRing.h"
#include "platform/uikit/UIColor+Qt.h"
#include "platform/uikit/UITraitCollection.h"

#include <QPaintEvent>
#include <QPainter>

#include <chrono>

namespace exifcard {
namespace {

using namespace std::chrono_literals;

constexpr auto kRestTime = 900ms;
constexpr int kFadeMilliseconds = 250;
constexpr int kAmberWidth = 2;
constexpr int kOutlineWidth = 1;
constexpr int kRingWidth = kAmberWidth + kOutlineWidth;

UIColor indicatorColor() {
    return UIColor(RGBA{0, 0, 0, 0.4}, RGBA{1, 1, 1, 0.45});
}

} // namespace

ScrollIndicator::ScrollIndicator(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
    _rest.setSingleShot(true);
    _rest.setInterval(kRestTime);
    connect(&_rest, &QTimer::timeout, this, &ScrollIndicator::fade);
    _fade.setDuration(kFadeMilliseconds);
    _fade.setStartValue(1.0);
    _fade.setEndValue(0.0);
    connect(&_fade, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        _opacity = value.toDouble();
        update();
    });
    connect(&_fade, &QVariantAnimation::finished, this, &QWidget::hide);
}

void ScrollIndicator::flash() {
    _fade.stop();
    _opacity = 1;
    _rest.start();
    show();
}

void ScrollIndicator::fade() {
    if (UITraitCollection::currentTraitCollection().isMotionReduced) {
        hide();
    } else {
        _fade.start();
    }
}

void ScrollIndicator::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(_opacity);
    painter.setPen(Qt::NoPen);
    painter.setBrush(qColor(indicatorColor()));
    painter.drawRoundedRect(QRectF(rect()), kThickness / 2.0, kThickness / 2.0);
}

ItemFocusRing::ItemFocusRing(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
}

void ItemFocusRing::showAround(const QRect& item, double cornerRadius) {
    _cornerRadius = cornerRadius;
    const QRect outer = item.adjusted(-kOutlineWidth, -kOutlineWidth, kOutlineWidth, kOutlineWidth);
    if (outer.size() != size()) {
        // Without its inside, what lies below is not painted again for each step of scrolling.
        const QRect whole(QPoint(0, 0), outer.size());
        const int inner = kRingWidth + static_cast<int>(cornerRadius);
        setMask(QRegion(whole).subtracted(whole.adjusted(inner, inner, -inner, -inner)));
    }
    setGeometry(outer);
    show();
}

void ItemFocusRing::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paintFocusRing(painter, rect(), _cornerRadius + kOutlineWidth);
}

} // namespace exifcard

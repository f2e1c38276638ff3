#include "cards/LoadingBarView.h"

#include "appearance/Apperance.h"
#include "platform/uikit/UIColor+Qt.h"

#include <QPainter>
#include <QPainterPath>
#include <QVariantAnimation>

namespace exifcard {
namespace {

constexpr double kMillisecondsInSecond = 1000;

} // namespace

LoadingBarView::LoadingBarView(QWidget* parent) : UIView(parent), _growing(new QVariantAnimation(this)) {
    _growing->setEasingCurve(QEasingCurve::InOutQuad);
    connect(_growing, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        _shownWidth = value.toDouble();
        update();
    });
}

void LoadingBarView::showWidth(double width, double seconds) {
    _growing->stop();
    if (seconds > 0) {
        _growing->setStartValue(_shownWidth);
        _growing->setEndValue(width);
        _growing->setDuration(static_cast<int>(seconds * kMillisecondsInSecond));
        _growing->start();
    } else {
        _shownWidth = width;
        update();
    }
}

void LoadingBarView::paintEvent(QPaintEvent*) {
    QRectF bar(0, 0, _shownWidth, height());
    if (layoutDirection() == Qt::RightToLeft) {
        bar.moveRight(this->width());
    }
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    // The cell's round corners cut it.
    const auto* const cell = qobject_cast<const UIView*>(parentWidget());
    if (cell) {
        QPainterPath shape;
        const double radius = cell->layer().cornerRadius;
        shape.addRoundedRect(QRectF(cell->rect()).translated(-pos()), radius, radius);
        painter.setClipPath(shape);
    }
    painter.fillRect(bar, qColor(Apperance::yellowColor()));
}

} // namespace exifcard

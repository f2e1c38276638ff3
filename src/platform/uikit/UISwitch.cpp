#include "platform/uikit/UISwitch.h"

#include "appearance/Apperance.h"
#include "appearance/UIColor+Hex.h"
#include "platform/uikit/FocusRing.h"
#include "platform/uikit/UIColor+Qt.h"
#include "platform/uikit/UITraitCollection.h"

#include <QPainter>
#include <QScopedValueRollback>
#include <QVariantAnimation>

#include <algorithm>
#include <cmath>

namespace exifcard {
namespace {

constexpr QSizeF kTrackSize(51, 31);
constexpr int kLeastTarget = 44;
constexpr double kKnobInset = 2;
constexpr int kMovementInMilliseconds = 200;

QColor mixed(const QColor& off, const QColor& on, double share) {
    const auto component = [share](int from, int to) {
        return static_cast<int>(std::lround(from + (to - from) * share));
    };
    return {
        component(off.red(), on.red()), component(off.green(), on.green()), component(off.blue(), on.blue())};
}

UIColor trackColorWhenOff() {
    return UIColor(colorWithHexString("D2D2D6").resolved(UIUserInterfaceStyle::Light),
        colorWithHexString("48484C").resolved(UIUserInterfaceStyle::Light));
}

} // namespace

UISwitch::UISwitch(QWidget* parent) : QCheckBox(parent), _movement(new QVariantAnimation(this)) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    _movement->setDuration(kMovementInMilliseconds);
    _movement->setEasingCurve(QEasingCurve::InOutQuad);
    connect(_movement, &QVariantAnimation::valueChanged, this, [this](const QVariant& knob) {
        _knob = knob.toDouble();
        update();
    });
    connect(this, &QCheckBox::toggled, this, [this](bool isOn) {
        moveKnob(/*animated=*/_movesGently && isVisible());
        if (!_isBeingSet) {
            emit valueChanged(isOn);
        }
    });
}

void UISwitch::setOn(bool isOn, bool animated) {
    _movesGently = animated;
    const QScopedValueRollback beingSet(_isBeingSet, true);
    setChecked(isOn);
    _movesGently = true;
}

void UISwitch::moveKnob(bool animated) {
    const double end = isChecked() ? 1 : 0;
    _movement->stop();
    if (animated && !UITraitCollection::currentTraitCollection().isMotionReduced) {
        _movement->setStartValue(_knob);
        _movement->setEndValue(end);
        _movement->start();
    } else {
        _knob = end;
        update();
    }
}

QRectF UISwitch::trackRect() const {
    return {QPointF((width() - kTrackSize.width()) / 2, (height() - kTrackSize.height()) / 2), kTrackSize};
}

void UISwitch::paintEvent(QPaintEvent*) {
    const QRectF track = trackRect();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setOpacity(isEnabled() ? 1 : Apperance::disabledAlpha());
    painter.setBrush(mixed(qColor(trackColorWhenOff()), qColor(Apperance::yellowColor()), _knob));
    painter.drawRoundedRect(track, track.height() / 2, track.height() / 2);

    const double diameter = track.height() - 2 * kKnobInset;
    const double way = track.width() - track.height();
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    const double passed = way * (isMirrored ? 1 - _knob : _knob);
    const QRectF knob(track.left() + kKnobInset + passed, track.top() + kKnobInset, diameter, diameter);
    painter.setBrush(QColor(0, 0, 0, 30));
    painter.drawEllipse(knob.translated(0, 1));
    painter.setBrush(Qt::white);
    painter.drawEllipse(knob);
    if (showsFocusRing(*this)) {
        paintFocusRing(painter, track, track.height() / 2 - kKnobInset);
    }
}

bool UISwitch::hitButton(const QPoint& position) const {
    const double across = std::max(0.0, kLeastTarget - kTrackSize.width()) / 2;
    const double down = std::max(0.0, kLeastTarget - kTrackSize.height()) / 2;
    return trackRect().adjusted(-across, -down, across, down).contains(position);
}

} // namespace exifcard

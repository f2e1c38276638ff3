#include "host/PanelHandle.h"

#include "host/HostColors.h"
#include "platform/foundation/LocalizedString.h"
#include "platform/uikit/FocusRing.h"
#include "platform/uikit/Text+Qt.h"
#include "platform/uikit/UIColor+Qt.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace exifcard {
namespace {

constexpr QSize kGrabber(36, 5);
constexpr double kVelocityWindow = 0.1; ///< Seconds.
constexpr double kMillisecondsPerSecond = 1000;

/// A button that tells whether what it opens is expanded.
class AccessibleHandle : public QAccessibleWidget {
public:
    explicit AccessibleHandle(PanelHandle& handle) : QAccessibleWidget(&handle, QAccessible::PushButton) {}

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.expandable = true;
        state.expanded = static_cast<const PanelHandle*>(widget())->isExpanded();
        state.collapsed = !state.expanded;
        return state;
    }
    QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString& actionName) override {
        if (actionName == pressAction()) {
            static_cast<PanelHandle*>(widget())->click();
        }
    }
};

QAccessibleInterface* accessibleHandle(const QString&, QObject* object) {
    auto* const handle = qobject_cast<PanelHandle*>(object);
    return handle == nullptr ? nullptr : new AccessibleHandle(*handle);
}

} // namespace

PanelHandle::PanelHandle(QWidget* parent) : QAbstractButton(parent) {
    setFixedHeight(kHeight);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::SizeVerCursor);
    static const bool isKnown = [] {
        QAccessible::installFactory(accessibleHandle);
        return true;
    }();
    static_cast<void>(isKnown);
    setAccessibleName(qString(localizedString("Photo panel")));
    setExpanded(false);
}

void PanelHandle::setExpanded(bool isExpanded) {
    _isExpanded = isExpanded;
    setAccessibleDescription(qString(localizedString(isExpanded ? N_("Expanded") : N_("Compact"))));
    QAccessible::State changed;
    changed.expanded = true;
    QAccessibleStateChangeEvent event(this, changed);
    QAccessible::updateAccessibility(&event);
}

void PanelHandle::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QRectF grabber(0, 0, kGrabber.width(), kGrabber.height());
    grabber.moveCenter(QRectF(rect()).center());
    painter.setPen(Qt::NoPen);
    painter.setBrush(qColor(HostColors::grabber()));
    painter.drawRoundedRect(grabber, grabber.height() / 2, grabber.height() / 2);
    if (showsFocusRing(*this)) {
        const QRectF ring = grabber.adjusted(-6, -5, 6, 5);
        paintFocusRing(painter, ring, ring.height() / 2);
    }
}

void PanelHandle::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QAbstractButton::keyPressEvent(event);
}

void PanelHandle::record(const QMouseEvent& event) {
    const double now = static_cast<double>(event.timestamp()) / kMillisecondsPerSecond;
    _moments.push_back({event.globalPosition().y(), now});
    while (now - _moments.front().seconds > kVelocityWindow) {
        _moments.pop_front();
    }
}

double PanelHandle::velocity() const {
    const double seconds = _moments.empty() ? 0 : _moments.back().seconds - _moments.front().seconds;
    return seconds <= 0 ? 0 : (_moments.front().y - _moments.back().y) / seconds;
}

void PanelHandle::mousePressEvent(QMouseEvent* event) {
    _isPressed = event->button() == Qt::LeftButton;
    _isDragging = false;
    _pressedAt = event->globalPosition().y();
    _moments.clear();
    record(*event);
}

void PanelHandle::mouseMoveEvent(QMouseEvent* event) {
    if (!_isPressed) {
        return;
    }
    record(*event);
    const double distance = _pressedAt - event->globalPosition().y();
    if (!_isDragging && std::abs(distance) >= QApplication::startDragDistance()) {
        _isDragging = true;
        emit dragBegan();
    }
    if (_isDragging) {
        emit dragged(distance);
    }
}

void PanelHandle::mouseReleaseEvent(QMouseEvent* event) {
    if (!std::exchange(_isPressed, false)) {
        return;
    }
    record(*event);
    if (std::exchange(_isDragging, false)) {
        emit dragEnded(_pressedAt - event->globalPosition().y(), velocity());
    } else {
        emit clicked();
    }
}

} // namespace exifcard

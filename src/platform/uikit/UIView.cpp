#include "platform/uikit/UIView.h"

#include "platform/uikit/LayerPainting.h"

#include <QEvent>
#include <QPainter>

#include <cmath>

namespace exifcard {

UIView::UIView(QWidget* parent) : QWidget(parent) {
}

void UIView::setBackgroundColor(const UIColor& color) {
    if (!(color == _layer.backgroundColor)) {
        _layer.backgroundColor = color;
        update();
    }
}

CALayer& UIView::layer() {
    _layer.bounds = bounds();
    return _layer;
}

const CALayer& UIView::layer() const {
    _layer.bounds = bounds();
    return _layer;
}

CGRect UIView::frame() const {
    if (geometry() == roundedRect(_frame)) {
        return _frame;
    }
    return {{double(x()), double(y())}, {double(width()), double(height())}}; // Placed by a layout.
}

void UIView::setFrame(const CGRect& frame) {
    _frame = frame;
    setGeometry(roundedRect(frame));
}

void UIView::updateShadow() {
    const QRect place = isHidden() ? QRect() : shadowBounds(_layer, geometry()).toAlignedRect();
    QWidget* const parent = parentWidget();
    if (parent && !(place.isEmpty() && _shadowPlace.isEmpty())) {
        parent->update(_shadowPlace.united(place));
    }
    _shadowPlace = place;
    _paintedShadow = {_layer.shadowColor, _layer.shadowOpacity, _layer.shadowRadius, _layer.cornerRadius};
}

void UIView::paintEvent(QPaintEvent*) {
    // The parent paints the shadow, and hears here that the layer was changed.
    const Shadow shadow{_layer.shadowColor, _layer.shadowOpacity, _layer.shadowRadius, _layer.cornerRadius};
    if (!(shadow == _paintedShadow) || _shadowPlace != shadowBounds(_layer, geometry()).toAlignedRect()) {
        updateShadow();
    }
    QPainter painter(this);
    paintLayer(painter, _layer, rect());
    paintShadowsOfChildren(painter, *this);
}

void UIView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    updateShadow();
}

void UIView::moveEvent(QMoveEvent* event) {
    QWidget::moveEvent(event);
    updateShadow();
}

bool UIView::event(QEvent* event) {
    const bool isHandled = QWidget::event(event);
    if (event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent) {
        updateShadow();
    }
    return isHandled;
}

QRect roundedRect(const CGRect& rect) {
    const auto edge = [](double position) { return static_cast<int>(std::floor(position + 0.5)); };
    const int left = edge(rect.origin.x);
    const int top = edge(rect.origin.y);
    return {left, top, edge(rect.origin.x + rect.size.width) - left,
        edge(rect.origin.y + rect.size.height) - top};
}

} // namespace exifcard

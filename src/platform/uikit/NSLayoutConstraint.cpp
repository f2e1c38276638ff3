#include "platform/uikit/NSLayoutConstraint.h"

#include <QEvent>

#include <algorithm>
#include <cmath>

namespace exifcard {
namespace {

/// Belongs to the pinned view and lets it follow its parent.
class EdgePin : public QObject {
public:
    EdgePin(QWidget& view, QWidget& superview) : QObject(&view), _view(view) {
        superview.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Resize && watched == _view.parentWidget()) {
            _view.setGeometry(_view.parentWidget()->rect());
        }
        return false;
    }

private:
    QWidget& _view;
};

} // namespace

void NSLayoutConstraint::setConstant(double constant) {
    _constant = constant;
    apply();
}

void NSLayoutConstraint::setActive(bool isActive) {
    _isActive = isActive;
    apply();
}

void NSLayoutConstraint::apply() {
    if (!_view) {
        return;
    }
    const double bounded = std::clamp(_constant, 0.0, double(QWIDGETSIZE_MAX));
    const int length = std::isnan(_constant) ? 0 : static_cast<int>(std::lround(bounded));
    const int least = _isActive ? length : 0;
    const int most = _isActive ? length : QWIDGETSIZE_MAX;
    if (_attribute == Attribute::Width) {
        _view->setMinimumWidth(least);
        _view->setMaximumWidth(most);
    } else {
        _view->setMinimumHeight(least);
        _view->setMaximumHeight(most);
    }
}

void pinToEdges(QWidget& view, QWidget& superview) {
    new EdgePin(view, superview);
    view.setGeometry(superview.rect());
}

} // namespace exifcard

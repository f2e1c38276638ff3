#include "platform/uikit/UIGestureRecognizer.h"

#include "platform/uikit/GestureDispatcher.h"

#include <algorithm>

namespace exifcard {

UIGestureRecognizer::~UIGestureRecognizer() = default;

void UIGestureRecognizer::setEnabled(bool isEnabled) {
    if (isEnabled == _isEnabled) {
        return;
    }
    _isEnabled = isEnabled;
    if (!isEnabled) {
        touchCancelled();
        _state = State::Failed; // Until the touch that it may have had is over.
    } else {
        _state = State::Possible;
    }
}

CGPoint UIGestureRecognizer::locationInView(const QWidget& view) const {
    const QPointF place = view.mapFromGlobal(QPointF(_latest.position.x, _latest.position.y));
    return {place.x(), place.y()};
}

void UIGestureRecognizer::touchCancelled() {
    if (isRunning()) {
        setState(State::Cancelled);
    }
}

bool UIGestureRecognizer::begin() {
    if (!_isEnabled || !GestureDispatcher::instance().letBegin(*this)) {
        setState(State::Failed);
        return false;
    }
    return true;
}

void UIGestureRecognizer::setState(State state) {
    _state = state;
    if (state == State::Possible || state == State::Failed) {
        return;
    }
    const QPointer<UIGestureRecognizer> self(this);
    const auto actions = _actions; // One may destroy the view.
    for (const Action& action : actions) {
        if (self) {
            action(*this);
        }
    }
}

void addGestureRecognizer(QWidget& view, std::unique_ptr<UIGestureRecognizer> recognizer) {
    GestureDispatcher::instance();
    recognizer->_view = &view;
    recognizer.release()->setParent(&view);
}

} // namespace exifcard

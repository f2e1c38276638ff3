#include "platform/uikit/UIRefreshControl.h"

#include "platform/uikit/UIActivityIndicatorView.h"

#include <algorithm>

namespace exifcard {

UIRefreshControl::UIRefreshControl(QWidget* parent) : UIView(parent) {
    _spinner = new UIActivityIndicatorView(this);
    _spinner->hide();
}

void UIRefreshControl::beginRefreshing() {
    if (_isRefreshing) {
        return;
    }
    _isRefreshing = true;
    _spinner->startAnimating();
    emit began();
}

void UIRefreshControl::endRefreshing() {
    if (!_isRefreshing) {
        return;
    }
    _isRefreshing = false;
    _spinner->stopAnimating();
    emit ended();
}

void UIRefreshControl::setPull(double points) {
    if (_isRefreshing) {
        return;
    }
    if (points > 0) {
        _spinner->setStandingPhase(std::min(1.0, points / kHeight));
    }
    _spinner->setVisible(points > 0);
}

void UIRefreshControl::pullPastTrigger() {
    beginRefreshing();
    emit valueChanged();
}

void UIRefreshControl::resizeEvent(QResizeEvent* event) {
    UIView::resizeEvent(event);
    const QSize size = _spinner->sizeHint();
    _spinner->setGeometry(QRect(QPoint((width() - size.width()) / 2, (height() - size.height()) / 2), size));
}

} // namespace exifcard

#include "platform/uikit/UINavigationController.h"

#include "platform/uikit/NavigationBar.h"
#include "platform/uikit/ScreenTransition.h"
#include "platform/uikit/Text+Qt.h"
#include "platform/uikit/UITraitCollection.h"

#include <QEvent>
#include <QKeyEvent>

#include <algorithm>
#include <utility>

namespace exifcard {
namespace {

void exchangeButton(QPointer<QAbstractButton>& place, std::unique_ptr<QAbstractButton> button) {
    if (place) {
        place->hide();
        place->deleteLater(); // It may be what was clicked.
    }
    place = button.release();
}

} // namespace

UINavigationItem::~UINavigationItem() {
    exchangeButton(_leftBarButton, nullptr);
    exchangeButton(_rightBarButton, nullptr);
}

void UINavigationItem::setLeftBarButton(std::unique_ptr<QAbstractButton> button) {
    exchangeButton(_leftBarButton, std::move(button));
    emit changed();
}

void UINavigationItem::setRightBarButton(std::unique_ptr<QAbstractButton> button) {
    exchangeButton(_rightBarButton, std::move(button));
    emit changed();
}

/// One screen that takes another's place.
struct UINavigationController::Movement {
    std::shared_ptr<UIViewController> from;
    std::shared_ptr<UIViewController> to;
    bool isPush = false;
    std::unique_ptr<ScreenTransition> transition; ///< Null where nothing moves.
};

UINavigationController::UINavigationController(const std::shared_ptr<UIViewController>& rootViewController)
    : _stack{rootViewController} {
}

UINavigationController::~UINavigationController() = default;

std::shared_ptr<UIViewController> UINavigationController::topViewController() const {
    return _stack.back();
}

std::unique_ptr<QWidget> UINavigationController::loadView() {
    auto view = UIViewController::loadView();
    _bar = new NavigationBar(view.get());
    connect(_bar, &NavigationBar::backChosen, this, [this] { popViewControllerAnimated(/*animated=*/true); });
    return view;
}

void UINavigationController::viewDidLoad() {
    UIViewController::viewDidLoad();
    adoptRoot();
    QWidget& top = _stack.back()->view();
    top.setParent(&view());
    top.setVisible(true);
    if (_stack.size() == 1) {
        top.lower();
    }
    _stack.back()->didMoveToParentViewController(shared_from_this());
    updateBar();
    layOut();
}

void UINavigationController::adoptRoot() {
    if (!_stack.front()->parentViewController()) {
        addChildViewController(_stack.front());
    }
}

void UINavigationController::pushViewController(
    const std::shared_ptr<UIViewController>& viewController, bool animated) {
    finishMovement();
    adoptRoot();
    const auto below = topViewController();
    addChildViewController(viewController);
    _stack.push_back(viewController);
    if (isViewLoaded()) {
        move(below, viewController, /*isPush=*/true, animated);
    }
}

std::shared_ptr<UIViewController> UINavigationController::popViewControllerAnimated(bool animated) {
    finishMovement();
    if (_stack.size() < 2) {
        return nullptr;
    }
    return popToViewController(_stack[_stack.size() - 2], animated).front();
}

std::vector<std::shared_ptr<UIViewController>> UINavigationController::popToViewController(
    const std::shared_ptr<UIViewController>& viewController, bool animated) {
    finishMovement();
    const auto found = std::ranges::find(_stack, viewController);
    if (found == _stack.end() || found + 1 == _stack.end()) {
        return {};
    }
    const std::vector<std::shared_ptr<UIViewController>> popped(found + 1, _stack.end());
    _stack.erase(found + 1, _stack.end());
    std::ranges::for_each(
        popped, [](const auto& leaving) { leaving->willMoveToParentViewController(nullptr); });
    for (auto covered = popped.begin(); covered + 1 != popped.end(); ++covered) {
        (*covered)->removeViewFromSuperview();
        (*covered)->removeFromParentViewController();
    }
    if (isViewLoaded()) {
        move(popped.back(), viewController, /*isPush=*/false, animated);
    } else {
        popped.back()->removeFromParentViewController();
    }
    return popped;
}

void UINavigationController::move(const std::shared_ptr<UIViewController>& from,
    const std::shared_ptr<UIViewController>& to,
    bool isPush,
    bool animated) {
    QWidget& arriving = to->view();
    const bool isOnScreen = isViewInWindow();
    const bool isAnimated = animated && isOnScreen;
    if (isOnScreen) {
        from->beginAppearanceTransition(/*isAppearing=*/false, isAnimated);
        to->beginAppearanceTransition(/*isAppearing=*/true, isAnimated);
    }
    if (arriving.parentWidget() != &view()) {
        arriving.setParent(&view());
    }
    arriving.setGeometry(contentPlace());
    arriving.show();
    updateBar();
    _movement = std::make_unique<Movement>(Movement{from, to, isPush, nullptr});
    if (!isAnimated) {
        finishMovement();
        return;
    }
    using Kind = ScreenTransition::Kind;
    const auto slide = isPush ? Kind::Push : Kind::Pop;
    const auto kind = UITraitCollection::currentTraitCollection().isMotionReduced ? Kind::CrossFade : slide;
    _movement->transition =
        std::make_unique<ScreenTransition>(from->view(), arriving, kind, contentPlace(), &view());
    connect(_movement->transition.get(), &ScreenTransition::finished, this, [this] { finishMovement(); });
    from->view().hide();
    _movement->transition->start();
}

void UINavigationController::finishMovement() {
    const auto movement = std::exchange(_movement, nullptr);
    if (!movement) {
        return;
    }
    if (movement->transition) {
        movement->transition->cancel();
        movement->transition.release()->deleteLater(); // It may be what finished.
    }
    movement->from->view().hide();
    if (!movement->isPush) {
        movement->from->view().setParent(nullptr);
    }
    movement->from->endAppearanceTransition();
    movement->to->endAppearanceTransition();
    if (movement->isPush) {
        movement->to->didMoveToParentViewController(shared_from_this());
    } else {
        movement->from->removeFromParentViewController();
    }
}

void UINavigationController::setNavigationBarHidden(bool isHidden) {
    _isBarHidden = isHidden;
    if (isViewLoaded()) {
        layOut();
    }
}

QRect UINavigationController::contentPlace() const {
    const QRect all = _bar->parentWidget()->rect();
    return _isBarHidden ? all : all.adjusted(0, NavigationBar::kHeight, 0, 0);
}

void UINavigationController::layOut() {
    _bar->setVisible(!_isBarHidden);
    _bar->setGeometry(0, 0, _bar->parentWidget()->width(), NavigationBar::kHeight);
    if (_stack.back()->isViewLoaded()) {
        _stack.back()->view().setGeometry(contentPlace());
    }
    if (_movement && _movement->transition && _movement->transition->geometry() != contentPlace()) {
        finishMovement(); // Its pictures have the size of before.
    }
}

void UINavigationController::updateBar() {
    UINavigationItem& item = topViewController()->navigationItem();
    if (_shownItem != &item) {
        if (_shownItem) {
            disconnect(_shownItem, &UINavigationItem::changed, this, nullptr);
        }
        _shownItem = &item;
        connect(&item, &UINavigationItem::changed, this, &UINavigationController::updateBar);
    }
    const bool hasBackButton = _stack.size() > 1 && !item.leftBarButton();
    _bar->setTitle(qString(topViewController()->title()));
    _bar->setButtons(hasBackButton ? &_bar->backButton() : item.leftBarButton(), item.rightBarButton());
}

bool UINavigationController::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize && isViewLoaded() && watched == &view()) {
        layOut();
    }
    if (event->type() == QEvent::KeyPress && isViewLoaded() && watched == &view() &&
        static_cast<const QKeyEvent&>(*event).key() == Qt::Key_Escape &&
        popViewControllerAnimated(/*animated=*/true)) {
        event->accept(); // The lowest screen leaves the key to what lies around.
        return true;
    }
    return UIViewController::eventFilter(watched, event);
}

} // namespace exifcard

#include "platform/uikit/UIViewController.h"

#include "platform/uikit/ExplicitHiding.h"
#include "platform/uikit/TraitChanges.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UITraitCollection.h"
#include "platform/uikit/UIView.h"

#include <QEvent>
#include <QLayout>

#include <algorithm>
#include <utility>

namespace exifcard {

UIViewController::UIViewController() {
    // Screens hear of changes from the screen that they stand in, and those without one for themselves.
    connect(
        &TraitChanges::instance(), &TraitChanges::changed, this, [this](const UITraitCollection& previous) {
            if (_parent.expired()) {
                propagateTraitChange(previous);
            }
        });
    _memoryWarning = NotificationCenter::defaultCenter().addObserver(
        kMemoryWarningNotification, nullptr, [this](const Notification&) {
            if (_parent.expired()) {
                propagateMemoryWarning();
            }
        });
}

UIViewController::~UIViewController() {
    if (_view) {
        // Later, because a control in the view may be what let go of the screen.
        _view->removeEventFilter(this);
        _view->hide();
        _view->setParent(nullptr);
        _view->deleteLater();
    }
}

QWidget& UIViewController::view() {
    if (!_view) {
        _view = loadView().release();
        _view->installEventFilter(this);
        viewDidLoad();
    }
    return *_view;
}

std::unique_ptr<QWidget> UIViewController::loadView() {
    return std::make_unique<UIView>();
}

void UIViewController::setTitle(std::string title) {
    _title = std::move(title);
    if (_navigationItem) {
        emit _navigationItem->changed();
    }
}

UINavigationItem& UIViewController::navigationItem() {
    if (!_navigationItem) {
        _navigationItem = std::make_unique<UINavigationItem>();
    }
    return *_navigationItem;
}

std::shared_ptr<UINavigationController> UIViewController::navigationController() const {
    for (auto around = parentViewController(); around; around = around->parentViewController()) {
        if (auto found = std::dynamic_pointer_cast<UINavigationController>(around)) {
            return found;
        }
    }
    return nullptr;
}

void UIViewController::addChildViewController(const std::shared_ptr<UIViewController>& child) {
    if (child->parentViewController()) {
        child->removeFromParentViewController();
    }
    child->willMoveToParentViewController(shared_from_this());
    _children.push_back(child);
    child->_parent = weak_from_this();
}

void UIViewController::removeFromParentViewController() {
    const auto keptAlive = shared_from_this();
    if (const auto parent = _parent.lock()) {
        std::erase(parent->_children, keptAlive);
    }
    _parent.reset();
    didMoveToParentViewController(nullptr);
}

void UIViewController::willMoveToParentViewController(const std::shared_ptr<UIViewController>&) {
}

void UIViewController::didMoveToParentViewController(const std::shared_ptr<UIViewController>& parent) {
    if (!parent || parent->_appearance == Appearance::Disappeared || !standsVisiblyIn(parent->view())) {
        return;
    }
    if (parent->_appearance == Appearance::Disappearing) {
        return;
    }
    beginAppearanceTransition(/*isAppearing=*/true, /*animated=*/false);
    _view->show();
    if (parent->_appearance == Appearance::Appeared) {
        endAppearanceTransition();
    }
}

void UIViewController::removeViewFromSuperview() {
    if (!_view) {
        return;
    }
    const auto keptAlive = shared_from_this();
    beginAppearanceTransition(/*isAppearing=*/false, /*animated=*/false);
    _view->setParent(nullptr);
    endAppearanceTransition();
}

bool UIViewController::standsVisiblyIn(const QWidget& container) const {
    return _view && !isExplicitlyHidden(*_view) && container.isAncestorOf(_view);
}

template<typename Call>
void UIViewController::forEachChildOnScreen(const Call& call) {
    const auto children = _children; // A callback may add or remove some.
    for (const auto& child : children) {
        if (_view && child->standsVisiblyIn(*_view)) {
            call(*child);
        }
    }
}

void UIViewController::beginAppearanceTransition(bool isAppearing, bool animated) {
    const bool isThereAlready = _appearance == Appearance::Appearing || _appearance == Appearance::Appeared;
    if (isAppearing == isThereAlready || (!isAppearing && _appearance == Appearance::Disappearing)) {
        return;
    }
    view();
    _isAnimated = animated;
    if (isAppearing) {
        _appearance = Appearance::Appearing;
        _needsLayout = true;
        viewWillAppear(animated);
    } else {
        _appearance = Appearance::Disappearing;
        viewWillDisappear(animated);
    }
    forEachChildOnScreen(
        [isAppearing, animated](auto& child) { child.beginAppearanceTransition(isAppearing, animated); });
}

void UIViewController::endAppearanceTransition() {
    if (_appearance == Appearance::Appearing) {
        layOutIfNeeded();
        _appearance = Appearance::Appeared;
        viewDidAppear(_isAnimated);
    } else if (_appearance == Appearance::Disappearing) {
        _appearance = Appearance::Disappeared;
        viewDidDisappear(_isAnimated);
    } else {
        return;
    }
    const auto children = _children; // Also those whose view was just taken out.
    std::ranges::for_each(children, [](const auto& child) { child->endAppearanceTransition(); });
}

void UIViewController::layOutIfNeeded() {
    const bool isOnScreen = _appearance == Appearance::Appearing || _appearance == Appearance::Appeared;
    if (!isOnScreen || !std::exchange(_needsLayout, false)) {
        return;
    }
    updateViewConstraints();
    viewWillLayoutSubviews();
    if (QLayout* const layout = _view->layout()) {
        layout->activate();
    }
    viewDidLayoutSubviews();
}

bool UIViewController::eventFilter(QObject* watched, QEvent* event) {
    if (watched == _view && (event->type() == QEvent::Resize || event->type() == QEvent::Show)) {
        _needsLayout = _needsLayout || event->type() == QEvent::Resize;
        layOutIfNeeded();
    }
    return QObject::eventFilter(watched, event);
}

void UIViewController::viewWillAppear(bool) {
}
void UIViewController::viewDidAppear(bool) {
}
void UIViewController::viewWillDisappear(bool) {
}
void UIViewController::viewDidDisappear(bool) {
}
void UIViewController::traitCollectionDidChange(const UITraitCollection&) {
}

void UIViewController::viewWillTransitionToSize(CGSize size, bool isComplete) {
    const auto children = _children;
    std::ranges::for_each(children,
        [size, isComplete](const auto& child) { child->viewWillTransitionToSize(size, isComplete); });
}

void UIViewController::propagateTraitChange(const UITraitCollection& previous) {
    if (isViewLoaded()) {
        traitCollectionDidChange(previous);
    }
    const auto children = _children;
    std::ranges::for_each(
        children, [&previous](const auto& child) { child->propagateTraitChange(previous); });
}

void UIViewController::propagateMemoryWarning() {
    didReceiveMemoryWarning();
    const auto children = _children;
    std::ranges::for_each(children, [](const auto& child) { child->propagateMemoryWarning(); });
}

} // namespace exifcard

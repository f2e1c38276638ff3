#pragma once

#include "platform/foundation/NotificationCenter.h"
#include "platform/uivalues/CGGeometry.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <memory>
#include <string>
#include <vector>

namespace exifcard {

class UINavigationController;
class UINavigationItem;
struct UITraitCollection;

/// One screen: owns a view, made on first use, and hears when it comes and goes. Screens stand in each other
/// as children. Held by `std::shared_ptr`; main queue only.
class UIViewController : public QObject, public std::enable_shared_from_this<UIViewController> {
    Q_OBJECT

public:
    UIViewController();
    ~UIViewController() override;

    /// Loads the view at the first call: `loadView`, then `viewDidLoad`.
    QWidget& view();
    bool isViewLoaded() const { return !_view.isNull(); }
    /// Whether the view is on screen: after `viewDidAppear` and before `viewWillDisappear`.
    bool isViewInWindow() const { return _appearance == Appearance::Appeared; }

    const std::string& title() const { return _title; }
    virtual void setTitle(std::string title);
    /// What a navigation bar shows for this screen.
    UINavigationItem& navigationItem();

    /// In the order of adding. Copy it before removing while walking.
    const std::vector<std::shared_ptr<UIViewController>>& childViewControllers() const { return _children; }
    std::shared_ptr<UIViewController> parentViewController() const { return _parent.lock(); }
    /// The nearest one around this screen; null without.
    std::shared_ptr<UINavigationController> navigationController() const;

    /// Calls the child's `willMoveToParentViewController`. The container puts the child's view into its own
    /// and then calls `didMoveToParentViewController`; if the container is on screen, so is the child then.
    void addChildViewController(const std::shared_ptr<UIViewController>& child);
    /// The container calls `willMoveToParentViewController(nullptr)` and takes the view out before; this
    /// calls `didMoveToParentViewController(nullptr)`.
    void removeFromParentViewController();
    virtual void willMoveToParentViewController(const std::shared_ptr<UIViewController>& parent);
    virtual void didMoveToParentViewController(const std::shared_ptr<UIViewController>& parent);
    /// Takes the view out of its superview; the appearance callbacks follow.
    void removeViewFromSuperview();

    /// For containers and windows: the view is about to come or go, and has. Calls the callbacks below, of
    /// the children too.
    void beginAppearanceTransition(bool isAppearing, bool animated);
    void endAppearanceTransition();

    // Called by the platform, in this order; overriders call the base.
    virtual void viewDidLoad() {}
    virtual void viewWillAppear(bool animated);
    virtual void updateViewConstraints() {}
    virtual void viewWillLayoutSubviews() {}
    virtual void viewDidLayoutSubviews() {}
    virtual void viewDidAppear(bool animated);
    virtual void viewWillDisappear(bool animated);
    virtual void viewDidDisappear(bool animated);
    /// Before the view takes the size; called again, with the same size, when it has it. Whoever resizes a
    /// window's root calls it; children hear it from the base.
    virtual void viewWillTransitionToSize(CGSize size, bool isComplete);
    virtual void traitCollectionDidChange(const UITraitCollection& previous);
    virtual void didReceiveMemoryWarning() {}

    /// Tells this screen and its children.
    void propagateTraitChange(const UITraitCollection& previous);
    void propagateMemoryWarning();

protected:
    /// Makes the view; a plain `UIView` here. What it answers is owned by the controller.
    virtual std::unique_ptr<QWidget> loadView();
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    enum class Appearance { Disappeared, Appearing, Appeared, Disappearing };

    bool standsVisiblyIn(const QWidget& container) const;
    void layOutIfNeeded();
    template<typename Call>
    void forEachChildOnScreen(const Call& call);

    QPointer<QWidget> _view; ///< Owned, also while it stands in another view.
    std::string _title;
    std::unique_ptr<UINavigationItem> _navigationItem;
    std::vector<std::shared_ptr<UIViewController>> _children;
    std::weak_ptr<UIViewController> _parent;
    Appearance _appearance = Appearance::Disappeared;
    bool _isAnimated = false;
    bool _needsLayout = true;
    NotificationCenter::Observation _memoryWarning;
};

} // namespace exifcard

#pragma once

#include "platform/uikit/UIViewController.h"

#include <QAbstractButton>
#include <QString>

#include <memory>
#include <vector>

namespace exifcard {

class NavigationBar;

/// The buttons that a navigation bar shows for a screen, 44 by 44 points each. A screen that is not the
/// lowest gets a back button where it has no left one.
class UINavigationItem : public QObject {
    Q_OBJECT

public:
    ~UINavigationItem() override;

    QAbstractButton* leftBarButton() const { return _leftBarButton; }
    /// Takes ownership; null removes it.
    void setLeftBarButton(std::unique_ptr<QAbstractButton> button);
    QAbstractButton* rightBarButton() const { return _rightBarButton; }
    void setRightBarButton(std::unique_ptr<QAbstractButton> button);

signals:
    void changed();

private:
    QPointer<QAbstractButton> _leftBarButton;
    QPointer<QAbstractButton> _rightBarButton;
};

/// A stack of screens with a bar above: 44 points, the title of the top screen in the middle.
///
/// Push: the new screen's `viewDidLoad`, the old one's `viewWillDisappear`, the new one's `viewWillAppear`,
/// the movement, `viewDidDisappear` and `viewDidAppear`. Pop: likewise. One asked for during a movement
/// ends that first. Escape, where the top screen does not take it, pops.
class UINavigationController : public UIViewController {
    Q_OBJECT

public:
    explicit UINavigationController(const std::shared_ptr<UIViewController>& rootViewController);
    ~UINavigationController() override;

    const std::vector<std::shared_ptr<UIViewController>>& viewControllers() const { return _stack; }
    std::shared_ptr<UIViewController> topViewController() const;

    void pushViewController(const std::shared_ptr<UIViewController>& viewController, bool animated);
    /// @return The screen that left; null where there is only the lowest.
    std::shared_ptr<UIViewController> popViewControllerAnimated(bool animated);
    /// @return Those that left, from the bottom; none where `viewController` is not in the stack or its top.
    std::vector<std::shared_ptr<UIViewController>> popToViewController(
        const std::shared_ptr<UIViewController>& viewController, bool animated);
    void setNavigationBarHidden(bool isHidden);

    void viewDidLoad() override;

protected:
    std::unique_ptr<QWidget> loadView() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Movement;

    /// The lowest screen becomes a child as soon as this one is held by somebody.
    void adoptRoot();
    void move(const std::shared_ptr<UIViewController>& from,
        const std::shared_ptr<UIViewController>& to,
        bool isPush,
        bool animated);
    void finishMovement();
    void layOut();
    void updateBar();
    QRect contentPlace() const;

    std::vector<std::shared_ptr<UIViewController>> _stack;
    bool _isBarHidden = false;
    QPointer<NavigationBar> _bar;
    QPointer<UINavigationItem> _shownItem;
    std::unique_ptr<Movement> _movement;
};

} // namespace exifcard

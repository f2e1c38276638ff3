#include "platform/uikit/AccessibleView.h"

#include "platform/uikit/ExplicitHiding.h"
#include "platform/uikit/SynthesizedClick.h"
#include "platform/uikit/UICollectionReusableView.h"

#include <QLabel>

#include <algorithm>
#include <optional>

namespace exifcard {
namespace {

std::optional<QAccessible::Role> roleOfTraits(UIAccessibilityTraits traits) {
    struct TraitRole {
        UIAccessibilityTraits trait;
        QAccessible::Role role;
    };
    constexpr TraitRole kRoles[] = {
        {kUIAccessibilityTraitButton, QAccessible::Button},
        {kUIAccessibilityTraitHeader, QAccessible::Heading},
        {kUIAccessibilityTraitImage, QAccessible::Graphic},
        {kUIAccessibilityTraitStaticText, QAccessible::StaticText},
    };
    for (const TraitRole& candidate : kRoles) {
        if ((traits & candidate.trait) != 0) {
            return candidate.role;
        }
    }
    return std::nullopt;
}

} // namespace

AccessibleView::AccessibleView(QWidget& view) : QAccessibleWidget(&view) {
}

QAccessible::Role AccessibleView::role() const {
    const QWidget& view = *widget();
    if (accessibilityViewIsModal(view)) {
        return QAccessible::Dialog;
    }
    if (const auto role = roleOfTraits(accessibilityTraits(view))) {
        return *role;
    }
    if (!isAccessibilityElement(view)) {
        return view.isWindow()                      ? QAccessible::Window
               : accessibilityLabel(view).isEmpty() ? QAccessible::Client
                                                    : QAccessible::Grouping;
    }
    const bool isCell = qobject_cast<const UICollectionViewCell*>(&view) != nullptr;
    return isCell ? QAccessible::ListItem : QAccessible::StaticText;
}

QAccessible::State AccessibleView::state() const {
    QAccessible::State state = QAccessibleWidget::state();
    const UIAccessibilityTraits traits = accessibilityTraits(*widget());
    const auto* const cell = qobject_cast<const UICollectionViewCell*>(widget());
    state.selected = (traits & kUIAccessibilityTraitSelected) != 0 || (cell && cell->selected());
    state.selectable = state.selected || cell;
    state.disabled = state.disabled || (traits & kUIAccessibilityTraitNotEnabled) != 0;
    state.modal = state.modal || accessibilityViewIsModal(*widget());
    state.animated = (traits & kUIAccessibilityTraitUpdatesFrequently) != 0;
    return state;
}

QString AccessibleView::text(QAccessible::Text kind) const {
    const QWidget& view = *widget();
    switch (kind) {
    case QAccessible::Name:
        if (const auto* const label = qobject_cast<const QLabel*>(&view);
            label && view.accessibleName().isEmpty()) {
            return label->text();
        }
        if (view.isWindow() && view.accessibleName().isEmpty()) {
            return view.windowTitle();
        }
        return accessibilityLabel(view);
    case QAccessible::Value:
        return accessibilityValue(view);
    default:
        return QAccessibleWidget::text(kind);
    }
}

std::vector<QWidget*> AccessibleView::visibleChildren() const {
    std::vector<QWidget*> visible;
    if (isAccessibilityElement(*widget())) {
        return visible;
    }
    for (QObject* const child : widget()->children()) {
        auto* const view = qobject_cast<QWidget*>(child);
        if (view && !view->isWindow() && !isExplicitlyHidden(*view)) {
            visible.push_back(view);
        }
    }
    return visible;
}

int AccessibleView::childCount() const {
    return static_cast<int>(visibleChildren().size());
}

QAccessibleInterface* AccessibleView::child(int index) const {
    const auto children = visibleChildren();
    const bool isThere = index >= 0 && index < static_cast<int>(children.size());
    return isThere ? QAccessible::queryAccessibleInterface(children[static_cast<std::size_t>(index)])
                   : nullptr;
}

int AccessibleView::indexOfChild(const QAccessibleInterface* child) const {
    const auto children = visibleChildren();
    const auto found = std::ranges::find(children, child ? child->object() : nullptr);
    return found == children.end() ? -1 : static_cast<int>(found - children.begin());
}

QAccessibleInterface* AccessibleView::childAt(int x, int y) const {
    const QPoint place = widget()->mapFromGlobal(QPoint(x, y));
    const auto children = visibleChildren();
    const auto found = std::find_if(children.rbegin(), children.rend(),
        [place](const QWidget* child) { return child->geometry().contains(place); });
    return found == children.rend() ? nullptr : QAccessible::queryAccessibleInterface(*found);
}

bool AccessibleView::isPressable() const {
    return widget()->isEnabled() && (role() == QAccessible::Button || role() == QAccessible::ListItem);
}

std::vector<UIAccessibilityCustomAction> AccessibleView::customActions() const {
    auto* const cell = qobject_cast<UICollectionViewCell*>(widget());
    return cell ? cell->accessibilityCustomActions() : std::vector<UIAccessibilityCustomAction>();
}

QStringList AccessibleView::actionNames() const {
    QStringList names = QAccessibleWidget::actionNames();
    if (isPressable()) {
        names.prepend(pressAction());
    }
    for (const UIAccessibilityCustomAction& action : customActions()) {
        names.append(action.name);
    }
    return names;
}

void AccessibleView::doAction(const QString& actionName) {
    if (actionName == pressAction() && isPressable()) {
        sendClick(*widget(), widget()->rect().center());
        return;
    }
    const auto actions = customActions();
    const auto chosen = std::ranges::find(actions, actionName, &UIAccessibilityCustomAction::name);
    if (chosen == actions.end()) {
        QAccessibleWidget::doAction(actionName);
    } else {
        chosen->actionHandler();
    }
}

} // namespace exifcard

#include "platform/uikit/AccessibleView.h"

#include "platform/uikit/Accessibility.h"
#include "platform/uikit/ExplicitHiding.h"
#include "platform/uikit/UICollectionReusableView.h"

#include <QApplication>
#include <QLabel>
#include <QMouseEvent>

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

void sendPress(QWidget& view) {
    const QPointF center = view.rect().toRectF().center();
    const QPointF globally = view.mapToGlobal(center);
    QMouseEvent press(
        QEvent::MouseButtonPress, center, globally, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&view, &press);
    QMouseEvent release(
        QEvent::MouseButtonRelease, center, globally, Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&view, &release);
}

} // namespace

AccessibleView::AccessibleView(QWidget& view) : QAccessibleWidget(&view) {
}

QAccessible::Role AccessibleView::role() const {
    const QWidget& view = *widget();
    if (const auto role = roleOfTraits(accessibilityTraits(view))) {
        return *role;
    }
    if (!isAccessibilityElement(view)) {
        return view.isWindow() ? QAccessible::Window : QAccessible::Client;
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
    return widget()->isEnabled() && role() == QAccessible::Button;
}

QStringList AccessibleView::actionNames() const {
    QStringList names = QAccessibleWidget::actionNames();
    if (isPressable()) {
        names.prepend(pressAction());
    }
    return names;
}

void AccessibleView::doAction(const QString& actionName) {
    if (actionName == pressAction() && isPressable()) {
        sendPress(*widget());
    } else {
        QAccessibleWidget::doAction(actionName);
    }
}

} // namespace exifcard

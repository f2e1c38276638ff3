#include "platform/uikit/Accessibility.h"

#include "platform/uikit/AccessibleView.h"
#include "platform/uikit/UIView.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QAccessible>
#include <QLabel>
#include <QLineEdit>
#include <QVariant>

namespace exifcard {
namespace {

constexpr const char* kValueProperty = "accessibilityValue";
constexpr const char* kTraitsProperty = "accessibilityTraits";
constexpr const char* kElementProperty = "isAccessibilityElement";
constexpr const char* kModalProperty = "accessibilityViewIsModal";
/// Names the view of what was announced last in a window, one pixel large, for readers alone.
const QString kAnnouncementName = QStringLiteral("announcement");

void tell(QWidget& view, QAccessible::Event kind) {
    QAccessibleEvent event(&view, kind);
    QAccessible::updateAccessibility(&event);
}

/// @param className  Of the object or of a base of it, from the object's own on: the first answer stands.
QAccessibleInterface* accessibleInterface(const QString& className, QObject* object) {
    auto* const view = qobject_cast<QWidget*>(object);
    if (view && view->objectName() == kAnnouncementName) {
        return new QAccessibleWidget(view, QAccessible::AlertMessage);
    }
    const bool isNothingElse = className == QLatin1String("QWidget");
    if (view && (isNothingElse || qobject_cast<UIView*>(view) || qobject_cast<QLabel*>(view))) {
        return new AccessibleView(*view);
    }
    return nullptr;
}

} // namespace

void setAccessibilityLabel(QWidget& view, const QString& label) {
    view.setAccessibleName(label);
}

QString accessibilityLabel(const QWidget& view) {
    return view.accessibleName();
}

void setAccessibilityValue(QWidget& view, const QString& value) {
    if (value != accessibilityValue(view)) {
        view.setProperty(kValueProperty, value);
        QAccessibleValueChangeEvent event(&view, value);
        QAccessible::updateAccessibility(&event);
    }
}

QString accessibilityValue(const QWidget& view) {
    return view.property(kValueProperty).toString();
}

void setAccessibilityHint(QWidget& view, const QString& hint) {
    view.setAccessibleDescription(hint);
}

QString accessibilityHint(const QWidget& view) {
    return view.accessibleDescription();
}

void setAccessibilityTraits(QWidget& view, UIAccessibilityTraits traits) {
    const UIAccessibilityTraits changed = accessibilityTraits(view) ^ traits;
    view.setProperty(kTraitsProperty, QVariant::fromValue(traits));
    QAccessible::State state;
    state.selected = (changed & kUIAccessibilityTraitSelected) != 0;
    state.disabled = (changed & kUIAccessibilityTraitNotEnabled) != 0;
    if (state.selected || state.disabled) {
        QAccessibleStateChangeEvent event(&view, state);
        QAccessible::updateAccessibility(&event);
    }
}

UIAccessibilityTraits accessibilityTraits(const QWidget& view) {
    return view.property(kTraitsProperty).value<UIAccessibilityTraits>();
}

void setIsAccessibilityElement(QWidget& view, bool isElement) {
    view.setProperty(kElementProperty, isElement);
}

bool isAccessibilityElement(const QWidget& view) {
    const QVariant isElement = view.property(kElementProperty);
    if (isElement.isValid()) {
        return isElement.toBool();
    }
    const bool isControl =
        qobject_cast<const QLabel*>(&view) || qobject_cast<const QAbstractButton*>(&view) ||
        qobject_cast<const QAbstractSlider*>(&view) || qobject_cast<const QLineEdit*>(&view);
    return isControl || !view.accessibleName().isEmpty();
}

void setAccessibilityViewIsModal(QWidget& view, bool isModal) {
    view.setProperty(kModalProperty, isModal);
}

bool accessibilityViewIsModal(const QWidget& view) {
    return view.property(kModalProperty).toBool();
}

void announce(QWidget& view, const QString& text) {
    QWidget& window = *view.window();
    auto* announcement = window.findChild<QWidget*>(kAnnouncementName, Qt::FindDirectChildrenOnly);
    if (!announcement) {
        announcement = new QWidget(&window);
        announcement->setObjectName(kAnnouncementName);
        announcement->setAttribute(Qt::WA_TransparentForMouseEvents);
        announcement->setGeometry(0, 0, 1, 1);
    }
    announcement->setAccessibleName(text);
    announcement->show();
    // Readers speak an alert when it comes into view, also where it was there before.
    tell(*announcement, QAccessible::ObjectShow);
    tell(*announcement, QAccessible::Alert);
}

void installAccessibility() {
    QAccessible::installFactory(accessibleInterface);
}

} // namespace exifcard
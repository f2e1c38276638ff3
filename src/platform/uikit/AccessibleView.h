#pragma once

#include "platform/uikit/Accessibility.h"

#include <QAccessibleWidget>

#include <vector>

namespace exifcard {

/// What readers see of a view or a label: its role and state follow from its traits, an element hides its
/// children, and children that somebody hid are not there. Items of a list and buttons can be pressed.
class AccessibleView : public QAccessibleWidget {
public:
    explicit AccessibleView(QWidget& view);

    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    QString text(QAccessible::Text kind) const override;

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;

    QStringList actionNames() const override;
    void doAction(const QString& actionName) override;

private:
    std::vector<QWidget*> visibleChildren() const;
    bool isPressable() const;
    std::vector<UIAccessibilityCustomAction> customActions() const;
};

} // namespace exifcard

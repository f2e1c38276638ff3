#include "platform/uikit/UICollectionViewAccessibility.h"

#include "platform/uikit/AccessibleView.h"
#include "platform/uikit/ExplicitHiding.h"
#include "platform/uikit/UICollectionView.h"

#include <QAccessibleWidget>

#include <algorithm>
#include <vector>

namespace exifcard {
namespace {

UICollectionView* listOf(const QWidget& cell) {
    QWidget* const viewport = cell.parentWidget();
    return viewport ? qobject_cast<UICollectionView*>(viewport->parentWidget()) : nullptr;
}

/// A list whose children are the cells on screen, in their order, and after them what lies over it, as a text
/// that says why it is empty.
class ListInterface : public QAccessibleWidget {
public:
    explicit ListInterface(UICollectionView* list) : QAccessibleWidget(list, QAccessible::List) {}

    int childCount() const override { return static_cast<int>(elements().size()); }

    QAccessibleInterface* child(int index) const override {
        const auto all = elements();
        const bool isThere = index >= 0 && static_cast<std::size_t>(index) < all.size();
        return isThere ? QAccessible::queryAccessibleInterface(all[static_cast<std::size_t>(index)])
                       : nullptr;
    }

    int indexOfChild(const QAccessibleInterface* child) const override {
        const auto all = elements();
        const auto found = std::ranges::find(all, child->object());
        return found == all.end() ? -1 : static_cast<int>(found - all.begin());
    }

    QAccessibleInterface* childAt(int x, int y) const override {
        const auto all = elements();
        const auto found = std::find_if(all.rbegin(), all.rend(), [x, y](const QWidget* element) {
            return element->rect().contains(element->mapFromGlobal(QPoint(x, y)));
        });
        return found == all.rend() ? nullptr : QAccessible::queryAccessibleInterface(*found);
    }

    QAccessibleInterface* focusChild() const override {
        const auto focused = list().hasFocus() ? list().focusedIndexPath() : std::nullopt;
        UICollectionViewCell* const cell = focused ? list().cellForItemAtIndexPath(*focused) : nullptr;
        return cell ? QAccessible::queryAccessibleInterface(cell) : QAccessibleWidget::focusChild();
    }

private:
    UICollectionView& list() const { return *static_cast<UICollectionView*>(object()); }

    std::vector<QWidget*> elements() const {
        const auto cells = list().visibleCells();
        std::vector<QWidget*> all(cells.begin(), cells.end());
        for (QObject* const child : list().children()) {
            auto* const over = qobject_cast<QWidget*>(child);
            if (over && over != list().viewport() && !isExplicitlyHidden(*over) &&
                isAccessibilityElement(*over)) {
                all.push_back(over);
            }
        }
        return all;
    }
};

/// An item of a list, focused while the list has the focus and moves it.
class ItemInterface : public AccessibleView {
public:
    explicit ItemInterface(UICollectionViewCell& cell) : AccessibleView(cell) {}

    QAccessible::Role role() const override { return QAccessible::ListItem; }

    QAccessibleInterface* parent() const override {
        UICollectionView* const list = listOf(cell());
        return list ? QAccessible::queryAccessibleInterface(list) : AccessibleView::parent();
    }

    QAccessible::State state() const override {
        QAccessible::State state = AccessibleView::state();
        state.focusable = true;
        const UICollectionView* const list = listOf(cell());
        const auto indexPath = list ? list->indexPathForCell(cell()) : std::nullopt;
        state.focused = indexPath && list->hasFocus() && list->focusedIndexPath() == indexPath;
        return state;
    }

private:
    UICollectionViewCell& cell() const { return *static_cast<UICollectionViewCell*>(object()); }
};

QAccessibleInterface* interfaceOf(const QString&, QObject* object) {
    if (auto* const list = qobject_cast<UICollectionView*>(object)) {
        return new ListInterface(list);
    }
    if (auto* const cell = qobject_cast<UICollectionViewCell*>(object)) {
        return new ItemInterface(*cell);
    }
    return nullptr;
}

} // namespace

void installCollectionViewAccessibility() {
    QAccessible::installFactory(&interfaceOf);
}

} // namespace exifcard

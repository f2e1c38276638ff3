#pragma once

#include "platform/uikit/Accessibility.h"
#include "platform/uikit/UIView.h"

#include <string>
#include <vector>

namespace exifcard {

/// A view that a collection view shows for one place after another.
class UICollectionReusableView : public UIView {
    Q_OBJECT

public:
    explicit UICollectionReusableView(QWidget* parent = nullptr) : UIView(parent) {}

    const std::string& reuseIdentifier() const { return _reuseIdentifier; }
    /// Before a used view is handed out again; overriders call the base.
    virtual void prepareForReuse() {}

private:
    friend class CollectionCellPool;

    std::string _reuseIdentifier;
};

/// An item of a collection view.
class UICollectionViewCell : public UICollectionReusableView {
    Q_OBJECT

public:
    explicit UICollectionViewCell(QWidget* parent = nullptr) : UICollectionReusableView(parent) {}

    /// Set by the collection view; `prepareForReuse` leaves it.
    bool selected() const { return _selected; }
    virtual void setSelected(bool selected) { _selected = selected; }
    /// Pressed.
    bool highlighted() const { return _highlighted; }
    virtual void setHighlighted(bool highlighted) { _highlighted = highlighted; }
    /// For screen readers, which do not see the buttons in an item.
    virtual std::vector<UIAccessibilityCustomAction> accessibilityCustomActions() { return {}; }

private:
    bool _selected = false;
    bool _highlighted = false;
};

} // namespace exifcard

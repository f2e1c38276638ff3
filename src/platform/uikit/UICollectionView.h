#pragma once

#include "platform/uikit/IndexPath.h"
#include "platform/uikit/UICollectionReusableView.h"
#include "platform/uikit/UICollectionViewFlowLayout.h"

#include <QAbstractScrollArea>

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace exifcard {

class UIColor;
class UIRefreshControl;

enum class UICollectionViewScrollPosition { None = 0, Top = 1, CenteredVertically = 2, Bottom = 4 };

/// A scrolling list of cells, of which it makes only as many as are seen, and some ahead.
///
/// Per item: `cellForItemAtIndexPath` of the data source, the layout, `willDisplayCell`, shown, and at the
/// end `didEndDisplayingCell`. A tap, Enter or Space on an item selects it. Scrolls by touch, wheel and
/// keys; arrows, Home, End and Page keys move the focused item, which has a ring. Main queue only.
class UICollectionView : public QAbstractScrollArea {
    Q_OBJECT

public:
    using CellFactory = std::function<std::unique_ptr<UICollectionViewCell>()>;
    using ReusableViewFactory = std::function<std::unique_ptr<UICollectionReusableView>()>;

    explicit UICollectionView(QWidget* parent = nullptr);
    ~UICollectionView() override;

    void setDataSource(std::weak_ptr<UICollectionViewDataSource> dataSource);
    std::shared_ptr<UICollectionViewDataSource> dataSource() const;
    void setPrefetchDataSource(std::weak_ptr<UICollectionViewDataSourcePrefetching> dataSource);
    void setDelegate(std::weak_ptr<UICollectionViewDelegateFlowLayout> delegate);
    std::shared_ptr<UICollectionViewDelegateFlowLayout> delegate() const;
    UICollectionViewFlowLayout& collectionViewLayout();
    const UICollectionViewFlowLayout& collectionViewLayout() const;

    /// How a cell of that identifier is made: by its class, or from an interface file.
    void registerClass(std::string_view identifier, CellFactory factory);
    void registerSupplementaryClass(
        std::string_view kind, std::string_view identifier, ReusableViewFactory factory);
    /// A used cell after its `prepareForReuse`, or a new one. Only within `cellForItemAtIndexPath`.
    /// @throws PlatformException "NSInternalInconsistencyException" for an identifier that is not registered.
    UICollectionViewCell& dequeueReusableCellWithReuseIdentifier(
        std::string_view identifier, IndexPath indexPath);
    UICollectionReusableView& dequeueReusableSupplementaryViewOfKind(
        std::string_view kind, std::string_view identifier, IndexPath indexPath);

    /// Asks the data source anew in the next layout pass and drops the selection.
    void reloadData();
    /// A layout pass in the next turn of the main queue.
    void setNeedsLayout();
    /// The layout pass that is due, now rather than in the next turn of the main queue.
    void layoutIfNeeded();

    // As of the last layout pass.
    std::size_t numberOfSections() const;
    std::size_t numberOfItemsInSection(std::size_t section) const;
    /// Null for items that are not visible.
    UICollectionViewCell* cellForItemAtIndexPath(IndexPath indexPath) const;
    std::optional<IndexPath> indexPathForCell(const UICollectionViewCell& cell) const;
    /// @param point  In content coordinates: a point of the widget plus the origin of `bounds`.
    std::optional<IndexPath> indexPathForItemAtPoint(CGPoint point) const;
    std::vector<UICollectionViewCell*> visibleCells() const;
    std::vector<IndexPath> indexPathsForVisibleItems() const; ///< Ascending.

    void setAllowsMultipleSelection(bool isAllowed);
    bool allowsMultipleSelection() const;
    std::vector<IndexPath> indexPathsForSelectedItems() const;
    /// Both without calling the delegate.
    void selectItemAtIndexPath(
        IndexPath indexPath, bool animated, UICollectionViewScrollPosition scrollPosition);
    void deselectItemAtIndexPath(IndexPath indexPath, bool animated);
    /// The item that the keys move; nothing before they are used.
    std::optional<IndexPath> focusedIndexPath() const;

    /// The visible part in content coordinates: its origin is the content offset.
    CGRect bounds() const;
    CGSize contentSize() const;
    CGPoint contentOffset() const;
    void setContentOffset(CGPoint offset, bool animated);
    void scrollToItemAtIndexPath(
        IndexPath indexPath, UICollectionViewScrollPosition scrollPosition, bool animated);
    UIEdgeInsets contentInset() const;
    void setContentInset(const UIEdgeInsets& insets);
    UIEdgeInsets scrollIndicatorInsets() const;
    void setScrollIndicatorInsets(const UIEdgeInsets& insets);
    void setScrollEnabled(bool isEnabled);
    bool isScrollEnabled() const;
    /// Off, no touch, wheel or key reaches list and cells; gestures on the list go on.
    void setUserInteractionEnabled(bool isEnabled);
    bool isUserInteractionEnabled() const;
    void setBackgroundColor(const UIColor& color);

    /// Owned by the list from then on.
    void setRefreshControl(std::unique_ptr<UIRefreshControl> refreshControl);
    UIRefreshControl* refreshControl() const;

protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool focusNextPrevChild(bool isNext) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    class Implementation;
    std::unique_ptr<Implementation> _implementation;
};

} // namespace exifcard

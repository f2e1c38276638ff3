#pragma once

#include "platform/uikit/CollectionCellPool.h"
#include "platform/uikit/CollectionOverlays.h"
#include "platform/uikit/CollectionPrefetcher.h"
#include "platform/uikit/HeldPress.h"
#include "platform/uikit/ItemNavigation.h"
#include "platform/uikit/UICollectionView.h"
#include "platform/uikit/UIRefreshControl.h"

#include <QAbstractButton>
#include <QBasicTimer>
#include <QPointer>

#include <map>
#include <set>

class QScrollEvent;
class QScroller;
class QScrollPrepareEvent;

namespace exifcard {

/// What a collection view knows of itself; its functions stand in the files of their subjects.
class UICollectionView::Implementation {
public:
    struct LiveCell {
        UICollectionViewCell* cell = nullptr;
        CGRect frame; ///< In content coordinates.
        bool isDisplayed = false;
    };
    struct LiveHeader {
        UICollectionReusableView* header = nullptr;
        CGRect frame;
    };

    explicit Implementation(UICollectionView& collectionView);

    // UICollectionView+Layout.cpp: counts, the layout pass.
    void layoutPass();
    void fitViewport();
    bool areItemsOutdated() const;
    void readCounts();
    std::vector<std::size_t> countsOfDataSource() const;
    bool isStillThere(IndexPath indexPath) const;
    bool contains(IndexPath indexPath) const;

    // UICollectionView+Cells.cpp: which items have cells.
    void updateElements();
    void dropElements();
    void placeElements();
    void endCellsOutside(const CGRect& visible);
    void endDisplaying(IndexPath indexPath, LiveCell& live);
    void recycle(UICollectionViewCell& cell);
    LiveCell* liveCell(const UICollectionViewLayoutAttributes& attributes);
    void display(const UICollectionViewLayoutAttributes& attributes);
    void showHeader(const UICollectionViewLayoutAttributes& attributes);
    void place(UICollectionReusableView& element, const CGRect& frame) const;
    CGRect rectAhead(double heights) const;
    CGRect keptRect() const;
    void prepareAhead();

    // UICollectionView+Scrolling.cpp: the offset, by code and by wheel.
    int pixelOffset() const;
    double restingTop() const;
    double minimumOffset() const;
    double maximumOffset() const;
    bool moveTo(double y);
    void keepOffsetInContent();
    void animateTo(double y);
    void ensureVisible(const CGRect& frame, UICollectionViewScrollPosition position, bool isAnimated);
    void placeOverlays();
    bool wheel(QWheelEvent& event);

    // UICollectionView+Refresh.cpp: pulling down.
    void wheelPull(double distance);
    void pulledByUser();
    void releasePull();
    void refreshingChanged();

    // UICollectionView+Touch.cpp: touch scrolling and taps.
    void prepareTouchScroll(QScrollPrepareEvent& event);
    void touchScroll(const QScrollEvent& event);
    QScroller* scroller() const;
    bool isTouchScrolling() const;
    void updateOvershoot() const;
    bool mouse(QEvent& event);
    bool touch(QEvent& event);
    QAbstractButton* buttonAt(QPoint position) const;
    std::optional<IndexPath> itemAt(QPoint position) const;
    void press(QPoint position);
    void holdPress(HeldPress heldPress);
    void movePress(QPoint position);
    void release(QPoint position);
    void cancelPress();

    // UICollectionView+Selection.cpp.
    void tap(IndexPath indexPath);
    void setSelected(IndexPath indexPath, bool isSelected);
    void deselectAll();

    // UICollectionView+Keyboard.cpp.
    bool key(const QKeyEvent& event);
    std::optional<IndexPath> firstVisibleItem() const;
    ItemNavigation navigation() const;
    void focus(IndexPath indexPath);
    void placeFocusRing();

    UICollectionView& view;
    UICollectionViewFlowLayout layout;
    CollectionCellPool pool;
    CollectionPrefetcher prefetcher;
    std::weak_ptr<UICollectionViewDataSource> dataSource;
    std::weak_ptr<UICollectionViewDelegateFlowLayout> delegate;

    std::vector<std::size_t> itemCounts; ///< A section each, as of the last pass.
    std::map<IndexPath, LiveCell> cells; ///< Displayed, or made ahead.
    std::map<std::size_t, LiveHeader> headers;
    bool isReloadWanted = false;
    bool isPassDue = false;
    bool isPassPosted = false, isInPass = false;
    QBasicTimer aheadTimer; ///< Turns of the main queue that have time to prepare what comes up.

    double offset = 0; ///< The content's top edge is that far above the viewport's.
    bool isScrollingDown = true;
    UIEdgeInsets contentInset, indicatorInset;
    bool isScrollEnabled = true;
    bool isInteractionEnabled = true;
    double touchOrigin = 0; ///< The smallest offset when the finger came down.
    QVariantAnimation scrollAnimation;
    ScrollIndicator* indicator = nullptr;

    QPointer<UIRefreshControl> refreshControl;
    bool isPullArmed = true; ///< A pull sends once.
    bool isWheelPull = false;
    double lastWheelTime = -1; ///< In milliseconds, of the wheel's own clock.
    QBasicTimer wheelPullTimer;

    bool allowsMultipleSelection = false;
    std::set<IndexPath> selection;
    std::optional<IndexPath> pressed;
    HeldPress held;
    QPointer<QAbstractButton> touchedButton;

    std::optional<IndexPath> focused;
    bool isKeyboardInUse = false;
    ItemFocusRing* focusRing = nullptr;
};

} // namespace exifcard

#pragma once

#include "cards/CardOwner.h"
#include "library/ExifManager.h"
#include "platform/photos/PHChange.h"
#include "platform/uikit/UICollectionViewDelegates.h"
#include "platform/uikit/UIGestureRecognizer.h"
#include "platform/uikit/UIViewController.h"
#include "screens/ExifDataListState.h"
#include "screens/ListPresentation.h"

#include <QPointer>

#include <memory>
#include <optional>
#include <vector>

class QKeyEvent;

namespace exifcard {

class BlockOperation;
class EmptyStateView;
class ExifDataListDataSource;
class LibraryFollower;

/// The base of every photo list: cards or tiles fed by a data source of its own, with selection by taps and
/// by a sideways pan, thumbnails made ahead, and the library's changes. Subclasses load the photos. Main
/// queue.
class ExifDataListViewController : public UIViewController,
                                   public UICollectionViewDelegateFlowLayout,
                                   public ExifDataListState,
                                   public ExifDataListHooks,
                                   public CardOwner,
                                   public UIGestureRecognizerDelegate {
    Q_OBJECT

public:
    using Layout = UICollectionViewFlowLayout;
    using RectHandler = std::function<void(const CGRect& rect)>;

    explicit ExifDataListViewController(
        std::shared_ptr<ListPresentation> presentation = std::make_shared<ListPresentation>());
    ~ExifDataListViewController() override;

    const std::shared_ptr<ListPresentation> presentation;
    const std::shared_ptr<ExifDataListDataSource> dataSource;

    void viewDidLoad() override;
    void viewWillAppear(bool animated) override;
    void viewDidAppear(bool animated) override;
    void viewDidDisappear(bool animated) override;
    void viewWillTransitionToSize(CGSize size, bool isComplete) override;
    void traitCollectionDidChange(const UITraitCollection& previous) override;

    /// Shows that the list is loading; subclasses then load it.
    virtual void refresh();
    void endRefreshing(); ///< For the end of that.
    /// Shows why there is nothing to see, or hides that again.
    void updateEmptyState();
    /// Called by the data source when a page is in the list.
    void dataSourceDidLoadPage();
    /// Lets the selection follow records that took the place of others.
    void followSelection();
    /// Takes the change into the list, once no page is being read.
    void photoLibraryDidChange(const PHChange& change);

    CGSize sizeOfExifCardItemForDevice() const; ///< In points, as all sizes here.
    CGSize sizeOfiPhoneiPadLoadingMoreCell() const;
    CGSize sizeForItemAtIndexPath(UICollectionView&, const Layout&, IndexPath indexPath) override;
    UIEdgeInsets insetForSectionAtIndex(UICollectionView&, const Layout&, std::size_t) override;
    double minimumLineSpacingForSectionAtIndex(UICollectionView&, const Layout&, std::size_t) override;
    double minimumInteritemSpacingForSectionAtIndex(UICollectionView&, const Layout&, std::size_t) override;
    CGSize referenceSizeForHeaderInSection(UICollectionView&, const Layout&, std::size_t section) override;
    void willDisplayCell(UICollectionView&, UICollectionViewCell& cell, IndexPath indexPath) override;
    void didSelectItemAtIndexPath(UICollectionView& view, IndexPath indexPath) override;
    void didDeselectItemAtIndexPath(UICollectionView& view, IndexPath indexPath) override;
    void scrollViewDidScroll(UICollectionView&) override { updateCachedAssets(); }

    void didTapOnSelectAllButton();
    void didTapOnCancelMultipleSelectionButton();
    void cancelSelectionMode();
    void cancelSelectionsAndRefreshUI();
    void didUpdateSelectedItems();
    void panGestureCallback(UIGestureRecognizer& recognizer);
    /// Every item from the one to the other, whichever comes first.
    static std::vector<IndexPath> indexPaths(IndexPath startIndexPath, IndexPath andEndIndexPath);
    bool gestureRecognizerShouldBegin(UIGestureRecognizer& recognizer) override;
    bool shouldReceiveTouch(UIGestureRecognizer&) override { return isSelecting(); }
    bool shouldRecognizeSimultaneouslyWithGestureRecognizer(
        UIGestureRecognizer&, UIGestureRecognizer&) override;

    void updateNavigationBarUI();
    /// The detail screen of the photo there; null for no photo, or no such screen.
    std::shared_ptr<UIViewController> viewControllerForLocation(CGPoint location);
    void commitViewController(const std::shared_ptr<UIViewController>& viewController);

    void updateCachedAssets();
    static void computeDifferenceBetweenRect(const CGRect& oldRect,
        const CGRect& andRect,
        const RectHandler& removedHandler,
        const RectHandler& addedHandler);
    std::vector<PHAssetPtr> assetsAtIndexPaths(const std::vector<IndexPath>& indexPaths) const;
    void requestToDownloadiCloudAssetAtCell(ExifDataCollectionListViewCell& cell) override;

    void didTapOnFrontSideImageView(IndexPath) override {}
    void didTapOnBackSideImageView(IndexPath) override {}
    void didTapOnShareAsEXIFCard(IndexPath) override {}

protected:
    std::unique_ptr<QWidget> loadView() override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool isSelecting() const;
    std::weak_ptr<ExifDataListViewController> weakSelf();

private:
    std::optional<IndexPath> indexPathUnderFinger(const UIGestureRecognizer& recognizer) const;
    void beginRangeAt(std::optional<IndexPath> start);
    void panMovedTo(IndexPath current);
    void setSelected(IndexPath indexPath, bool isSelected);
    void registerCells();
    void showRecord(ExifDataCollectionListViewCell& card, IndexPath indexPath);
    void downloadEnded(const Record& record, const Record& downloaded);
    void offerDownloadAgain(const Record& record);
    std::shared_ptr<BlockOperation> downloadOperation(const Record& record);
    void takeDownloaded(const Record& record, const Record& downloaded);
    bool takesKey(const QKeyEvent& event) const;
    void press(const QKeyEvent& event);

    std::shared_ptr<LibraryFollower> _libraryFollower;
    QPointer<EmptyStateView> _emptyState;
};

} // namespace exifcard

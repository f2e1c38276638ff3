#pragma once

#include "library/ExifManager.h"
#include "platform/uikit/IndexPath.h"
#include "platform/uikit/UIGestureRecognizer.h"
#include "platform/uivalues/CGGeometry.h"

#include <QPointer>
#include <QWidget>

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

class QAbstractButton;

namespace exifcard {

class UICollectionView;
class UIPanGestureRecognizer;
class UIRefreshControl;
class UIViewController;

/// What a list screen keeps, beside its photos. Main queue.
struct ExifDataListState {
    using Record = ExifManager::Record;
    using Records = ExifManager::Records;

    QPointer<UICollectionView> collectionView; ///< Made with the view.
    QPointer<UIRefreshControl> refreshControl;
    std::set<Record> selectedItems;            ///< Of the selection mode.
    std::optional<IndexPath> currentIndexPath; ///< Where to scroll when the screen is shown again.
    bool shouldScrollOnNextViewAppear = false; ///< Whether to.
    std::weak_ptr<UIViewController> exifPhotoDetailViewController;
    QPointer<QAbstractButton> filterCustomButton, leftBarButton;

    QPointer<UIPanGestureRecognizer> panGesture;    ///< Selects a range.
    QPointer<UIGestureRecognizer> longPressGesture; ///< Intended: none is made.
    bool isSwipeSelecting = false;
    bool isSelectingInPanGestureMode = false; ///< The pan selects; otherwise it deselects.
    std::optional<IndexPath> panGestureStartingSelectedIndexPath;
    std::optional<IndexPath> previouslySelectedIndexPath;
    CGRect previousPreheatRect; ///< Where thumbnails are made ahead, in content coordinates.
    CGSize thumbnailSize;       ///< Of those, in pixels.

    // Intended: for screens of the containing application; a list does not look at them.
    std::vector<std::string> imageFilePathsArray;
    Records exifDataCameraRollItemsArray;
    Records exifDataPhotoStreamItemsArray;
    QPointer<QWidget> mapContainerView;
    bool haveSetupMapView = false;
};

/// What a list screen is told and does nothing about, for screens that do.
class ExifDataListHooks {
public:
    ExifDataListHooks() = default;
    virtual ~ExifDataListHooks() = default;
    ExifDataListHooks(const ExifDataListHooks&) = delete;
    ExifDataListHooks& operator=(const ExifDataListHooks&) = delete;

    virtual void updateMapViewVisiblity() {}
    virtual void updateBottomBarUI() {}
    virtual void updateNavigationTitleUI() {}
    virtual void didTapOnShowOrHideFilterView() {}
    virtual void continueButtonTapped() {}
    virtual void markItemsRandomlySelected() {}
    virtual void leftMenuButtonTapped(QObject* /*sender*/) {}
    virtual void exitToExifListScreen(QObject* /*segue*/, QObject* /*sender*/) {}
};

} // namespace exifcard

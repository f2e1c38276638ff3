#include "screens/ExifDataListViewController.h"

#include "appearance/Apperance.h"
#include "cards/ExifGridCollectionViewCell.h"
#include "cards/ExifGridWithDetailsCollectionViewCell.h"
#include "cards/LoadingMoreCollectionViewCell.h"
#include "categories/ImageManager.h"
#include "metadata/ExifInformation.h"
#include "platform/photos/PHPhotoLibrary.h"
#include "platform/uikit/GestureRecognizers.h"
#include "platform/uikit/UICollectionView.h"
#include "platform/uikit/UIRefreshControl.h"
#include "platform/uikit/UITraitCollection.h"
#include "screens/EmptyStateView.h"
#include "screens/ExifDataListDataSource.h"
#include "screens/LibraryFollower.h"
#include "screens/ListViewTypes.h"
#include "settings/PersistanceManager.h"

#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace exifcard {

ExifDataListViewController::ExifDataListViewController(std::shared_ptr<ListPresentation> listPresentation)
    : presentation(std::move(listPresentation))
    , dataSource(ExifDataListDataSource::init(presentation)) {
    if (isReadable(PHPhotoLibrary::authorizationStatus())) {
        ImageManager::sharedInstance().imageCachingManager().stopCachingImagesForAllAssets();
    }
}

ExifDataListViewController::~ExifDataListViewController() {
    if (panGesture) {
        panGesture->setEnabled(false); // It goes with the view, which is later.
    }
    if (_libraryFollower) {
        _libraryFollower->stop();
    }
}

std::weak_ptr<ExifDataListViewController> ExifDataListViewController::weakSelf() {
    return std::static_pointer_cast<ExifDataListViewController>(shared_from_this());
}

std::unique_ptr<QWidget> ExifDataListViewController::loadView() {
    auto screen = std::make_unique<UIView>();
    auto* const layout = new QVBoxLayout(screen.get());
    layout->setContentsMargins(0, 0, 0, 0);
    collectionView = new UICollectionView(screen.get());
    layout->addWidget(collectionView);
    return screen;
}

void ExifDataListViewController::viewDidLoad() {
    UIViewController::viewDidLoad();
    registerCells();
    dataSource->collectionView = collectionView;
    dataSource->weakParentViewController = weakSelf();
    collectionView->setDataSource(dataSource);
    collectionView->setPrefetchDataSource(dataSource);
    collectionView->setDelegate(std::static_pointer_cast<ExifDataListViewController>(shared_from_this()));
    // There is no tab bar around a list here, so that its bottom stays where it is.
    auto control = std::make_unique<UIRefreshControl>();
    refreshControl = control.get();
    connect(control.get(), &UIRefreshControl::valueChanged, this, [this] { refresh(); });
    collectionView->setRefreshControl(std::move(control));
    _libraryFollower = std::make_shared<LibraryFollower>(weakSelf());
    _libraryFollower->start();
    refresh();
    collectionView->setAllowsMultipleSelection(isSelecting());
    collectionView->setBackgroundColor(Apperance::appearanceBackgroundColor());
    auto pan = std::make_unique<UIPanGestureRecognizer>();
    panGesture = pan.get();
    pan->addTarget([weak = weakSelf()](UIGestureRecognizer& recognizer) {
        if (const auto self = weak.lock()) {
            self->panGestureCallback(recognizer);
        }
    });
    pan->setDelaysTouchesBegan(true);
    pan->setDelegate(weakSelf());
    addGestureRecognizer(*collectionView, std::move(pan));
    collectionView->installEventFilter(this);
}

void ExifDataListViewController::registerCells() {
    // A card shows as its picture alone: there is none with two sides yet.
    collectionView->registerClass(kCardID, [] { return std::make_unique<ExifGridCollectionViewCell>(); });
    collectionView->registerClass(kTileID, [] { return std::make_unique<ExifGridCollectionViewCell>(); });
    collectionView->registerClass(
        kTileWithDetailsID, [] { return std::make_unique<ExifGridWithDetailsCollectionViewCell>(); });
    collectionView->registerClass(
        kLoadingMoreID, [] { return std::make_unique<LoadingMoreCollectionViewCell>(); });
    for (const auto kind : {kUICollectionElementKindSectionHeader, kUICollectionElementKindSectionFooter}) {
        collectionView->registerSupplementaryClass(
            kind, kReusableViewID, [] { return std::make_unique<UICollectionReusableView>(); });
    }
}

void ExifDataListViewController::viewWillAppear(bool animated) {
    UIViewController::viewWillAppear(animated);
    dataSource->collectionView = collectionView;
    collectionView->setDataSource(dataSource);
    didUpdateSelectedItems();
    updateNavigationBarUI();
    if (UITraitCollection::currentTraitCollection().userInterfaceIdiom == UIUserInterfaceIdiom::Pad) {
        collectionView->collectionViewLayout().itemSize = sizeOfExifCardItemForDevice();
        collectionView->collectionViewLayout().invalidateLayout();
    }
    if (!shouldScrollOnNextViewAppear || !currentIndexPath ||
        currentIndexPath->item >= dataSource->exifDataItemsArray.size()) {
        return;
    }
    const auto visible = collectionView->indexPathsForVisibleItems();
    if (std::ranges::find(visible, *currentIndexPath) == visible.end()) {
        collectionView->scrollToItemAtIndexPath(
            *currentIndexPath, UICollectionViewScrollPosition::CenteredVertically, /*animated=*/false);
    }
    shouldScrollOnNextViewAppear = false;
}

void ExifDataListViewController::viewDidAppear(bool animated) {
    UIViewController::viewDidAppear(animated);
    dataSource->checkAndGoToExifDetailsScreenForPHAssetID();
    updateCachedAssets();
    if (_libraryFollower) {
        _libraryFollower->resume();
    }
}

void ExifDataListViewController::viewDidDisappear(bool animated) {
    UIViewController::viewDidDisappear(animated);
    if (_libraryFollower) {
        _libraryFollower->pause();
    }
}

void ExifDataListViewController::viewWillTransitionToSize(CGSize size, bool isComplete) {
    UIViewController::viewWillTransitionToSize(size, isComplete);
    if (collectionView) {
        collectionView->collectionViewLayout().itemSize = sizeOfExifCardItemForDevice();
        collectionView->collectionViewLayout().invalidateLayout();
    }
}

void ExifDataListViewController::traitCollectionDidChange(const UITraitCollection& previous) {
    UIViewController::traitCollectionDidChange(previous);
    if (isViewLoaded()) {
        updateNavigationBarUI(); // Its pictures are drawn in the colour of the appearance.
    }
}

void ExifDataListViewController::refresh() {
    refreshControl->beginRefreshing();
    if (collectionView->contentOffset().y == 0) {
        collectionView->setContentOffset({0, -UIRefreshControl::kHeight}, /*animated=*/true);
    }
}

void ExifDataListViewController::endRefreshing() {
    if (!refreshControl) {
        return;
    }
    refreshControl->endRefreshing();
    if (collectionView->contentOffset().y <= 0) {
        // What was loaded in no time ends before the list has come to show the control.
        collectionView->setContentOffset({0, 0}, /*animated=*/true);
    }
}

void ExifDataListViewController::photoLibraryDidChange(const PHChange& change) {
    if (_libraryFollower) {
        _libraryFollower->libraryDidChange(change);
    }
}

void ExifDataListViewController::dataSourceDidLoadPage() {
    followSelection();
    if (_libraryFollower) {
        _libraryFollower->takeWaitingChange();
    }
}

void ExifDataListViewController::updateEmptyState() {
    if (!collectionView) {
        return;
    }
    const auto reason = _libraryFollower ? _libraryFollower->reasonForEmptyList() : std::nullopt;
    if (!reason) {
        delete _emptyState;
        return;
    }
    if (!_emptyState) {
        _emptyState = new EmptyStateView(*collectionView);
        connect(_emptyState, &EmptyStateView::allPhotosWanted, this, [this] {
            auto& settings = PersistanceManager::sharedInstance();
            settings.setLocationFilter(0);
            settings.setShouldHidePhotosWithoutExifDetails(false);
            refresh(); // The library was asked for no more than what the filter let through.
        });
    }
    _emptyState->setReason(*reason);
}

} // namespace exifcard

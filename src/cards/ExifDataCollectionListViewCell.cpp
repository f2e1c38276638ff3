#include "cards/ExifDataCollectionListViewCell.h"

#include "cards/CardState.h"
#include "cards/PressView.h"
#include "categories/ImageManager.h"
#include "hud/MBProgressHUD.h"
#include "metadata/ExifInformation.h"
#include "platform/photos/PHAsset.h"
#include "platform/photos/PHAssetChangeRequest.h"
#include "platform/photos/PHPhotoLibrary.h"
#include "platform/uikit/UIImageView.h"
#include "platform/uikit/UITraitCollection.h"
#include "platform/uivalues/UIScreen.h"

#include <QAbstractButton>
#include <QEvent>

#include <cmath>
#include <utility>

namespace exifcard {

ExifDataCollectionListViewCell::ExifDataCollectionListViewCell()
    : _implementation(std::make_unique<Implementation>()) {
}

ExifDataCollectionListViewCell::~ExifDataCollectionListViewCell() {
    cancelOperations();
}

IndexPath ExifDataCollectionListViewCell::indexPath() const {
    return _implementation->indexPath;
}

void ExifDataCollectionListViewCell::setIndexPath(IndexPath indexPath) {
    _implementation->indexPath = indexPath;
}

void ExifDataCollectionListViewCell::setListViewController(std::weak_ptr<CardOwner> listViewController) {
    _implementation->listViewController = std::move(listViewController);
}

const std::shared_ptr<ExifInformation>& ExifDataCollectionListViewCell::exifInfo() const {
    return _implementation->exifInfo;
}

bool ExifDataCollectionListViewCell::isSelected() const {
    return _implementation->isSelected;
}

void ExifDataCollectionListViewCell::setIsSelected(bool isSelected) {
    _implementation->isSelected = isSelected;
    if (QWidget* const holder = outlets().isSelectedHolderView) {
        holder->setVisible(isSelected);
    }
}

void ExifDataCollectionListViewCell::setShouldDisplayAlbumName(bool shouldDisplayAlbumName) {
    _implementation->shouldDisplayAlbumName = shouldDisplayAlbumName;
}

void ExifDataCollectionListViewCell::setShouldUseFullResolutionImage(bool shouldUseFullResolutionImage) {
    _implementation->shouldUseFullResolutionImage = shouldUseFullResolutionImage;
}

void ExifDataCollectionListViewCell::setShouldUseCachedImage(bool shouldUseCachedImage) {
    _implementation->shouldUseCachedImage = shouldUseCachedImage;
}

void ExifDataCollectionListViewCell::setICloudDownloadOperation(std::shared_ptr<Operation> operation) {
    _implementation->iCloudDownloadOperation = std::move(operation);
}

void ExifDataCollectionListViewCell::setOutlets(const CardOutlets& outlets) {
    _implementation->outlets = outlets;
    if (outlets.favoriteButton) {
        outlets.favoriteButton->setCheckable(true);
        connect(outlets.favoriteButton, &QAbstractButton::clicked, this,
            &ExifDataCollectionListViewCell::favoriteButtonTapped);
    }
    if (outlets.iCloudDownloadButton) {
        connect(outlets.iCloudDownloadButton, &QAbstractButton::clicked, this,
            &ExifDataCollectionListViewCell::downloadFromICloudButtonTapped);
    }
    if (outlets.imageView) {
        connect(outlets.imageView, &UIImageView::imageDidNotDecode, this,
            &ExifDataCollectionListViewCell::dropPicture);
    }
    if (outlets.isSelectedHolderView) {
        outlets.isSelectedHolderView->setVisible(_implementation->isSelected);
    }
}

const CardOutlets& ExifDataCollectionListViewCell::outlets() const {
    return _implementation->outlets;
}

void ExifDataCollectionListViewCell::resizeEvent(QResizeEvent* event) {
    UICollectionViewCell::resizeEvent(event);
    layoutSubviews();
}

void ExifDataCollectionListViewCell::changeEvent(QEvent* event) {
    UICollectionViewCell::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange) {
        layoutSubviews();
    }
}

void ExifDataCollectionListViewCell::favoriteButtonTapped() {
    const auto& record = _implementation->exifInfo;
    if (!record || !record->phAsset) {
        return;
    }
    if (QAbstractButton* const button = outlets().favoriteButton) {
        button->setChecked(!button->isChecked());
        updateAccessibility();
    }
    PHPhotoLibrary::sharedPhotoLibrary().performChanges(
        [asset = record->phAsset] {
            PHAssetChangeRequest::changeRequestForAsset(*asset).setFavorite(!asset->isFavorite);
        },
        nullptr);
}

CGSize ExifDataCollectionListViewCell::sizeForImageView() const {
    const UIImageView* const view = outlets().imageView;
    const CGSize size = view ? view->bounds().size : CGSize{};
    const double scale = std::trunc(UIScreen::mainScreen().scale);
    return {size.width * scale, size.height * scale};
}

bool ExifDataCollectionListViewCell::isRequestingImage() const {
    return _implementation->imageRequestID != -1;
}

void ExifDataCollectionListViewCell::cancelOperations() {
    Implementation& state = *_implementation;
    if (state.imageRequestID != -1) {
        ImageManager::sharedInstance().imageCachingManager().cancelImageRequest(state.imageRequestID);
        state.imageRequestID = -1;
    }
    ++state.requestTicket; // One whose number is still on its way is cancelled when that comes.
    for (auto* const operation : {&state.imageScaleDownOperation, &state.fileNameFetchOperation2}) {
        if (*operation) {
            (*operation)->cancel();
            operation->reset();
        }
    }
    if (state.iCloudDownloadOperation) {
        state.iCloudDownloadOperation->cancel();
        state.iCloudDownloadOperation = nullptr;
    }
}

// Intended: `shouldUseFullResolutionImage` outlives reuse.
void ExifDataCollectionListViewCell::prepareForReuse() {
    UICollectionViewCell::prepareForReuse();
    Implementation& state = *_implementation;
    cancelOperations();
    state.imageFetchCompletionHandler = nullptr;
    state.setImageCompletionHandler = nullptr;
    state.exifInfo = nullptr;
    state.shouldUseCachedImage = true;
    setPicture(nullptr);
    delete findChild<PressView*>(QString(), Qt::FindDirectChildrenOnly);
    setICloudDownloadProgress(-1);
    hideOverlays();
    if (LOTAnimationView* const animation = cloudDownloadingAnimationView()) {
        animation->setAnimationSpeed(1);
        animation->setCompletionBlock(nullptr);
        animation->stop();
    }
}

void ExifDataCollectionListViewCell::setHighlighted(bool highlighted) {
    if (highlighted == this->highlighted()) {
        return;
    }
    UICollectionViewCell::setHighlighted(highlighted);
    auto* view = findChild<PressView*>(QString(), Qt::FindDirectChildrenOnly);
    if (!view && highlighted && !UITraitCollection::currentTraitCollection().isMotionReduced) {
        view = new PressView(*this);
    }
    if (view) {
        view->setPressed(highlighted);
    }
}

void ExifDataCollectionListViewCell::hideOverlays() {
    MBProgressHUD::hideAllHUDsForView(*this, /*animated=*/true);
}

} // namespace exifcard

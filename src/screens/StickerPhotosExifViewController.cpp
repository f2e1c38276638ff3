#include "screens/StickerPhotosExifViewController.h"

#include "metadata/ExifInformation.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/LocalizedString.h"
#include "platform/messages/MSConversation.h"
#include "platform/photos/PHAsset.h"
#include "platform/photos/PHImageManager.h"
#include "platform/uikit/MSMessagesAppViewController.h"
#include "platform/uikit/Text+Qt.h"
#include "platform/uikit/UICollectionView.h"
#include "platform/uikit/UISwitch.h"
#include "screens/ExifDataListDataSource.h"
#include "screens/OptionStrip.h"
#include "settings/PersistanceManager.h"
#include "ui_StickerPhotosExifViewController.h"

#include <QLayout>

#include <utility>

namespace exifcard {
namespace {

constexpr double kOptionStripHeight = 60;

/// Asks for the bytes of an asset in one quick, maybe degraded, form.
void requestImageData(const PHAssetPtr& asset, const PhotoSending::ImageDataHandler& resultHandler) {
    if (!asset) {
        resultHandler(std::nullopt);
        return;
    }
    PHImageRequestOptions options;
    options.networkAccessAllowed = PersistanceManager::sharedInstance().allowNetworkAccessToDownloadPhotos();
    options.deliveryMode = PHImageRequestOptionsDeliveryMode::FastFormat;
    options.resizeMode = PHImageRequestOptionsResizeMode::Fast;
    options.synchronous = false;
    PHImageManager::defaultManager().requestImageDataForAsset(*asset, options,
        [resultHandler](const auto& imageData, const auto&, auto, const auto&) { resultHandler(imageData); });
}

/// Keeps the screen, and lets go of it on the main queue, wherever it is dropped itself.
std::shared_ptr<StickerPhotosExifViewController> keptOffOtherQueues(
    std::shared_ptr<StickerPhotosExifViewController> screen) {
    auto* const kept = screen.get();
    return {kept, [screen = std::move(screen)](
                      auto*) mutable { DispatchQueue::mainQueue().async([last = std::move(screen)] {}); }};
}

} // namespace

std::unique_ptr<QWidget> StickerPhotosExifViewController::loadView() {
    auto screen = std::make_unique<UIView>();
    Ui::StickerPhotosExifViewController interface;
    interface.setupUi(screen.get());
    collectionView = interface.collectionView;
    advancedHolderView = interface.advancedHolderView;
    advancedViewHeightConstraint =
        NSLayoutConstraint(*interface.advancedHolderView, NSLayoutConstraint::Attribute::Height);
    includeExifAsTextSwitch = interface.includeExifAsTextSwitch;
    fillOptionStrip(interface);
    connect(interface.includeExifAsTextSwitch, &UISwitch::valueChanged, this,
        &StickerPhotosExifViewController::includeTextAsSwitchValueChanged);
    return screen;
}

void StickerPhotosExifViewController::viewDidLoad() {
    ExifDataListViewController::viewDidLoad();
    updateAdvancedViewUI();
}

void StickerPhotosExifViewController::updateAdvancedViewUI() {
    const bool isAlbum = assetCollection != nullptr;
    advancedViewHeightConstraint.setConstant(isAlbum ? kOptionStripHeight : 0);
    advancedHolderView->setVisible(isAlbum);
    if (isAlbum) {
        includeExifAsTextSwitch->setOn(
            PersistanceManager::sharedInstance().includeExifAsTextOniMessageApp(), /*animated=*/false);
    }
    advancedHolderView->parentWidget()->layout()->activate(); // At once: the list never jumps.
}

void StickerPhotosExifViewController::includeTextAsSwitchValueChanged(bool isOn) {
    PersistanceManager::sharedInstance().setIncludeExifAsTextOniMessageApp(isOn);
}

void StickerPhotosExifViewController::refresh() {
    ExifDataListViewController::refresh();
    load(assetCollection);
}

void StickerPhotosExifViewController::load(const PHAssetCollectionPtr& album) {
    const auto endRefreshing = [weak = weakSelf()] {
        if (const auto self = weak.lock()) {
            self->endRefreshing();
        }
    };
    dataSource->assetCollection = album;
    if (album) {
        dataSource->refreshAndLoadPhotosFromPHCollection(album, /*favoritesOnly=*/false, {}, endRefreshing);
    } else {
        dataSource->refreshAllPhotosWithFavoritesOnly(/*favoritesOnly=*/false, {}, endRefreshing);
    }
}

void StickerPhotosExifViewController::didSelectItemAtIndexPath(
    UICollectionView& /*view*/, IndexPath indexPath) {
    // Intended: a tap on the loading-more cell sends the first photo, for the section is not looked at.
    if (indexPath.item < dataSource->exifDataItemsArray.size()) {
        sendPhotoWithEXIF(dataSource->exifDataItemsArray[indexPath.item]);
    }
}

void StickerPhotosExifViewController::sendPhotoWithEXIF(const Record& record) {
    if (!conversation || !record) {
        return;
    }
    const auto kept =
        keptOffOtherQueues(std::static_pointer_cast<StickerPhotosExifViewController>(shared_from_this()));
    PhotoSending(conversation, messagesViewController.lock())
        .sendPhotoWithEXIF(
            record,
            [asset = record->phAsset](const auto& resultHandler) { requestImageData(asset, resultHandler); },
            [kept, record](const PhotoSendingResult& result) {
                DispatchQueue::mainQueue().async(
                    [kept, record, result] { kept->sendingEnded(record, result); });
            });
}

void StickerPhotosExifViewController::sendingEnded(const Record& record, const PhotoSendingResult& result) {
    const auto self = std::static_pointer_cast<StickerPhotosExifViewController>(shared_from_this());
    if (sendingObserver) {
        sendingObserver({record, result, [self, record] { self->sendPhotoWithEXIF(record); }});
    }
}

} // namespace exifcard

#include "cards/ExifDataCollectionListViewCell.h"

#include "cards/CardPicture.h"
#include "cards/CardState.h"
#include "cards/PhotoTexts.h"
#include "categories/UIImage+Resize.h"
#include "library/QueueManager.h"
#include "metadata/ExifInformation.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/LocalizedString.h"
#include "platform/imageio/ImageDrawing.h"
#include "platform/photos/PHAsset.h"
#include "platform/uikit/Accessibility.h"
#include "platform/uikit/Text+Qt.h"
#include "platform/uikit/UIImageView.h"
#include "platform/uivalues/UIDevice.h"

#include <QAbstractButton>
#include <QLabel>

namespace exifcard {

void ExifDataCollectionListViewCell::setExifInfo(
    const std::shared_ptr<ExifInformation>& exifInfo, ExifOriginalCellBlock withExifOriginalCellBlock) {
    if (!exifInfo) {
        return;
    }
    layoutSubviews();
    _implementation->exifInfo = exifInfo;
    updateUI(withExifOriginalCellBlock);
    if (exifInfo->imageResultIsInCloud) {
        setICloudDownloadProgress(exifInfo->iCloudDownloadProgress);
    }
    updateAccessibility();
}

void ExifDataCollectionListViewCell::updateUI(const ExifOriginalCellBlock& block) {
    const auto& record = _implementation->exifInfo;
    const bool shouldLoadRawFile =
        (record && record->isRAWFile) || !_implementation->shouldUseFullResolutionImage;
    updateUI(block, shouldLoadRawFile);
}

void ExifDataCollectionListViewCell::updateUI(const ExifOriginalCellBlock& block, bool shouldLoadRawFile) {
    const auto record = _implementation->exifInfo;
    if (!record) {
        return;
    }
    // A thumbnail would come after the picture of the file, and stay.
    if (record->imageFilePath && !record->imageFilePath->empty() && !record->thumbNailImage) {
        showPictureOfFile(*record->imageFilePath);
    }
    if (QAbstractButton* const playButton = outlets().playButton) {
        playButton->setVisible(record->mediaType() == static_cast<std::int64_t>(PHAssetMediaType::Video));
    }
    if (QAbstractButton* const cloudButton = outlets().iCloudDownloadButton) {
        cloudButton->setVisible(
            record->imageResultIsInCloud && !record->hasFinishedDownloadingImageResultFromCloud);
    }
    if (record->thumbNailImage) {
        showThumbnail();
    }
    showFileName(record->correctedImageFilePathURL().lastPathComponent());
    // Intended: without a size strip there is no label whose text could be kept.
    const QLabel* const nameLabel = outlets().imageFileNameLabel;
    record->fileNameCached.store(
        nameLabel ? std::optional(textFromQString(nameLabel->text())) : std::nullopt);
    if (!record->phAsset) {
        return;
    }
    showFavourite();
    if (record->cachedThumbNailImage) {
        setPicture(record->cachedThumbNailImage);
    }
    fetchFileName();
    const Request request = newRequest(block);
    if (shouldLoadRawFile) {
        requestSizedPicture(request, /*retriesWithData=*/true);
    } else {
        requestPictureData(request);
    }
}

void ExifDataCollectionListViewCell::showPictureOfFile(const std::string& path) {
    DispatchQueue::globalQueue().async(
        [cell = QPointer(this), path, record = std::weak_ptr(_implementation->exifInfo)] {
            const auto bytes = Data::mappedFile(path);
            const auto picture = bytes ? imageWithData(*bytes) : nullptr;
            DispatchQueue::mainQueue().async([cell, record, picture] {
                const auto current = record.lock();
                const bool isShown = cell && current && cell->exifInfo() == current;
                if (isShown && picture && !current->cachedThumbNailImage && cell->outlets().imageView) {
                    cell->outlets().imageView->setImage(picture);
                } else if (isShown && !picture && !current->phAsset) {
                    cell->showThatNoPictureCame();
                }
            });
        });
}

/// Scaled in the background; lands unless something better has come meanwhile.
void ExifDataCollectionListViewCell::showThumbnail() {
    UIImageView* const view = outlets().imageView;
    if (!view) {
        return;
    }
    const auto& record = _implementation->exifInfo;
    if (record->cachedThumbNailImage) {
        return;
    }
    DispatchQueue::globalQueue().async([cell = QPointer(this), weakRecord = std::weak_ptr(record),
                                           thumbnail = record->thumbNailImage, size = view->frame().size] {
        const auto scaled = imageWithImageScaledToFillToSize(thumbnail, size);
        DispatchQueue::mainQueue().async([cell, weakRecord, scaled] {
            const auto current = weakRecord.lock();
            const bool isShown = cell && current && cell->exifInfo() == current;
            if (isShown && !current->cachedThumbNailImage) {
                cell->outlets().imageView->setImage(scaled);
            }
        });
    });
}

void ExifDataCollectionListViewCell::showFileName(const std::string& fileName) {
    for (QLabel* const label : {outlets().imageFileNameLabel, outlets().fileNameLabelOnBackSide}) {
        if (label) {
            label->setText(qString(fileName));
        }
    }
}

void ExifDataCollectionListViewCell::showFavourite() {
    QAbstractButton* const button = outlets().favoriteButton;
    if (!button) {
        return;
    }
    const bool isFavorite = _implementation->exifInfo->phAsset->isFavorite;
    button->setChecked(isFavorite);
    setAccessibilityLabel(
        *button, qString(localizedString(isFavorite ? N_("Favorite ON") : N_("Favorite OFF"))));
    setAccessibilityTraits(*button, kUIAccessibilityTraitNone);
    setAccessibilityHint(*button, qString(localizedString("Double tap to toggle")));
}

void ExifDataCollectionListViewCell::fetchFileName() {
    if (!isSystemVersionAtLeast("9.0")) {
        return;
    }
    const auto weakOperation = std::make_shared<std::weak_ptr<BlockOperation>>();
    const auto& record = _implementation->exifInfo;
    const auto operation = BlockOperation::blockOperationWithBlock(
        [cell = QPointer(this), weakOperation, weakRecord = std::weak_ptr(record), asset = record->phAsset] {
            const std::string fileName = originalFilenameOf(asset);
            const auto current = weakOperation->lock();
            if (!current || current->isCancelled()) {
                return;
            }
            DispatchQueue::mainQueue().sync([&cell, &current, &weakRecord, &fileName] {
                const auto named = weakRecord.lock();
                if (!cell || !named || current->isCancelled()) {
                    return;
                }
                cell->showFileName(fileName);
                named->fileNameCached.store(fileName);
                cell->updateAccessibility();
            });
        });
    *weakOperation = operation;
    _implementation->fileNameFetchOperation2 = operation;
    QueueManager::sharedInstance().imageTransferOperationQueue.addOperation(operation);
}

void ExifDataCollectionListViewCell::updateAccessibility() {
    const auto& record = _implementation->exifInfo;
    if (record) {
        const auto cached = record->fileNameCached.load();
        const auto fileName = cached ? *cached : record->correctedImageFilePathURL().lastPathComponent();
        // A photo of the library has no name before it is fetched, and some have none at all.
        setAccessibilityLabel(*this, qString(fileName.empty() ? localizedString("Image") : fileName));
        const QAbstractButton* const favorite = outlets().favoriteButton;
        setAccessibilityValue(*this, stateTextOf(*record, favorite && favorite->isChecked()));
    }
}

std::vector<UIAccessibilityCustomAction> ExifDataCollectionListViewCell::accessibilityCustomActions() {
    std::vector<UIAccessibilityCustomAction> actions;
    const QAbstractButton* const favorite = outlets().favoriteButton;
    if (favorite && exifInfo() && exifInfo()->phAsset) {
        const auto name =
            localizedString(favorite->isChecked() ? N_("Remove from favorites") : N_("Add to favorites"));
        actions.push_back({qString(name), [this] { favoriteButtonTapped(); }});
    }
    if (isOriginalElsewhere() && exifInfo()->iCloudDownloadProgress < 0) {
        actions.push_back({qString(localizedString("Download the original from iCloud")),
            [this] { downloadFromICloudButtonTapped(); }});
    }
    return actions;
}

} // namespace exifcard

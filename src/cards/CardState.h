#pragma once

#include "cards/CardOutlets.h"
#include "cards/ExifDataCollectionListViewCell.h"
#include "platform/foundation/Operation.h"
#include "platform/photos/PHImageManager.h"
#include "platform/uikit/LOTAnimationView.h"

#include <QPointer>

#include <cstdint>

namespace exifcard {

/// What a card keeps. Main queue only.
struct ExifDataCollectionListViewCell::Implementation {
    /// Puts a decoded picture, or none, into the card.
    using SetImageCompletionHandler = std::function<void(const std::shared_ptr<UIImage>& image)>;

    CardOutlets outlets;
    IndexPath indexPath;
    std::weak_ptr<CardOwner> listViewController;
    std::shared_ptr<ExifInformation> exifInfo;
    bool isSelected = false;
    bool shouldDisplayAlbumName = true;
    bool shouldUseCachedImage = true;
    bool shouldUseFullResolutionImage = false;

    PHImageRequestID imageRequestID = -1; ///< -1: none is pending.
    std::uint64_t requestTicket = 0;      ///< Tells the latest request; moves on at reuse.
    std::uint64_t answeredTicket = 0;     ///< Of the last request that brought something.
    PHImageDataResultHandler imageFetchCompletionHandler;
    SetImageCompletionHandler setImageCompletionHandler;
    std::shared_ptr<BlockOperation> imageScaleDownOperation;
    std::shared_ptr<BlockOperation> fileNameFetchOperation2;
    std::shared_ptr<Operation> iCloudDownloadOperation;
    LOTAnimationView* cloudDownloadingAnimationView = nullptr; ///< A child; null without a cloud badge.
};

/// What a card asked for, as it was then: what comes lands only where the same photo is still shown. May be
/// copied on any thread.
struct ExifDataCollectionListViewCell::Request {
    QPointer<ExifDataCollectionListViewCell> cell;
    ExifOriginalCellBlock block; ///< May be empty.
    std::shared_ptr<const PHAsset> asset;
    std::uint64_t ticket = 0;
};

} // namespace exifcard

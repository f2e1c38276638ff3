#include "cards/ExifDataCollectionListViewCell.h"

#include "cards/CardPicture.h"
#include "cards/CardState.h"
#include "cards/PlaceholderView.h"
#include "categories/ImageManager.h"
#include "library/QueueManager.h"
#include "metadata/CachedThumbnails.h"
#include "metadata/ExifInformation.h"
#include "platform/foundation/Dictionary.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/Log.h"
#include "platform/photos/PHAsset.h"
#include "platform/photos/PHImageInfoKeys.h"
#include "platform/uikit/UIImageView.h"
#include "settings/PersistanceManager.h"

namespace exifcard {
namespace {

bool flag(const DictionaryPtr& info, std::string_view key) {
    return info && info->objectForKey(key).boolValue();
}

PHCachingImageManager& imageManager() {
    return ImageManager::sharedInstance().imageCachingManager();
}

} // namespace

ExifDataCollectionListViewCell::Request ExifDataCollectionListViewCell::newRequest(
    const ExifOriginalCellBlock& block) {
    return {this, block, _implementation->exifInfo->phAsset, ++_implementation->requestTicket};
}

void ExifDataCollectionListViewCell::keepRequestID(const Request& request, std::int32_t requestID) {
    if (request.ticket != _implementation->requestTicket) {
        imageManager().cancelImageRequest(requestID); // Reused, or asked anew, meanwhile.
    } else if (request.ticket != _implementation->answeredTicket) {
        _implementation->imageRequestID = requestID;
    }
}

bool ExifDataCollectionListViewCell::isAbout(const Request& request) const {
    return assetIdentifierOf(_implementation->exifInfo.get()) == request.asset->localIdentifier;
}

void ExifDataCollectionListViewCell::requestSizedPicture(const Request& request, bool retriesWithData) {
    const auto options = optionsOfSizedPicture(*_implementation->exifInfo);
    DispatchQueue::globalQueue().async([request, retriesWithData, options, size = sizeForImageView()] {
        const auto requestID =
            imageManager().requestImageForAsset(*request.asset, size, PHImageContentMode::AspectFill, options,
                [request, retriesWithData](const auto& image, const auto& info) {
                    if (request.cell) {
                        request.cell->takeSizedPicture(request, retriesWithData, image, info);
                    }
                });
        DispatchQueue::mainQueue().async([request, requestID] {
            if (request.cell) {
                request.cell->keepRequestID(request, requestID);
            } else {
                imageManager().cancelImageRequest(requestID);
            }
        });
    });
}

void ExifDataCollectionListViewCell::takeSizedPicture(const Request& request,
    bool retriesWithData,
    const std::shared_ptr<UIImage>& image,
    const DictionaryPtr& info) {
    if (!isAbout(request) || flag(info, kPHImageCancelledKey)) {
        return;
    }
    if (request.ticket == _implementation->requestTicket) {
        _implementation->answeredTicket = request.ticket;
        _implementation->imageRequestID = -1;
    }
    if (!image) {
        if (retriesWithData) {
            updateUI(request.block, /*shouldLoadRawFile=*/false);
        } else {
            showThatNoPictureCame();
        }
        return;
    }
    keepCachedThumbnail(_implementation->exifInfo, image);
    showRequestedPicture(image);
    if (!flag(info, kPHImageResultIsDegradedKey)) {
        fetchFileNameWithInfo(info);
    }
}

void ExifDataCollectionListViewCell::fetchImageDirectlyFrom(const std::shared_ptr<ExifInformation>& record) {
    if (record && record->phAsset) {
        requestSizedPicture(newRequest(nullptr), /*retriesWithData=*/false);
    }
}

void ExifDataCollectionListViewCell::requestPictureData(const Request& request) {
    setPictureHandlers(request);
    hideOverlays();
    keepRequestID(request,
        imageManager().requestImageDataForAsset(*request.asset,
            optionsOfPictureData(*_implementation->exifInfo), _implementation->imageFetchCompletionHandler));
}

void ExifDataCollectionListViewCell::setPictureHandlers(const Request& request) {
    _implementation->setImageCompletionHandler = [this, block = request.block](const auto& image) {
        if (_implementation->exifInfo) {
            keepCachedThumbnail(_implementation->exifInfo, image);
        }
        ExifDataCollectionListViewCell* const current = block ? block() : nullptr;
        if (current) {
            current->showRequestedPicture(image);
            current->hideOverlays();
        }
    };
    // Intended: of whatever type the data is, raw or not, it takes the same way.
    _implementation->imageFetchCompletionHandler = [request](const std::optional<Data>& bytes, const auto&,
                                                       auto, const DictionaryPtr& info) {
        DispatchQueue::mainQueue().async([request, bytes, info] {
            // A reused cell has dropped its handler; what comes late is for nobody then.
            if (request.cell && request.ticket == request.cell->_implementation->requestTicket) {
                request.cell->takePictureData(request, bytes, info);
            }
        });
    };
}

void ExifDataCollectionListViewCell::takePictureData(
    const Request& request, const std::optional<Data>& bytes, const DictionaryPtr& info) {
    Implementation& state = *_implementation;
    state.answeredTicket = request.ticket;
    state.imageRequestID = -1;
    if (!isAbout(request)) {
        return;
    }
    if (state.exifInfo->cachedThumbNailImage && !state.shouldUseFullResolutionImage) {
        hideOverlays();
        if (state.shouldUseCachedImage) {
            return;
        }
    }
    if (!bytes) {
        hideOverlays();
        showThatNoPictureCame();
        return;
    }
    const auto weakOperation = std::make_shared<std::weak_ptr<BlockOperation>>();
    const CGSize size = state.outlets.imageView ? state.outlets.imageView->bounds().size : CGSize{};
    const auto operation = BlockOperation::blockOperationWithBlock(
        [request, bytes, size, weakOperation] { scaleDown(request, *bytes, size, *weakOperation); });
    *weakOperation = operation;
    state.imageScaleDownOperation = operation;
    QueueManager::sharedInstance().imageScaleDownOperationQueue.addOperation(operation);
    fetchFileNameWithInfo(info);
}

/// On a queue of operations.
void ExifDataCollectionListViewCell::scaleDown(
    const Request& request, const Data& bytes, CGSize size, const std::weak_ptr<BlockOperation>& operation) {
    const auto isCancelled = [&operation] {
        const auto current = operation.lock();
        return !current || current->isCancelled();
    };
    const auto onCell = [&request](void (ExifDataCollectionListViewCell::*call)(const Request&)) {
        DispatchQueue::mainQueue().async([request, call] {
            if (request.cell) {
                (request.cell->*call)(request);
            }
        });
    };
    if (isCancelled()) {
        onCell(&ExifDataCollectionListViewCell::giveUp);
        return;
    }
    if (isTooLargeToDecode(bytes)) {
        requestHugePicture(request, operation);
        return;
    }
    const auto picture = pictureScaledToFit(bytes, size);
    if (!picture) {
        debugLog("Image is NIL");
        onCell(&ExifDataCollectionListViewCell::retryDirectly);
    } else if (isCancelled()) {
        onCell(&ExifDataCollectionListViewCell::giveUp);
    } else {
        DispatchQueue::mainQueue().sync([&request, &picture, &isCancelled] {
            if (!isCancelled()) {
                deliver(request, *picture);
            }
        });
    }
}

void ExifDataCollectionListViewCell::giveUp(const Request&) {
    hideOverlays();
}

void ExifDataCollectionListViewCell::retryDirectly(const Request& request) {
    if (isAbout(request)) {
        fetchImageDirectlyFrom(_implementation->exifInfo);
    }
}

void ExifDataCollectionListViewCell::requestHugePicture(
    const Request& request, const std::weak_ptr<BlockOperation>& operation) {
    PHImageRequestOptions options;
    options.resizeMode = PHImageRequestOptionsResizeMode::Exact;
    imageManager().requestImageForAsset(*request.asset, sizeOfHugePicture(), PHImageContentMode::AspectFit,
        options, [request, operation](const auto& image, const auto&) {
            // The operation itself has ended by now; whoever cancels it still reaches it through the cell.
            const auto current = operation.lock();
            if (current && !current->isCancelled()) {
                deliver(request, image);
            } else if (request.cell) {
                request.cell->hideOverlays();
            }
        });
}

void ExifDataCollectionListViewCell::deliver(const Request& request, const std::shared_ptr<UIImage>& image) {
    ExifDataCollectionListViewCell* const current = request.block ? request.block() : nullptr;
    if (current && current->isAbout(request) && current->_implementation->setImageCompletionHandler) {
        current->_implementation->setImageCompletionHandler(image);
    }
}

void ExifDataCollectionListViewCell::setPicture(const std::shared_ptr<UIImage>& image) {
    for (UIImageView* const view : {outlets().imageView, outlets().smallThumbNailImageViewOnBackSide}) {
        if (view) {
            view->setImage(image);
        }
    }
    if (const UIImageView* const view = outlets().imageView) {
        delete view->findChild<PlaceholderView*>(QString(), Qt::FindDirectChildrenOnly);
    }
}

/// What is fetched ahead is not decoded before it is seen.
void ExifDataCollectionListViewCell::dropPicture() {
    UIImageView* const view = outlets().imageView;
    if (exifInfo() && exifInfo()->cachedThumbNailImage == view->image()) {
        keepCachedThumbnail(exifInfo(), nullptr);
    }
    view->setImage(nullptr);
    showThatNoPictureCame();
}

void ExifDataCollectionListViewCell::showThatNoPictureCame() {
    UIImageView* const view = outlets().imageView;
    const bool isEmpty = view && !view->image();
    if (isEmpty && !isOriginalElsewhere() &&
        !view->findChild<PlaceholderView*>(QString(), Qt::FindDirectChildrenOnly)) {
        new PlaceholderView(*view);
    }
}

void ExifDataCollectionListViewCell::showRequestedPicture(const std::shared_ptr<UIImage>& image) {
    if (!image) {
        showThatNoPictureCame();
        return;
    }
    setPicture(image);
    if (UIImageView* const view = outlets().imageView) {
        const auto contentMode = PersistanceManager::sharedInstance().imageViewContentMode();
        view->setContentMode(static_cast<UIViewContentMode>(contentMode));
    }
}

} // namespace exifcard

#include "metadata/ExifInformation.h"

#include "categories/ImageManager.h"
#include "metadata/CachedThumbnails.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/Operation.h"
#include "platform/foundation/PlatformException.h"
#include "platform/imageio/ImageDrawing.h"
#include "platform/photos/PHAsset.h"
#include "settings/PersistanceManager.h"

namespace exifcard {
namespace {

constexpr std::size_t kMebibyte = 1048576;
/// A file of so many whole mebibytes is too much to decode for a list.
constexpr std::size_t kTooManyMebibytes = 51;

using WeakRecord = std::weak_ptr<ExifInformation>;

/// Null for what is no picture.
std::shared_ptr<UIImage> pictureOf(const Data& data) {
    try {
        return imageWithData(data);
    } catch (const PlatformException&) {
        return nullptr;
    }
}

/// Makes the picture on the calling thread and hands it over on the main queue, where the lists read it.
void takeThumbnail(const WeakRecord& weakRecord, const std::optional<Data>& imageData) {
    if (!imageData || imageData->size() / kMebibyte >= kTooManyMebibytes) {
        return;
    }
    DispatchQueue::mainQueue().async([weakRecord, picture = pictureOf(*imageData)] {
        const auto record = weakRecord.lock();
        if (record && picture) {
            keepCachedThumbnail(record, picture);
        }
        debugLog("PREFETCH_ASSET_ COMPLETE");
    });
}

void request(const WeakRecord& weakRecord, const PHImageRequestOptions& options) {
    const auto record = weakRecord.lock();
    if (!record || !record->imageFetchCompletionHandler || !record->phAsset) {
        return; // Gone or cancelled meanwhile.
    }
    const auto handler = record->imageFetchCompletionHandler;
    record->imageRequestID =
        ImageManager::sharedInstance().imageCachingManager().requestImageDataForAsset(*record->phAsset,
            options, [handler](const auto& data, const auto& /*dataUTI*/, auto, const auto& info) {
                handler(data, info);
            });
}

} // namespace

void ExifInformation::prefetchAsset() {
    if (cachedThumbNailImage) {
        debugLog("PREFETCH_ASSET_NOT_NEEDED");
        return;
    }
    debugLog("PREFETCH_ASSET_");
    // Stored here and not on the queue, so that a cancel that comes at once is not lost.
    imageFetchCompletionHandler = [weakRecord = weak_from_this()](const auto& data, const auto& /*info*/) {
        takeThumbnail(weakRecord, data);
    };
    DispatchQueue::globalQueue(DispatchQueue::Priority::High).async([weakRecord = weak_from_this()] {
        PHImageRequestOptions options;
        options.networkAccessAllowed =
            PersistanceManager::sharedInstance().allowNetworkAccessToDownloadPhotos();
        options.deliveryMode = PHImageRequestOptionsDeliveryMode::FastFormat;
        options.resizeMode = PHImageRequestOptionsResizeMode::Fast;
        DispatchQueue::mainQueue().async([weakRecord, options] { request(weakRecord, options); });
    });
}

void ExifInformation::cancelPrefetch() {
    imageFetchCompletionHandler = {};
    if (imageScaleDownOperation) {
        imageScaleDownOperation->cancel();
    }
    ImageManager::sharedInstance().imageCachingManager().cancelImageRequest(imageRequestID);
}

} // namespace exifcard

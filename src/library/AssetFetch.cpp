#include "library/AssetFetch.h"

#include "categories/UIImage+Resize.h"
#include "metadata/ExifInformation.h"
#include "platform/avfoundation/AVAsset.h"
#include "platform/foundation/Dictionary.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/imageio/ImageProperties.h"
#include "platform/photos/PHImageManager.h"
#include "platform/uivalues/UIDevice.h"
#include "platform/uivalues/UIImage.h"
#include "settings/PersistanceManager.h"

#include <algorithm>

namespace exifcard {
namespace {

struct ItemKey {
    std::string_view commonKey;
    std::string_view tiffKey;
};

/// The place is not among them: it comes from the asset.
constexpr ItemKey kItemKeys[] = {
    {AVMetadataCommonKeyModel, kCGImagePropertyTIFFModel},
    {AVMetadataCommonKeySoftware, kCGImagePropertyTIFFSoftware},
    {AVMetadataCommonKeyMake, kCGImagePropertyTIFFMake},
};

void takeItem(ExifInformation& record, const AVMetadataItem& item) {
    const auto* const known = std::ranges::find(kItemKeys, item.commonKey, &ItemKey::commonKey);
    if (known == std::end(kItemKeys)) {
        return;
    }
    record.tifDic->setObjectForKey(item.value, known->tiffKey);
    record.exifORTiffInfoAvailable = true;
    const std::string* const text = item.value.text();
    if (known->tiffKey == kCGImagePropertyTIFFModel && text != nullptr) {
        record.cameraModel = *text;
    }
}

void takeVideo(ExifInformation& record, const AVURLAsset& video) {
    for (const AVMetadataItem& item : video.metadata()) {
        takeItem(record, item);
    }
    record.fileSizeInBytes = static_cast<std::int64_t>(video.file().size());
    const auto tracks = video.tracksWithMediaType(AVMediaTypeVideo);
    record.framesPerSecondValue = tracks.empty() ? 0 : tracks.front().nominalFrameRate;
}

/// Null while the video is not here. Blocks.
std::shared_ptr<const AVURLAsset> videoOfAsset(const PHAsset& asset, bool mayUseNetwork) {
    std::shared_ptr<const AVURLAsset> video;
    DispatchSemaphore isDone(0);
    PHImageManager::defaultManager().requestAVAssetForVideo(asset,
        {.networkAccessAllowed = mayUseNetwork,
            .deliveryMode = PHVideoRequestOptionsDeliveryMode::HighQualityFormat},
        [&video, &isDone](const auto& delivered, const auto& /*info*/) {
            video = delivered;
            isDone.signal();
        });
    isDone.wait();
    return video;
}

} // namespace

bool isNetworkPermitted(bool forceDownload) {
    return PersistanceManager::sharedInstance().allowNetworkAccessToDownloadPhotos() || forceDownload;
}

void takeScreenShotFlag(ExifInformation& record, const PHAsset& asset) {
    if (isSystemVersionAtLeast("9.0")) {
        record.isScreenShot = (asset.mediaSubtypes & kPHAssetMediaSubtypePhotoScreenshot) != 0;
    }
}

void takeDimensionsOfDNG(ExifInformation& record, const Data& data) {
    if (const auto image = imageFromDNGImageNSData(data)) {
        const double scale = image->scale();
        record.dimensions = {image->size().width * scale, image->size().height * scale};
    }
}

std::string descriptionOfData(const std::optional<Data>& data) {
    return data ? Value(*data).description() : Value().description();
}

ExifManager::Record recordOfVideo(const PHAssetPtr& asset, bool forceDownload) {
    auto record = ExifInformation::init();
    record->phAsset = asset;
    record->location = asset->location;
    record->dimensions = {static_cast<double>(asset->pixelWidth), static_cast<double>(asset->pixelHeight)};
    record->dateCreated = asset->creationDate ? asset->creationDate : asset->modificationDate;
    record->dateTaken = asset->creationDate;
    record->duration = asset->duration;
    const auto video = videoOfAsset(*asset, isNetworkPermitted(forceDownload));
    record->hasFetchedFromPHAsset = true;
    record->tifDic = Dictionary::make();
    if (video) {
        takeVideo(*record, *video);
    }
    record->imageResultIsInCloud = !video;
    record->hasFetchedEXIFInformation = true;
    return record;
}

} // namespace exifcard

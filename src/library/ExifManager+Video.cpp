#include "library/ExifManager.h"

#include "metadata/ExifInformation.h"
#include "platform/avfoundation/AVAsset.h"
#include "platform/avfoundation/AVAssetImageGenerator.h"
#include "platform/foundation/Data.h"
#include "platform/foundation/Dictionary.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/FileAttributes.h"
#include "platform/foundation/Log.h"
#include "platform/imageio/ImageProperties.h"
#include "platform/photos/PHAsset.h"
#include "platform/uivalues/UIScreen.h"

#include <algorithm>
#include <iterator>

namespace exifcard {
namespace {

// A place is written as "+48.8583+002.2945/": the latitude, then the longitude.
constexpr std::size_t kLatitudeLength = 8;
constexpr std::size_t kLongitudeLength = 9;
constexpr CMTime kThumbnailTime = {.value = 0, .timescale = 30};

void takeModel(ExifInformation& record, const AVMetadataItem& item) {
    if (const std::string* const model = item.value.text()) {
        record.cameraModel = *model;
    }
    record.tifDic->setObjectForKey(item.value, kCGImagePropertyTIFFModel);
    record.exifInfoAvailable = true;
    record.exifORTiffInfoAvailable = true;
}

void takeSoftware(ExifInformation& record, const AVMetadataItem& item) {
    record.tifDic->setObjectForKey(item.value, kCGImagePropertyTIFFSoftware);
    record.exifORTiffInfoAvailable = true;
}

void takeMake(ExifInformation& record, const AVMetadataItem& item) {
    record.tifDic->setObjectForKey(item.value, kCGImagePropertyTIFFMake);
    record.exifORTiffInfoAvailable = true;
}

void takeLocation(ExifInformation& record, const AVMetadataItem& item) {
    const std::string text = item.stringValue().value_or("");
    if (text.size() <= kLatitudeLength) {
        return;
    }
    // Intended: split by width, so that a text with other numbers of digits gives another place.
    const Value latitude(text.substr(0, kLatitudeLength));
    const Value longitude(text.substr(kLatitudeLength, kLongitudeLength));
    record.location = CLLocation{.coordinate = {latitude.doubleValue(), longitude.doubleValue()},
        .horizontalAccuracy = 0,
        .timestamp = Date::now()};
}

struct ItemRule {
    std::string_view commonKey;
    void (*take)(ExifInformation& record, const AVMetadataItem& item);
};

/// Items with other keys are ignored.
constexpr ItemRule kItemRules[] = {
    {AVMetadataCommonKeyModel, takeModel},
    {AVMetadataCommonKeySoftware, takeSoftware},
    {AVMetadataCommonKeyMake, takeMake},
    {AVMetadataCommonKeyLocation, takeLocation},
};

void takeItem(ExifInformation& record, const AVMetadataItem& item) {
    const auto* const rule = std::ranges::find(kItemRules, item.commonKey, &ItemRule::commonKey);
    if (rule != std::end(kItemRules)) {
        rule->take(record, item);
    }
}

/// Intended: the date in a file's metadata has no start, so the file's own date counts.
void takeDate(ExifInformation& record, const AVURLAsset* asset, const std::string& path) {
    const auto item = asset != nullptr ? asset->creationDate() : std::nullopt;
    const auto start = item ? item->startDate : std::nullopt;
    if (!record.dateTaken) {
        record.dateTaken = start;
    }
    const auto created = start ? std::nullopt : creationDateOfFile(path);
    if (created) {
        record.dateTaken = created;
    }
}

/// Of any file, also of one that is no video.
void takeFileSize(ExifInformation& record, const AVURLAsset* asset, const std::string& path) {
    const auto file = asset != nullptr ? std::optional(asset->file()) : Data::mappedFile(path);
    record.fileSizeInBytes = file ? static_cast<std::int64_t>(file->size()) : 0;
}

void takeDurationAndTracks(ExifInformation& record, const AVURLAsset& asset) {
    record.duration = CMTimeGetSeconds(asset.duration());
    const auto videoTracks = asset.tracksWithMediaType(AVMediaTypeVideo);
    if (!videoTracks.empty()) {
        record.dimensions = videoTracks.front().naturalSize;
        record.framesPerSecondValue = videoTracks.front().nominalFrameRate;
    }
}

void makeThumbnail(ExifInformation& record, std::shared_ptr<const AVURLAsset> asset) {
    AVAssetImageGenerator generator(std::move(asset));
    generator.appliesPreferredTrackTransform = true;
    generator.maximumSize = UIScreen::mainScreen().bounds().size;
    DispatchSemaphore isMade(0);
    generator.generateCGImagesAsynchronouslyForTimes(
        {kThumbnailTime}, [&](CMTime, const std::shared_ptr<UIImage>& image, CMTime,
                              AVAssetImageGeneratorResult result, const std::optional<std::string>& error) {
            if (result != AVAssetImageGeneratorResult::Succeeded) {
                debugLog("couldn't generate thumbnail, error:%@", {error.value_or("(null)")});
            }
            record.cachedThumbNailImage = image;
            record.thumbNailImage = image;
            isMade.signal();
        });
    isMade.wait();
}

} // namespace

std::shared_ptr<ExifInformation> ExifManager::exifInformationFromVideoURL(const URL& url) {
    const auto asset = AVURLAsset::assetWithURL(url);
    auto record = ExifInformation::init();
    record->imageResultIsInCloud = false;
    record->setMediaType(static_cast<std::int64_t>(PHAssetMediaType::Video));
    record->tifDic = Dictionary::make();
    record->imageFilePathURL = url;
    record->fileNameCached.store(record->correctedImageFilePathURL().lastPathComponent());
    if (asset) {
        for (const AVMetadataItem& item : asset->metadata()) {
            takeItem(*record, item);
        }
        takeDurationAndTracks(*record, *asset);
    }
    takeDate(*record, asset.get(), url.path());
    takeFileSize(*record, asset.get(), url.path());
    makeThumbnail(*record, asset);
    return record;
}

} // namespace exifcard

#include "library/ExifManager.h"

#include "library/AssetFetch.h"
#include "metadata/ExifInformation.h"
#include "platform/coreimage/CIFilter.h"
#include "platform/foundation/Dictionary.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/Log.h"
#include "platform/photos/PHAssetResource.h"
#include "platform/photos/PHAssetResourceManager.h"
#include "platform/photos/PHImageInfoKeys.h"
#include "platform/photos/PHImageManager.h"

#include <string>

namespace exifcard {
namespace {

using Record = ExifManager::Record;
using AssetProgressHandler = ExifManager::AssetProgressHandler;

constexpr std::string_view kRawTypePart = "raw-image";
constexpr std::size_t kResourcesOfLivePhoto = 2;

/// What the library answered to a request for an asset's bytes.
struct AssetBytes {
    std::optional<Data> data;
    DictionaryPtr info;
};

PHImageRequestOptions requestOptions() {
    return {.deliveryMode = PHImageRequestOptionsDeliveryMode::HighQualityFormat,
        .resizeMode = PHImageRequestOptionsResizeMode::None};
}

AssetBytes bytesHere(const PHAsset& asset) {
    AssetBytes bytes;
    auto options = requestOptions();
    options.synchronous = true;
    PHImageManager::defaultManager().requestImageDataForAsset(
        asset, options, [&bytes](const auto& data, const auto&, auto, const auto& info) {
            bytes = {data, info};
        });
    return bytes;
}

/// Brings the bytes here, if they can be had at all. Blocks.
AssetBytes bytesFromElsewhere(const PHAsset& asset, const AssetProgressHandler& progressHandler) {
    AssetBytes bytes;
    DispatchSemaphore isDone(0);
    auto options = requestOptions();
    options.networkAccessAllowed = true;
    options.progressHandler = [progressHandler](
                                  double progress, const auto& error, bool& stop, const auto& info) {
        debugLog("RAW %f", {progress});
        if (progressHandler) {
            progressHandler(progress, error, stop, info, /*isDownloading=*/true);
        }
    };
    PHImageManager::defaultManager().requestImageDataForAsset(
        asset, options, [&](const auto& data, const auto& type, auto, const auto& info) {
            debugLog("OPTIONS =  %@ and %@", {type, Value(info)});
            bytes = {data, info};
            isDone.signal();
        });
    isDone.wait();
    if (isDebugLogWanted()) {
        debugLog("exifInformationFromPHAssett in NETWORK ACCESS ALLOWED MODE IMAGE_DATA_NIL %@ and %@",
            {descriptionOfData(bytes.data), Value(bytes.info)});
    }
    return bytes;
}

AssetBytes bytesOfPhoto(
    const PHAsset& asset, bool mayUseNetwork, const AssetProgressHandler& progressHandler) {
    auto bytes = bytesHere(asset);
    if (bytes.data || !mayUseNetwork) {
        return bytes;
    }
    debugLog("exifInformationFromPHAssett IMAGE_DATA_NIL %@", {Value(bytes.info)});
    return bytesFromElsewhere(asset, progressHandler);
}

/// Adds up the length of a live photo's moving half as its bytes come, which nobody waits for.
void measurePairedVideo(const Record& record, const PHAsset& asset, bool mayUseNetwork) {
    // Intended: exactly this bit. A live photo that is a screenshot or a panorama too is not measured.
    if (asset.mediaSubtypes != kPHAssetMediaSubtypePhotoLive) {
        return;
    }
    const auto resources = PHAssetResource::assetResourcesForAsset(asset);
    if (resources.size() != kResourcesOfLivePhoto) {
        return;
    }
    PHAssetResourceManager::defaultManager().requestDataForAssetResource(
        resources.back(), {.networkAccessAllowed = mayUseNetwork},
        [weakRecord = std::weak_ptr(record)](const Data& chunk) {
            if (const auto measured = weakRecord.lock()) {
                measured->liveVideoFileSizeInBytes += static_cast<std::int64_t>(chunk.size());
            }
        },
        [](const auto& /*error*/) {});
}

/// The type of the bytes ("com.adobe.raw-image"); empty where the library does not tell.
std::string typeOfBytes(const AssetBytes& bytes) {
    const std::string* const type =
        bytes.info ? bytes.info->objectForKey(kPHImageFileUTIKey).text() : nullptr;
    return type != nullptr ? *type : std::string();
}

/// The record of all that the file tells, which the first pass leaves out for RAW files. Blocks.
Record completedRAW(const Record& record, bool forceDownload) {
    debugLog("EXIF NOT AVAILABLE FOR RAW FILE");
    Record complete;
    DispatchSemaphore isDone(0);
    ExifManager::fetchCompleteExifInformationsFor(record, forceDownload, [&](const Record& fetched) {
        complete = fetched;
        isDone.signal();
    });
    isDone.wait();
    complete->isRAWFile = record->isRAWFile;
    complete->liveVideoFileSizeInBytes = record->liveVideoFileSizeInBytes.load();
    complete->phAsset = record->phAsset;
    complete->cachedPHAssetInfoDictionary = record->cachedPHAssetInfoDictionary;
    complete->dateTaken = record->dateTaken;
    complete->hasFetchedFromPHAsset = record->hasFetchedFromPHAsset.load();
    complete->location = record->location;
    complete->fileSizeInBytes = record->fileSizeInBytes;
    complete->imageResultIsInCloud = record->imageResultIsInCloud.load();
    return complete;
}

/// The record, or for a RAW file the complete one. A DNG's dimensions are those of the picture that it
/// develops to.
Record withRAWRecognised(const Record& record, const AssetBytes& bytes, bool forceDownload) {
    const std::string type = typeOfBytes(bytes);
    if (type.find(kRawTypePart) == std::string::npos) {
        return record;
    }
    record->isRAWFile = true;
    debugLog("UTI_ %@", {type});
    auto complete = completedRAW(record, forceDownload);
    if (type == kAdobeRawImageType && bytes.data) {
        takeDimensionsOfDNG(*complete, *bytes.data);
    }
    return complete;
}

Record recordOfBytes(const PHAssetPtr& asset, const AssetBytes& bytes) {
    auto record = ExifInformation::exifInformationFromMetaDataDictionary(
        ExifManager::metadataFromImageData(bytes.data));
    record->fileSizeInBytes = bytes.data ? static_cast<std::int64_t>(bytes.data->size()) : 0;
    record->cachedPHAssetInfoDictionary = bytes.info;
    record->location = asset ? asset->location : std::nullopt;
    record->phAsset = asset;
    return record;
}

Record lighterRecord(const PHAssetPtr& asset, const AssetBytes& bytes) {
    auto record = recordOfBytes(asset, bytes);
    if (asset) {
        // Intended: unlike the full record, the file's own date counts where it has one.
        record->dateTaken = record->dateTaken ? record->dateTaken : asset->creationDate;
        record->dateCreated = record->dateCreated ? record->dateCreated : asset->creationDate;
    }
    return record;
}

Record recordOfPhoto(
    const PHAssetPtr& asset, bool forceDownload, const AssetProgressHandler& progressHandler) {
    debugLog("exifInformationFromPHAssett_2");
    const bool mayUseNetwork = isNetworkPermitted(forceDownload);
    const auto bytes = asset ? bytesOfPhoto(*asset, mayUseNetwork, progressHandler) : AssetBytes{};
    if (progressHandler) {
        bool stop = false;
        progressHandler(1, std::nullopt, stop, nullptr, /*isDownloading=*/false);
    }
    auto record = recordOfBytes(asset, bytes);
    record->hasFetchedFromPHAsset = true;
    record->imageResultIsInCloud = !bytes.data;
    if (!bytes.data) {
        debugLog("ON_CLOUD and imageData = %@", {"(null)"});
    }
    if (asset) {
        // Intended: the library's date counts, whatever the file tells.
        record->dateTaken = asset->creationDate ? asset->creationDate : record->dateTaken;
        record = withRAWRecognised(record, bytes, forceDownload);
        measurePairedVideo(record, *asset, mayUseNetwork);
        takeScreenShotFlag(*record, *asset);
    }
    record->hasFetchedEXIFInformation = true;
    return record;
}

} // namespace

Record ExifManager::exifInformationFromPHAssett(const PHAssetPtr& asset) {
    return exifInformationFromPHAssett(asset, /*forceDownload=*/false, {});
}

Record ExifManager::exifInformationFromPHAssett(
    const PHAssetPtr& asset, const AssetProgressHandler& progressHandler) {
    return exifInformationFromPHAssett(asset, /*forceDownload=*/false, progressHandler);
}

Record ExifManager::exifInformationFromPHAssett(
    const PHAssetPtr& asset, bool forceDownload, const AssetProgressHandler& progressHandler) {
    const bool isVideo = asset && asset->mediaType == PHAssetMediaType::Video;
    return isVideo ? recordOfVideo(asset, forceDownload)
                   : recordOfPhoto(asset, forceDownload, progressHandler);
}

void ExifManager::exifInformationFromPHAssettWithCompletionBlock(
    const PHAssetPtr& asset, RecordHandler completionBlock) {
    auto finish = [asset, completionBlock = std::move(completionBlock)](const AssetBytes& bytes) {
        DispatchQueue::mainQueue().async(
            [record = lighterRecord(asset, bytes), completionBlock] { completionBlock(record); });
    };
    DispatchQueue::globalQueue().async([asset, finish = std::move(finish)] {
        if (!asset) {
            finish({});
            return;
        }
        PHImageManager::defaultManager().requestImageDataForAsset(
            *asset, {}, [finish](const auto& data, const auto&, auto, const auto& info) {
                DispatchQueue::globalQueue().async([finish, data, info] { finish({data, info}); });
            });
    });
}

} // namespace exifcard

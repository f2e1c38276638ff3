#include "library/ExifManager.h"

#include "library/AssetFetch.h"
#include "library/LocalImageFiles.h"
#include "library/QueueManager.h"
#include "metadata/ExifInformation.h"
#include "platform/foundation/Log.h"
#include "platform/photos/PHContentEditingInput.h"
#include "platform/photos/PHPhotoLibrary.h"

#include <algorithm>
#include <array>

namespace exifcard {
namespace {

using Record = ExifManager::Record;

/// Where the device keeps its own photos, and where its simulator does.
constexpr std::string_view kLibraryFolders[] = {"mobile/Media/", "CoreSimulator/Devices/"};

Record recordOfWholeFile(const URL& url, const PHAssetPtr& asset) {
    auto complete = ExifManager::exifinformationFromNSURL(url);
    complete->location = asset->location;
    complete->dateTaken = complete->dateTaken ? complete->dateTaken : asset->creationDate;
    complete->phAsset = asset;
    takeScreenShotFlag(*complete, *asset);
    return complete;
}

bool isInDeviceLibrary(const URL& url) {
    return url.isFileURL() && std::ranges::any_of(kLibraryFolders, [&url](std::string_view folder) {
        return url.absoluteString().find(folder) != std::string::npos;
    });
}

bool mayReadLibrary() {
    const auto status = PHPhotoLibrary::authorizationStatus();
    return status == PHAuthorizationStatus::Authorized || status == PHAuthorizationStatus::Limited;
}

} // namespace

void ExifManager::fetchCompleteExifInformationsFor(const Record& record, RecordHandler completionBlock) {
    fetchCompleteExifInformationsFor(record, /*forceDownload=*/false, std::move(completionBlock));
}

void ExifManager::fetchCompleteExifInformationsFor(
    const Record& record, bool forceDownload, RecordHandler completionBlock) {
    record->isFetchingFullInfo = true;
    const bool mayUseNetwork = isNetworkPermitted(forceDownload);
    const bool isOutOfReach = record->imageResultIsInCloud && !mayUseNetwork;
    if (isOutOfReach || !record->phAsset) {
        completionBlock(record);
        return;
    }
    requestContentEditingInputWithOptions(*record->phAsset, {.networkAccessAllowed = mayUseNetwork},
        [record, completionBlock = std::move(completionBlock)](const auto& input, const auto& /*info*/) {
            QueueManager::sharedInstance().completeEXIFFetchingQueue->async([=] {
                const bool hasFile = input && input->fullSizeImageURL;
                const auto complete =
                    hasFile ? recordOfWholeFile(*input->fullSizeImageURL, record->phAsset) : record;
                complete->didFetchedFullInfo = true;
                completionBlock(complete);
            });
        });
}

PHAssetPtr ExifManager::assetInPhotosAppForFileWithURL(
    const URL& url, const std::optional<Date>& withCreationDate) {
    if (!mayReadLibrary()) {
        return nullptr;
    }
    debugLog("assetInPhotosAppForFileWithURL: %@ %@",
        {url.absoluteString(), withCreationDate ? Value(*withCreationDate) : nothing()});
    if (!withCreationDate || !isInDeviceLibrary(url)) {
        return nullptr;
    }
    const std::string name = stringByDeletingPathExtension(url.lastPathComponent());
    const auto identifier = std::string_view(name).substr(0, name.find('_'));
    auto asset = LocalImageFiles::assetWithPartialLocalIdentifier(identifier);
    if (!asset) {
        asset = LocalImageFiles::assetWithCreationDate(withCreationDate);
    }
    const std::string found = asset ? asset->localIdentifier : Value().description();
    debugLog("PHAsset %@", {found});
    debugLog("LocalIdentifier %@ vs %@", {found, identifier});
    return asset;
}

} // namespace exifcard

#include "platform/photos/PHAssetResource.h"

#include "platform/photos/AssetFiles.h"
#include "platform/photos/Authorization.h"
#include "platform/photos/PHAsset.h"
#include "platform/photos/PhotoCatalogue.h"

#include <algorithm>

namespace exifcard {
namespace {

PHAssetResource resourceOf(const StoredFile& file, const PHAsset& asset) {
    PHAssetResource resource;
    resource.type = file.type;
    resource.originalFilename = file.displayName();
    resource.uniformTypeIdentifier = file.uniformTypeIdentifier;
    resource.assetLocalIdentifier = asset.localIdentifier;
    resource.fileNumber = file.file.number;
    return resource;
}

} // namespace

std::vector<PHAssetResource> PHAssetResource::assetResourcesForAsset(const PHAsset& asset) {
    std::vector<PHAssetResource> resources;
    if (!isLibraryReadable()) {
        return resources;
    }
    for (const StoredFile& file : filesOfAsset(*PhotoCatalogue::shared(), asset.localIdentifier)) {
        resources.push_back(resourceOf(file, asset));
        if (file.embeddedVideoLength > 0) {
            PHAssetResource& video = resources.emplace_back(resources.back());
            video.type = PHAssetResourceType::PairedVideo;
            video.uniformTypeIdentifier = "public.mpeg-4";
            video.embeddedOffset = file.embeddedVideoOffset;
            video.embeddedLength = file.embeddedVideoLength;
        }
    }
    std::ranges::stable_sort(resources, {}, &PHAssetResource::type);
    return resources;
}

} // namespace exifcard

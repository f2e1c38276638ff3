#include "platform/photos/Library.h"

#include "platform/foundation/Predicate.h"
#include "platform/photos/PHAssetResource.h"

namespace exifcard {

std::string Library::nameOf(const PHAsset& asset) {
    const auto resources = PHAssetResource::assetResourcesForAsset(asset);
    return resources.empty() ? "?" : resources.front().originalFilename;
}

std::string Library::namesInOrder(const std::vector<PHAssetPtr>& assets) {
    std::string text;
    for (const PHAssetPtr& asset : assets) {
        text += text.empty() ? "" : " ";
        text += asset ? nameOf(*asset) : "null";
    }
    return text;
}

std::string Library::names(const PHAssetFetchResultPtr& result) {
    return result ? namesInOrder(result->objectsInRange(0, result->count())) : "null";
}

PHAssetPtr Library::assetNamed(std::string_view name) {
    PHFetchOptions options;
    options.includeHiddenAssets = true;
    options.includeAllBurstAssets = true;
    options.predicate = Predicate::predicateWithFormat("filename = %@", {name});
    return PHAsset::fetchAssetsWithOptions(options)->firstObject();
}

} // namespace exifcard

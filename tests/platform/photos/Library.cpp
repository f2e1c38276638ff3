#include "platform/photos/Library.h"

#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/Predicate.h"
#include "platform/photos/PHAssetResource.h"

namespace exifcard {

PHAssetPtr Library::addElsewhere(const std::shared_ptr<AssetByteSource>& source,
    const std::string& sample,
    const PHAsset& properties) const {
    catalogue()->setByteSource("slow", source);
    CatalogueWriter writer(catalogue());
    auto asset = photo(sample, properties);
    asset.files.front().folder =
        writer.storeFolder(writer.storeRoot({.path = EXIFCARD_TEST_DATA, .kind = "slow"}), "");
    writer.storeAsset(asset);
    writer.commit();
    return assetNamed(sample);
}

void Library::runUntil(const std::function<bool()>& isSo) {
    while (!isSo()) { // The test's time limit is the failure.
        MainRunLoop::drain();
    }
}

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

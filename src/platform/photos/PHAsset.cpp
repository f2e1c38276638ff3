#include "platform/photos/PHAsset.h"

#include "platform/photos/AssetFetchResult.h"
#include "platform/photos/Authorization.h"
#include "platform/photos/PHAssetCollection.h"
#include "platform/photos/PhotoCatalogue.h"

#include <fmt/format.h>

namespace exifcard {
namespace {

/// So many pictures stand for an album.
constexpr std::size_t kMostKeyAssets = 3;

PHAssetFetchResultPtr fetch(const AssetScope& scope, const PHFetchOptions& options) {
    QueryText query = assetQuery(scope, options);
    return AssetFetchResult::make(isLibraryReadable() ? PhotoCatalogue::shared() : nullptr, std::move(query),
        options.wantsIncrementalChangeDetails);
}

} // namespace

PHAssetFetchResultPtr PHAsset::fetchAssetsWithOptions(const PHFetchOptions& options) {
    return fetch({}, options);
}

PHAssetFetchResultPtr PHAsset::fetchAssetsWithMediaType(
    PHAssetMediaType mediaType, const PHFetchOptions& options) {
    return fetch(
        {.condition = fmt::format("assets.media_type = {}", static_cast<std::int64_t>(mediaType))}, options);
}

PHAssetFetchResultPtr PHAsset::fetchAssetsInAssetCollection(
    const PHAssetCollection& collection, const PHFetchOptions& options) {
    return fetch(scopeOfCollection(collection), options);
}

PHAssetFetchResultPtr PHAsset::fetchAssetsWithLocalIdentifiers(
    std::span<const std::string> identifiers, const PHFetchOptions& options) {
    return fetch(scopeOfIdentifiers(identifiers), options);
}

PHAssetFetchResultPtr PHAsset::fetchAssetsWithBurstIdentifier(
    const std::string& burstIdentifier, const PHFetchOptions& options) {
    return fetch(scopeOfBurst(burstIdentifier), options);
}

PHAssetFetchResultPtr PHAsset::fetchKeyAssetsInAssetCollection(
    const PHAssetCollection& collection, const PHFetchOptions& options) {
    PHFetchOptions newest = options;
    if (newest.sortDescriptors.empty()) {
        newest.sortDescriptors = {{"creationDate", false}, {"modificationDate", false}};
    }
    newest.fetchLimit = kMostKeyAssets;
    auto assets = fetchAssetsInAssetCollection(collection, newest);
    return assets->count() == 0 ? nullptr : assets;
}

} // namespace exifcard

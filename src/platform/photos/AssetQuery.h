#pragma once

#include "platform/photos/PHAssetCollection.h"
#include "platform/photos/PHFetchOptions.h"
#include "platform/photos/QueryText.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace exifcard {

/// Which assets a fetch is about, before its options.
struct AssetScope {
    std::string_view tables = "assets";
    std::string condition = {}; ///< Empty: all.
    std::vector<Value> arguments = {};
    std::string_view order = "assets.created, assets.modified, assets.id"; ///< Without sort descriptors.
    enum class Hidden { AsOptionsSay, Too, Only } hidden = Hidden::AsOptionsSay;
    bool showsWholeBursts = false;
};

/// The assets of an album of the user or of the disk, or of a smart one.
AssetScope scopeOfCollection(const PHAssetCollection& collection);
AssetScope scopeOfIdentifiers(std::span<const std::string> identifiers);
AssetScope scopeOfBurst(const std::string& burstIdentifier);

/// Selects the numbers of the assets, in order.
/// @throws PlatformException for keys and conditions that are not supported.
QueryText assetQuery(const AssetScope& scope, const PHFetchOptions& options);

} // namespace exifcard

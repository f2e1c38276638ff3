#include "categories/PHAssetResource+Extension.h"

#include <algorithm>
#include <vector>

namespace exifcard {

std::optional<PHAssetResource> assetResourcesForAsset(
    const std::shared_ptr<const PHAsset>& asset, PHAssetResourceType type) {
    const auto resources =
        asset ? PHAssetResource::assetResourcesForAsset(*asset) : std::vector<PHAssetResource>();
    const auto found = std::ranges::find(resources, type, &PHAssetResource::type);
    return found != resources.end() ? std::optional(*found) : std::nullopt;
}

} // namespace exifcard

#pragma once

#include "platform/photos/PHAssetResource.h"

#include <memory>
#include <optional>

namespace exifcard {

/// The first of the asset's files of that type; nothing without one, and for a null asset.
std::optional<PHAssetResource> assetResourcesForAsset(
    const std::shared_ptr<const PHAsset>& asset, PHAssetResourceType type);

} // namespace exifcard

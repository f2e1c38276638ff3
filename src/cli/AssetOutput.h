#pragma once

#include "platform/photos/PHAsset.h"

#include <string>
#include <vector>

namespace exifcard {

struct SessionOptions;

/// The assets one under the other, or an object each.
std::string assetsText(const std::vector<PHAssetPtr>& assets, const SessionOptions& options);

/// The same, each with the rows of its card.
std::string assetsWithRows(const std::vector<PHAssetPtr>& assets, const SessionOptions& options);

} // namespace exifcard

#pragma once

#include "platform/photos/PHAssetCollection.h"

#include <string>
#include <vector>

namespace exifcard {

/// The user's albums and those of folders, then the library's own. Blocks.
std::vector<PHAssetCollectionPtr> allAlbums();

/// The first album of that title or identifier; null without one. Blocks.
PHAssetCollectionPtr albumNamed(const std::string& name);

} // namespace exifcard

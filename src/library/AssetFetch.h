#pragma once

#include "library/ExifManager.h"

namespace exifcard {

// Steps of the reading of assets that its sources share.

/// Whether the originals of assets may be brought from elsewhere.
bool isNetworkPermitted(bool forceDownload);
/// Whether the picture is a screenshot, as its asset tells.
void takeScreenShotFlag(ExifInformation& record, const PHAsset& asset);
/// The pixels of the picture that a DNG develops to; unchanged for what is none.
void takeDimensionsOfDNG(ExifInformation& record, const Data& data);
/// The data for a debug line.
std::string descriptionOfData(const std::optional<Data>& data);

/// The record of a video of the library. Blocks.
ExifManager::Record recordOfVideo(const PHAssetPtr& asset, bool forceDownload);

} // namespace exifcard

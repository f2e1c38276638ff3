#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace exifcard {

struct PHAsset;

enum class PHAssetResourceType : std::int64_t {
    Photo = 1,
    Video = 2,
    Audio = 3,
    AlternatePhoto = 4, ///< The RAW of a RAW + JPEG pair.
    FullSizePhoto = 5,  ///< The edited rendition.
    FullSizeVideo = 6,
    AdjustmentData = 7,
    AdjustmentBasePhoto = 8,
    PairedVideo = 9, ///< The moving half of a live photo.
    FullSizePairedVideo = 10,
    AdjustmentBasePairedVideo = 11,
    AdjustmentBaseVideo = 12,
    PhotoProxy = 19
};

/// One file that belongs to an asset.
struct PHAssetResource {
    PHAssetResourceType type = PHAssetResourceType::Photo;
    std::string originalFilename;      ///< "IMG_0001.HEIC"; bytes that are no UTF-8 come as U+FFFD.
    std::string uniformTypeIdentifier; ///< "public.heic"
    std::string assetLocalIdentifier;
    std::int64_t fileNumber = 0;     ///< Its file in the catalogue.
    std::int64_t embeddedOffset = 0; ///< Of a video within a motion photo's file, in bytes,
    std::int64_t embeddedLength = 0; ///< and its length; 0: the whole file.

    /// In ascending order of type: the original first. Empty for an asset that the library does not hold.
    static std::vector<PHAssetResource> assetResourcesForAsset(const PHAsset& asset);
};

} // namespace exifcard

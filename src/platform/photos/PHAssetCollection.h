#pragma once

#include "platform/foundation/Date.h"
#include "platform/photos/PHFetchOptions.h"
#include "platform/photos/PHFetchResult.h"

#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <string>

namespace exifcard {

struct PHAsset;
struct PHAssetCollection;
using PHAssetCollectionPtr = std::shared_ptr<const PHAssetCollection>;
using PHAssetCollectionFetchResult = PHFetchResult<PHAssetCollection>;
using PHAssetCollectionFetchResultPtr = std::shared_ptr<const PHAssetCollectionFetchResult>;

enum class PHAssetCollectionType : std::int64_t { Album = 1, SmartAlbum = 2, Moment = 3 };

/// Which kind of album; any other number is one that holds nothing.
enum class PHAssetCollectionSubtype : std::int64_t {
    AlbumRegular = 2,
    AlbumSyncedEvent = 3,
    AlbumSyncedFaces = 4,
    AlbumSyncedAlbum = 5, ///< A folder of the disk.
    AlbumImported = 6,
    AlbumMyPhotoStream = 100,
    AlbumCloudShared = 101,
    SmartAlbumGeneric = 200,
    SmartAlbumPanoramas = 201,
    SmartAlbumVideos = 202,
    SmartAlbumFavorites = 203,
    SmartAlbumTimelapses = 204,
    SmartAlbumAllHidden = 205,
    SmartAlbumRecentlyAdded = 206,
    SmartAlbumBursts = 207,
    SmartAlbumSlomoVideos = 208,
    SmartAlbumUserLibrary = 209,
    SmartAlbumSelfPortraits = 210,
    SmartAlbumScreenshots = 211,
    SmartAlbumDepthEffect = 212,
    SmartAlbumLivePhotos = 213,
    SmartAlbumAnimated = 214,
    SmartAlbumLongExposures = 215,
    SmartAlbumUnableToUpload = 216,
    SmartAlbumRAW = 217,
    SmartAlbumCinematic = 218,
    SmartAlbumSpatial = 219,
    SmartAlbumScreenRecordings = 220,
    Any = std::numeric_limits<std::int64_t>::max()
};

/// What `estimatedAssetCount` answers where it is not known.
inline constexpr std::int64_t kPHCollectionCountNotFound = std::numeric_limits<std::int64_t>::max();

/// An album as it was when it was fetched. A smart album has no contents of its own: it is a question.
/// Fetches behave as those of `PHAsset`.
struct PHAssetCollection {
    std::string localIdentifier = {}; ///< "…/L0/040"
    std::optional<std::string> localizedTitle = std::nullopt;
    PHAssetCollectionType assetCollectionType = PHAssetCollectionType::Album;
    PHAssetCollectionSubtype assetCollectionSubtype = PHAssetCollectionSubtype::AlbumRegular;
    std::int64_t estimatedAssetCount = kPHCollectionCountNotFound; ///< Without hidden ones.
    std::optional<Date> startDate = std::nullopt; ///< Of the oldest asset; of smart albums not known.
    std::optional<Date> endDate = std::nullopt;

    /// Without sort descriptors: in the user's order.
    static PHAssetCollectionFetchResultPtr fetchAssetCollectionsWithType(
        PHAssetCollectionType type, PHAssetCollectionSubtype subtype, const PHFetchOptions& options = {});
    static PHAssetCollectionFetchResultPtr fetchAssetCollectionsWithLocalIdentifiers(
        std::span<const std::string> identifiers, const PHFetchOptions& options = {});
    /// The albums that hold the asset, its folder's too; empty for any type but `Album`.
    static PHAssetCollectionFetchResultPtr fetchAssetCollectionsContainingAsset(
        const PHAsset& asset, PHAssetCollectionType type, const PHFetchOptions& options = {});
};

} // namespace exifcard

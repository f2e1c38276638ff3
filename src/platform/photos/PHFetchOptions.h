#pragma once

#include "platform/foundation/SortDescriptor.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace exifcard {

class Predicate;

/// What is fetched, and in which order.
///
/// Keys of assets: localIdentifier, creationDate, modificationDate, mediaType,
/// mediaSubtypes, duration, pixelWidth, pixelHeight, favorite or isFavorite,
/// hidden or isHidden, burstIdentifier and SELF; beyond the platform's own:
/// location, latitude, longitude, altitude, filename, title, rating, sourceType,
/// playbackStyle, representsBurst and addedDate. Keys of albums: localIdentifier, localizedTitle
/// or title, startDate, endDate, estimatedAssetCount. Any other key, and what
/// cannot be asked of a database, raises `PlatformException`.
struct PHFetchOptions {
    std::shared_ptr<const Predicate> predicate = nullptr; ///< Null: everything.
    std::vector<SortDescriptor> sortDescriptors = {};     ///< Empty: the library's own order.
    bool includeHiddenAssets = false;
    bool includeAllBurstAssets = false;        ///< Also the pictures of a burst that nobody picked.
    std::uint64_t includeAssetSourceTypes = 0; ///< Bits of `PHAsset::sourceType`; 0: all.
    std::size_t fetchLimit = 0;                ///< 0: none.
    bool wantsIncrementalChangeDetails = true; ///< False: after a change only "reload" is told.
};

} // namespace exifcard

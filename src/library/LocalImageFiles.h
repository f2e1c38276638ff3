#pragma once

#include "platform/foundation/Date.h"
#include "platform/foundation/Predicate.h"
#include "platform/foundation/Value.h"
#include "platform/photos/PHAsset.h"
#include "platform/photos/PHAssetCollection.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace exifcard {

class ExifInformation;

/// The questions that the lists ask the photo library. Every one is asked on the calling thread, which it
/// blocks on the disk; a completion is called before the operation returns. A library that may not be read
/// answers empty lists and finds nothing.
class LocalImageFiles {
public:
    using FetchHandler = std::function<void(const PHAssetFetchResultPtr& fetchResult)>;
    using AlbumsHandler = std::function<void(const std::vector<PHAssetCollectionPtr>& albums)>;

    static const LocalImageFiles& sharedInstance();
    LocalImageFiles(const LocalImageFiles&) = delete;
    LocalImageFiles& operator=(const LocalImageFiles&) = delete;

    /// The condition of the location filter in the settings, on favourites alone where told so.
    /// @return Null where everything is shown.
    static PredicatePtr predicateWithFavoritesOnly(bool favoritesOnly);

    /// The whole library.
    /// @param source, sourceSubType  Intended: taken and not used.
    /// @param sortBy  1: by modification, then creation date; any other the other way round.
    static void getPHFetchResultFromPhotosSource(std::int64_t source,
        std::int64_t sourceSubType,
        bool favoritesOnly,
        std::uint64_t sortBy,
        bool ascending,
        const FetchHandler& completionBlock);
    /// One album, by creation, then modification date.
    static void getPHFetchResultFromPHAssetCollection(const PHAssetCollection& album,
        bool favoritesOnly,
        bool ascending,
        const FetchHandler& completionBlock);
    /// The albums of that kind in the library's own order.
    static void allAlbumsFromPhotosSource(
        std::int64_t collectionType, std::int64_t collectionSubType, const AlbumsHandler& completionBlock);
    /// The album of the whole library, or nothing.
    static std::vector<PHAssetCollectionPtr> getCameraRollAssetCollection();

    /// The record of the asset of that identifier; null when there is none. Never on the main queue.
    static std::shared_ptr<ExifInformation> exifInfoOfPHAssetWithID(const std::string& localIdentifier);
    /// The name of the asset's photo, else of its video, else of the file in the info of an image request.
    /// @return Nothing when neither tells one.
    static std::optional<std::string> fileNameForPHAsset(const PHAssetPtr& asset, const DictionaryPtr& info);

    /// What was created less than a second before or after, the oldest first; nothing without a date.
    static std::optional<std::vector<PHAssetPtr>> assetsWithCreationDate(const std::optional<Date>& date);
    /// The latest of those; null when there is none.
    static PHAssetPtr assetWithCreationDate(const std::optional<Date>& date);
    /// The latest created of those whose identifier has that part, which must be long enough to mean one
    /// asset: 11 characters and five groups between hyphens. Else null.
    static PHAssetPtr assetWithPartialLocalIdentifier(std::string_view identifier);

private:
    LocalImageFiles() = default;
};

} // namespace exifcard

#include "library/LocalImageFiles.h"

#include "categories/PHAssetResource+Extension.h"
#include "library/ExifManager.h"
#include "metadata/ExifInformation.h"
#include "platform/foundation/Dictionary.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/URL.h"
#include "platform/photos/PHAssetResource.h"
#include "platform/photos/PHFetchOptions.h"
#include "platform/photos/PHImageInfoKeys.h"
#include "platform/uivalues/UIDevice.h"
#include "settings/PersistanceManager.h"

#include <algorithm>
#include <array>
#include <span>

namespace exifcard {
namespace {

constexpr std::uint64_t kSortByModificationDate = 1;
constexpr std::uint64_t kLocationFilterWithLocation = 1;
constexpr std::uint64_t kLocationFilterWithoutLocation = 2;
/// A creation date may differ by less than this, in seconds.
constexpr double kSameMoment = 1;
/// Less of an identifier may belong to many assets.
constexpr std::size_t kShortestPartOfIdentifier = 11;
constexpr std::ptrdiff_t kHyphensOfIdentifier = 4;

constexpr const char* kFavoritesOfEveryAlbum = "favorite = YES && (mediaType == %d || mediaType == %d)";

struct FilterTexts {
    std::uint64_t locationFilter;
    const char* favoritesOnly;
    const char* everything; ///< Null: no condition.
};

constexpr FilterTexts kFilterTexts[] = {
    {0, kFavoritesOfEveryAlbum, nullptr},
    {kLocationFilterWithLocation,
        "location != NULL && favorite = YES && (mediaType == %d || mediaType == %d)",
        "location != NULL && (mediaType == %d || mediaType == %d) "},
    {kLocationFilterWithoutLocation,
        "location == NULL && favorite = YES && (mediaType == %d || mediaType == %d)",
        "location == NULL && (mediaType == %d || mediaType == %d) "},
};

/// The predicate of a text whose two placeholders are the media types of photos and videos.
PredicatePtr predicateOnPhotosAndVideos(const char* format) {
    return Predicate::predicateWithFormat(format, {static_cast<std::int64_t>(PHAssetMediaType::Image),
                                                      static_cast<std::int64_t>(PHAssetMediaType::Video)});
}

std::vector<SortDescriptor> sortedBy(const char* first, const char* second, bool ascending) {
    return {{first, ascending}, {second, ascending}};
}

/// What was created between two moments, these left out.
struct Interval {
    Date from;
    Date to;
};

Interval intervalAround(Date date) {
    return {{date.secondsSince1970 - kSameMoment}, {date.secondsSince1970 + kSameMoment}};
}

PHAssetFetchResultPtr fetchWithin(const Interval& interval) {
    PHFetchOptions options;
    options.predicate = Predicate::predicateWithFormat(
        "(creationDate > %@) AND (creationDate < %@)", {interval.from, interval.to});
    options.sortDescriptors = {{"creationDate", true}};
    return PHAsset::fetchAssetsWithOptions(options);
}

/// Without what has left the library since.
template<class Object>
std::vector<std::shared_ptr<const Object>> objectsOf(const PHFetchResult<Object>& fetchResult) {
    auto objects = fetchResult.objectsInRange(0, fetchResult.count());
    std::erase(objects, nullptr);
    return objects;
}

std::optional<std::string> fileNameFromInfo(const DictionaryPtr& info) {
    const std::string* const url = info ? info->objectForKey(kPHImageFileURLKey).text() : nullptr;
    return url != nullptr ? std::optional(lastPathComponent(*url)) : std::nullopt;
}

} // namespace

const LocalImageFiles& LocalImageFiles::sharedInstance() {
    static const LocalImageFiles files;
    return files;
}

PredicatePtr LocalImageFiles::predicateWithFavoritesOnly(bool favoritesOnly) {
    const auto filter = PersistanceManager::sharedInstance().locationFilter();
    const auto* const texts = std::ranges::find(kFilterTexts, filter, &FilterTexts::locationFilter);
    if (texts == std::end(kFilterTexts)) {
        return nullptr; // Intended: an unknown filter shows everything, whatever is asked of favourites.
    }
    const char* const format = favoritesOnly ? texts->favoritesOnly : texts->everything;
    return format != nullptr ? predicateOnPhotosAndVideos(format) : nullptr;
}

void LocalImageFiles::getPHFetchResultFromPhotosSource(std::int64_t /*source*/,
    std::int64_t /*sourceSubType*/,
    bool favoritesOnly,
    std::uint64_t sortBy,
    bool ascending,
    const FetchHandler& completionBlock) {
    PHFetchOptions options;
    options.sortDescriptors = sortBy == kSortByModificationDate
                                  ? sortedBy("modificationDate", "creationDate", ascending)
                                  : sortedBy("creationDate", "modificationDate", ascending);
    options.includeAssetSourceTypes = kPHAssetSourceTypeUserLibrary | kPHAssetSourceTypeiTunesSynced;
    // Intended: the location filter does not count here.
    if (favoritesOnly) {
        options.predicate = predicateOnPhotosAndVideos(kFavoritesOfEveryAlbum);
    }
    completionBlock(PHAsset::fetchAssetsWithOptions(options));
}

void LocalImageFiles::getPHFetchResultFromPHAssetCollection(
    const PHAssetCollection& album, bool favoritesOnly, bool ascending, const FetchHandler& completionBlock) {
    PHFetchOptions options;
    options.sortDescriptors = sortedBy("creationDate", "modificationDate", ascending);
    if (favoritesOnly) {
        options.predicate = Predicate::predicateWithFormat("favorite = YES");
    }
    completionBlock(PHAsset::fetchAssetsInAssetCollection(album, options));
}

void LocalImageFiles::allAlbumsFromPhotosSource(
    std::int64_t collectionType, std::int64_t collectionSubType, const AlbumsHandler& completionBlock) {
    const auto albums = objectsOf(
        *PHAssetCollection::fetchAssetCollectionsWithType(static_cast<PHAssetCollectionType>(collectionType),
            static_cast<PHAssetCollectionSubtype>(collectionSubType)));
    debugLog("Returning %lu objects", {albums.size()});
    completionBlock(albums);
}

std::vector<PHAssetCollectionPtr> LocalImageFiles::getCameraRollAssetCollection() {
    auto albums = objectsOf(*PHAssetCollection::fetchAssetCollectionsWithType(
        PHAssetCollectionType::SmartAlbum, PHAssetCollectionSubtype::SmartAlbumUserLibrary));
    albums.resize(std::min<std::size_t>(albums.size(), 1));
    return albums;
}

std::shared_ptr<ExifInformation> LocalImageFiles::exifInfoOfPHAssetWithID(
    const std::string& localIdentifier) {
    const auto asset =
        PHAsset::fetchAssetsWithLocalIdentifiers(std::span(&localIdentifier, 1))->firstObject();
    return asset ? ExifManager::exifInformationFromPHAssett(asset) : nullptr;
}

std::optional<std::string> LocalImageFiles::fileNameForPHAsset(
    const PHAssetPtr& asset, const DictionaryPtr& info) {
    if (!isSystemVersionAtLeast("9.0") || !asset) {
        return fileNameFromInfo(info);
    }
    for (const auto type : {PHAssetResourceType::Photo, PHAssetResourceType::Video}) {
        if (const auto resource = assetResourcesForAsset(asset, type)) {
            return resource->originalFilename;
        }
    }
    return fileNameFromInfo(info);
}

std::optional<std::vector<PHAssetPtr>> LocalImageFiles::assetsWithCreationDate(
    const std::optional<Date>& date) {
    if (!date) {
        return std::nullopt;
    }
    const Interval interval = intervalAround(*date);
    auto assets = objectsOf(*fetchWithin(interval));
    debugLog("__ %@ and %ld", {Value(*date), assets.size()});
    debugLog("%@ and %@", {Value(interval.from), Value(interval.to)});
    return assets;
}

PHAssetPtr LocalImageFiles::assetWithCreationDate(const std::optional<Date>& date) {
    const auto assets = date ? objectsOf(*fetchWithin(intervalAround(*date))) : std::vector<PHAssetPtr>();
    for (const PHAssetPtr& asset : assets) {
        debugLog("ASSET_LOCAL_ID %@", {asset->localIdentifier});
    }
    return assets.empty() ? nullptr : assets.back();
}

PHAssetPtr LocalImageFiles::assetWithPartialLocalIdentifier(std::string_view identifier) {
    if (identifier.size() < kShortestPartOfIdentifier ||
        std::ranges::count(identifier, '-') < kHyphensOfIdentifier) {
        return nullptr;
    }
    PHFetchOptions options;
    options.predicate = Predicate::predicateWithFormat("(localIdentifier contains %@)", {identifier});
    options.sortDescriptors = {{"creationDate", true}};
    return PHAsset::fetchAssetsWithOptions(options)->lastObject();
}

} // namespace exifcard

#include "platform/photos/PHAssetCollection.h"

#include "platform/foundation/Array.h"
#include "platform/foundation/LocalizedString.h"
#include "platform/foundation/PlatformException.h"
#include "platform/foundation/Predicate.h"
#include "platform/photos/AssetRow.h"
#include "platform/photos/Authorization.h"
#include "platform/photos/CatalogueConnections.h"
#include "platform/photos/CatalogueTransaction.h"
#include "platform/photos/CollectionFetchResult.h"
#include "platform/photos/PHAsset.h"
#include "platform/photos/PhotoCatalogue.h"
#include "platform/photos/SmartAlbums.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace exifcard {
namespace {

/// A person has some hundreds; a disk may have as many folders as it likes.
constexpr std::int64_t kMostAlbums = 100'000;

/// What is shown of an album's assets: of a folder an index answers, of the user's album its list.
constexpr std::string_view kAlbums =
    "SELECT uuid, subtype, title, changed, CASE WHEN folder IS NULL THEN"
    " (SELECT COUNT(*) FROM album_assets JOIN assets ON assets.id = asset WHERE album = albums.id AND shown = 1)"
    " ELSE (SELECT COUNT(*) FROM assets WHERE assets.folder = albums.folder AND shown = 1) END,"
    " CASE WHEN folder IS NULL THEN"
    " (SELECT MIN(created) FROM album_assets JOIN assets ON assets.id = asset WHERE album = albums.id AND shown = 1)"
    " ELSE (SELECT MIN(created) FROM assets WHERE assets.folder = albums.folder AND shown = 1) END,"
    " CASE WHEN folder IS NULL THEN"
    " (SELECT MAX(created) FROM album_assets JOIN assets ON assets.id = asset WHERE album = albums.id AND shown = 1)"
    " ELSE (SELECT MAX(created) FROM assets WHERE assets.folder = albums.folder AND shown = 1) END"
    " FROM albums WHERE {} ORDER BY position, id LIMIT {}";

std::optional<Date> dateOf(const SQLiteStatement& row, int column) {
    return row.isNull(column) ? std::nullopt : std::optional(Date{row.real(column)});
}

PHAssetCollectionPtr albumFromRow(const SQLiteStatement& row) {
    auto album = std::make_shared<PHAssetCollection>();
    album->localIdentifier = row.text(0).value_or("") + std::string(kAlbumIdentifierSuffix);
    album->assetCollectionSubtype = static_cast<PHAssetCollectionSubtype>(row.integer(1));
    album->localizedTitle = row.text(2);
    album->estimatedAssetCount = row.integer(4);
    album->startDate = dateOf(row, 5);
    album->endDate = dateOf(row, 6);
    return album;
}

PHAssetCollectionPtr collectionOf(const SmartAlbum& smart) {
    return std::make_shared<PHAssetCollection>(PHAssetCollection{
        .localIdentifier = identifierOfSmartAlbum(smart),
        .localizedTitle = std::string(localizedString(smart.title)),
        .assetCollectionType = PHAssetCollectionType::SmartAlbum,
        .assetCollectionSubtype = smart.subtype,
    });
}

/// What an album answers for the keys that may be asked; nothing for any other.
std::optional<Value> valueOfKey(const PHAssetCollection& album, std::string_view key) {
    const auto date = [](const std::optional<Date>& moment) { return moment ? Value(*moment) : Value(); };
    if (key == "localIdentifier" || key == "SELF" || key.empty()) {
        return album.localIdentifier;
    }
    if (key == "localizedTitle" || key == "title") {
        return album.localizedTitle ? Value(*album.localizedTitle) : Value();
    }
    if (key == "startDate") {
        return date(album.startDate);
    }
    if (key == "endDate") {
        return date(album.endDate);
    }
    return key == "estimatedAssetCount" ? std::optional<Value>(album.estimatedAssetCount) : std::nullopt;
}

/// @throws PlatformException for a key that albums do not have.
KeyValueLookup lookupOf(const PHAssetCollectionPtr& album) {
    return [album](std::string_view key) {
        auto value = valueOfKey(*album, key);
        if (!value) {
            throw PlatformException("NSInvalidArgumentException",
                fmt::format("Unsupported predicate in fetch options: albums have no {}", key));
        }
        return *value;
    };
}

/// Albums are few: they are chosen and sorted here.
void applyOptions(FetchedCollections& fetched, const PHFetchOptions& options) {
    std::vector<KeyValueLookup> lookups;
    std::vector<std::size_t> kept;
    for (std::size_t index = 0; index < fetched.collections.size(); ++index) {
        auto lookup = lookupOf(fetched.collections[index]);
        if (!options.predicate || options.predicate->evaluateWithObject(lookup)) {
            lookups.push_back(std::move(lookup));
            kept.push_back(index);
        }
    }
    FetchedCollections result{.change = fetched.change};
    for (const std::size_t position : sortedPositions(lookups, options.sortDescriptors)) {
        if (options.fetchLimit == 0 || result.collections.size() < options.fetchLimit) {
            result.collections.push_back(fetched.collections[kept[position]]);
            result.changes.push_back(fetched.changes[kept[position]]);
        }
    }
    fetched = std::move(result);
}

void addAlbums(FetchedCollections& fetched,
    SQLiteDatabase& database,
    std::string_view condition,
    std::span<const Value> arguments = {}) {
    auto rows = database.query(fmt::format(kAlbums, condition, kMostAlbums), arguments);
    while (rows.step()) {
        fetched.collections.push_back(albumFromRow(rows));
        fetched.changes.push_back(rows.integer(3));
    }
}

void addSmartAlbums(
    FetchedCollections& fetched, const std::function<bool(const PHAssetCollection&)>& isWanted) {
    for (const SmartAlbum& smart : smartAlbums()) {
        auto album = collectionOf(smart);
        if (isWanted(*album)) {
            fetched.collections.push_back(std::move(album));
            fetched.changes.push_back(0);
        }
    }
}

using Fill = std::function<void(FetchedCollections& fetched, SQLiteDatabase& database)>;

FetchedCollections fetchedNow(SQLiteDatabase& database, const Fill& fill) {
    FetchedCollections fetched;
    database.execute("BEGIN"); // All of one moment.
    fetched.change = lastChange(database);
    fill(fetched, database);
    return fetched;
}

PHAssetCollectionFetchResultPtr fetch(const PHFetchOptions& options, const Fill& fill) {
    const auto catalogue = isLibraryReadable() ? PhotoCatalogue::shared() : nullptr;
    auto question = [catalogue, options, fill] {
        const auto database = catalogue ? catalogue->connections().reader() : nullptr;
        FetchedCollections fetched = database ? fetchedNow(*database, fill) : FetchedCollections{};
        applyOptions(fetched, options);
        return fetched;
    };
    return std::make_shared<CollectionFetchResult>(
        std::move(question), options.wantsIncrementalChangeDetails);
}

} // namespace

PHAssetCollectionFetchResultPtr PHAssetCollection::fetchAssetCollectionsWithType(
    PHAssetCollectionType type, PHAssetCollectionSubtype subtype, const PHFetchOptions& options) {
    return fetch(options, [type, subtype](FetchedCollections& fetched, SQLiteDatabase& database) {
        const bool isAny = subtype == PHAssetCollectionSubtype::Any;
        const Value wanted = static_cast<std::int64_t>(subtype);
        if (type == PHAssetCollectionType::Album && isAny) {
            addAlbums(fetched, database, "1");
        } else if (type == PHAssetCollectionType::Album) {
            addAlbums(fetched, database, "subtype = ?", std::span(&wanted, 1));
        } else if (type == PHAssetCollectionType::SmartAlbum) {
            addSmartAlbums(fetched, [isAny, subtype](const PHAssetCollection& album) {
                return isAny || album.assetCollectionSubtype == subtype;
            });
        }
    });
}

PHAssetCollectionFetchResultPtr PHAssetCollection::fetchAssetCollectionsWithLocalIdentifiers(
    std::span<const std::string> identifiers, const PHFetchOptions& options) {
    return fetch(options, [wanted = std::vector(identifiers.begin(), identifiers.end())](
                              FetchedCollections& fetched, SQLiteDatabase& database) {
        for (const std::string& identifier : wanted) {
            const Value uuid = uuidOfIdentifier(identifier);
            addAlbums(fetched, database, "uuid = ?", std::span(&uuid, 1));
        }
        addSmartAlbums(fetched, [&wanted](const PHAssetCollection& album) {
            return std::ranges::count(wanted, album.localIdentifier) != 0;
        });
    });
}

PHAssetCollectionFetchResultPtr PHAssetCollection::fetchAssetCollectionsContainingAsset(
    const PHAsset& asset, PHAssetCollectionType type, const PHFetchOptions& options) {
    return fetch(options, [type, uuid = uuidOfIdentifier(asset.localIdentifier)](
                              FetchedCollections& fetched, SQLiteDatabase& database) {
        if (type == PHAssetCollectionType::Album) {
            const std::array<Value, 2> arguments = {uuid, uuid};
            addAlbums(fetched, database,
                "(id IN (SELECT album FROM album_assets JOIN assets ON assets.id = asset WHERE assets.uuid = ?)"
                " OR folder IN (SELECT assets.folder FROM assets WHERE assets.uuid = ? AND vanished = 0))",
                arguments);
        }
    });
}

} // namespace exifcard

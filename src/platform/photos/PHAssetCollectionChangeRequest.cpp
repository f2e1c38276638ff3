#include "platform/photos/PHAssetCollectionChangeRequest.h"

#include "platform/foundation/PlatformException.h"
#include "platform/foundation/UTF8.h"
#include "platform/photos/AssetRow.h"
#include "platform/photos/ChangeBlock.h"

#include <functional>

namespace exifcard {
namespace {

/// Longer than any title that a person gives.
constexpr std::size_t kLongestTitleInBytes = 1000;

std::int64_t numberOf(
    SQLiteDatabase& database, std::string_view sql, std::initializer_list<Value> arguments) {
    auto query = database.query(sql, arguments);
    return query.step() ? query.integer(0) : 0;
}

/// Works on one album of the user.
using AlbumStep = std::function<void(SQLiteDatabase& database, std::int64_t album)>;

void addStep(const std::string& identifier, AlbumStep work) {
    auto step = [uuid = uuidOfIdentifier(identifier), work = std::move(work)](
                    SQLiteDatabase& database, std::int64_t change) -> std::optional<PHError> {
        const std::int64_t album =
            numberOf(database, "SELECT id FROM albums WHERE uuid = ? AND folder IS NULL", {uuid});
        if (album != 0) {
            work(database, album);
            database.execute("UPDATE albums SET changed = ? WHERE id = ?", {change, album});
        }
        if (album != 0 || database.hasFailed()) {
            return std::nullopt; // A failure is told at the end of the block.
        }
        return PHError{PHErrorCode::ChangeNotSupported, "That album is none of the user's own."};
    };
    ChangeBlock::current().add(std::move(step));
}

std::vector<std::string> uuidsOf(std::span<const PHAssetPtr> assets) {
    std::vector<std::string> uuids;
    for (const PHAssetPtr& asset : assets) {
        if (asset) {
            uuids.push_back(uuidOfIdentifier(asset->localIdentifier));
        }
    }
    return uuids;
}

/// Puts the asset there, unless it is in the album already. False when it is or the library does not hold it.
bool insertAsset(
    SQLiteDatabase& database, std::int64_t album, const std::string& uuid, std::int64_t position) {
    const std::int64_t asset = numberOf(database,
        "SELECT id FROM assets WHERE uuid = ? AND trashed = 0"
        " AND NOT EXISTS (SELECT 1 FROM album_assets WHERE album = ? AND asset = assets.id)",
        {uuid, album});
    if (asset == 0) {
        return false;
    }
    database.execute(
        "INSERT INTO album_assets (album, position, asset) VALUES (?, ?, ?)", {album, position, asset});
    return true;
}

std::int64_t endOf(SQLiteDatabase& database, std::int64_t album) {
    return numberOf(
        database, "SELECT COALESCE(MAX(position), 0) + 1 FROM album_assets WHERE album = ?", {album});
}

/// Moves what stands from `position` on by `places` toward the end.
void makeRoom(SQLiteDatabase& database, std::int64_t album, std::int64_t position, std::int64_t places) {
    // In two steps, for no two may stand on one place in between.
    database.execute("UPDATE album_assets SET position = -position - ? WHERE album = ? AND position >= ?",
        {places, album, position});
    database.execute(
        "UPDATE album_assets SET position = -position WHERE album = ? AND position < 0", {album});
}

void requireTitle(const std::string& title) {
    if (title.size() > kLongestTitleInBytes || !isValidUTF8(title)) {
        throw PlatformException("NSInvalidArgumentException", "the title of an album is too long or no text");
    }
}

} // namespace

PHAssetCollectionChangeRequest PHAssetCollectionChangeRequest::creationRequestForAssetCollectionWithTitle(
    const std::string& title) {
    ChangeBlock::current();
    requireTitle(title);
    const std::string uuid = makeUUID();
    ChangeBlock::current().add([uuid, title](SQLiteDatabase& database, std::int64_t change) {
        database.execute("INSERT INTO albums (uuid, subtype, title, position, changed)"
                         " VALUES (?, ?, ?, (SELECT COALESCE(MAX(position), 0) + 1 FROM albums), ?)",
            {uuid, static_cast<std::int64_t>(PHAssetCollectionSubtype::AlbumRegular), title, change});
        return std::optional<PHError>();
    });
    return {uuid + std::string(kAlbumIdentifierSuffix), nullptr};
}

PHAssetCollectionChangeRequest PHAssetCollectionChangeRequest::changeRequestForAssetCollection(
    const PHAssetCollection& collection, const PHAssetFetchResultPtr& assets) {
    ChangeBlock::current();
    return {collection.localIdentifier, assets};
}

void PHAssetCollectionChangeRequest::deleteAssetCollections(
    std::span<const PHAssetCollectionPtr> collections) {
    ChangeBlock::current();
    for (const PHAssetCollectionPtr& collection : collections) {
        addStep(
            collection ? collection->localIdentifier : "", [](SQLiteDatabase& database, std::int64_t album) {
                database.execute("DELETE FROM album_assets WHERE album = ?", {album});
                database.execute("DELETE FROM albums WHERE id = ?", {album});
            });
    }
}

void PHAssetCollectionChangeRequest::setTitle(const std::string& title) {
    ChangeBlock::current();
    requireTitle(title);
    addStep(_identifier, [title](SQLiteDatabase& database, std::int64_t album) {
        database.execute("UPDATE albums SET title = ? WHERE id = ?", {title, album});
    });
}

void PHAssetCollectionChangeRequest::addAssets(std::span<const PHAssetPtr> assets) {
    addStep(_identifier, [uuids = uuidsOf(assets)](SQLiteDatabase& database, std::int64_t album) {
        std::int64_t position = endOf(database, album);
        for (const std::string& uuid : uuids) {
            position += insertAsset(database, album, uuid, position) ? 1 : 0;
        }
    });
}

void PHAssetCollectionChangeRequest::insertAssets(std::span<const PHAssetPtr> assets, std::size_t index) {
    addStep(_identifier, [uuids = uuidsOf(assets), index](SQLiteDatabase& database, std::int64_t album) {
        // Indexes count what a fetch shows.
        const std::int64_t there = numberOf(database,
            "SELECT position FROM album_assets JOIN assets ON assets.id = asset WHERE album = ? AND shown = 1"
            " ORDER BY position LIMIT 1 OFFSET ?",
            {album, static_cast<std::int64_t>(index)});
        std::int64_t position = there != 0 ? there : endOf(database, album);
        makeRoom(database, album, position, static_cast<std::int64_t>(uuids.size()));
        for (const std::string& uuid : uuids) {
            position += insertAsset(database, album, uuid, position) ? 1 : 0;
        }
    });
}

void PHAssetCollectionChangeRequest::removeAssets(std::span<const PHAssetPtr> assets) {
    addStep(_identifier, [uuids = uuidsOf(assets)](SQLiteDatabase& database, std::int64_t album) {
        for (const std::string& uuid : uuids) {
            database.execute(
                "DELETE FROM album_assets WHERE album = ? AND asset = (SELECT id FROM assets WHERE uuid = ?)",
                {album, uuid});
        }
    });
}

void PHAssetCollectionChangeRequest::removeAssetsAtIndexes(std::span<const std::size_t> indexes) {
    if (!_assets) {
        throw PlatformException(
            "NSInvalidArgumentException", "the change request was made without a fetch result");
    }
    std::vector<PHAssetPtr> removed;
    for (const std::size_t index : indexes) {
        removed.push_back(_assets->objectAtIndex(index));
    }
    removeAssets(removed);
}

} // namespace exifcard

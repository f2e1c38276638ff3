#include "platform/photos/AssetQuery.h"

#include "platform/photos/AssetRow.h"
#include "platform/photos/Authorization.h"
#include "platform/photos/SmartAlbums.h"

#include <fmt/format.h>

#include <utility>

namespace exifcard {
namespace {

using Kind = QueryKey::Kind;

constexpr QueryKey kAssetKeys[] = {
    {"SELF", "assets.uuid", Kind::Identifier, kAssetIdentifierSuffix},
    {"localIdentifier", "assets.uuid", Kind::Identifier, kAssetIdentifierSuffix},
    {"creationDate", "assets.created", Kind::Date},
    {"modificationDate", "assets.modified", Kind::Date},
    {"addedDate", "assets.added", Kind::Date},
    {"mediaType", "assets.media_type"},
    {"mediaSubtypes", "assets.subtypes"},
    {"mediaSubtype", "assets.subtypes"},
    {"playbackStyle", "assets.playback"},
    {"sourceType", "assets.source_type"},
    {"duration", "assets.duration"},
    {"pixelWidth", "assets.width"},
    {"pixelHeight", "assets.height"},
    {"favorite", "assets.favorite"},
    {"isFavorite", "assets.favorite"},
    {"hidden", "assets.hidden"},
    {"isHidden", "assets.hidden"},
    {"burstIdentifier", "assets.burst", Kind::Text},
    {"representsBurst", "assets.represents_burst"},
    {"location", "assets.located", Kind::Presence},
    {"latitude", "assets.latitude"},
    {"longitude", "assets.longitude"},
    {"altitude", "assets.altitude"},
    {"filename", "CAST(assets.name AS TEXT)", Kind::Text},
    {"title", "assets.title", Kind::Text},
    {"rating", "assets.rating"},
};

/// Joins conditions by AND.
class Conditions {
public:
    explicit Conditions(QueryText& query) : _query(query) {}

    void begin() { _query.add(std::exchange(_separator, " AND ")); }
    void add(std::string_view condition) {
        begin();
        _query.add(condition);
    }

private:
    QueryText& _query;
    std::string_view _separator = " WHERE ";
};

void addVisibility(Conditions& conditions, const AssetScope& scope, const PHFetchOptions& options) {
    using Hidden = AssetScope::Hidden;
    const bool showsHidden = scope.hidden != Hidden::AsOptionsSay || options.includeHiddenAssets;
    const bool showsBursts = scope.showsWholeBursts || options.includeAllBurstAssets;
    if (!showsHidden && !showsBursts) {
        conditions.add("assets.shown = 1"); // As the indexes spell it.
        return;
    }
    conditions.add("assets.vanished = 0 AND assets.trashed = 0");
    if (!showsHidden) {
        conditions.add("assets.hidden = 0");
    }
    if (scope.hidden == Hidden::Only) {
        conditions.add("assets.hidden <> 0");
    }
    if (!showsBursts) {
        conditions.add(
            "(assets.burst IS NULL OR assets.represents_burst <> 0 OR assets.burst_selection & 2)");
    }
}

/// What lies below the folders that the user allowed.
void addLimits(Conditions& conditions, QueryText& query) {
    const auto folders = allowedFolders();
    if (!folders) {
        return;
    }
    conditions.add(
        "assets.folder IN (SELECT folders.id FROM folders JOIN roots ON roots.id = folders.root WHERE 0");
    for (const std::string& folder : *folders) {
        query.add(" OR instr(CAST(roots.path || '/' || folders.path || '/' AS BLOB), ?) = 1",
            Value(Data::fromText(folder + '/')));
    }
    query.add(")");
}

} // namespace

AssetScope scopeOfCollection(const PHAssetCollection& collection) {
    if (const SmartAlbum* const album = smartAlbumOfSubtype(collection.assetCollectionSubtype)) {
        AssetScope scope{.condition = std::string(album->condition)};
        scope.hidden = album->isOfHidden ? AssetScope::Hidden::Only : AssetScope::Hidden::AsOptionsSay;
        scope.showsWholeBursts = album->showsWholeBursts;
        if (album->mostDays > 0) {
            constexpr double kSecondsADay = 86'400;
            scope.condition = "assets.added >= ?";
            scope.arguments = {Date{Date::now().secondsSince1970 - album->mostDays * kSecondsADay}};
            scope.order = "assets.added, assets.id";
        }
        return scope;
    }
    const std::string uuid = uuidOfIdentifier(collection.localIdentifier);
    if (collection.assetCollectionSubtype == PHAssetCollectionSubtype::AlbumSyncedAlbum) {
        return {
            .condition = "assets.folder = (SELECT folder FROM albums WHERE uuid = ?)", .arguments = {uuid}};
    }
    return {
        .tables = "albums JOIN album_assets ON album_assets.album = albums.id"
                  " JOIN assets ON assets.id = album_assets.asset",
        .condition = "albums.uuid = ?",
        .arguments = {uuid},
        .order = "album_assets.position",
    };
}

AssetScope scopeOfIdentifiers(std::span<const std::string> identifiers) {
    AssetScope scope{.hidden = AssetScope::Hidden::Too, .showsWholeBursts = true};
    // One argument for all of them: there may be more than a query has places.
    std::string list = "[";
    for (const std::string& identifier : identifiers) {
        const std::string uuid = uuidOfIdentifier(identifier);
        const bool isPlain = uuid.find_first_not_of("0123456789ABCDEF-") == std::string::npos;
        if (isPlain && identifier.ends_with(kAssetIdentifierSuffix)) {
            list += fmt::format("{}\"{}\"", list.size() > 1 ? "," : "", uuid);
        }
    }
    scope.condition = "assets.uuid IN (SELECT value FROM json_each(?))";
    scope.arguments = {list + "]"};
    return scope;
}

AssetScope scopeOfBurst(const std::string& burstIdentifier) {
    return {.condition = "assets.burst = ?", .arguments = {burstIdentifier}};
}

QueryText assetQuery(const AssetScope& scope, const PHFetchOptions& options) {
    QueryText query;
    query.add(fmt::format("SELECT assets.id FROM {}", scope.tables));
    Conditions conditions(query);
    if (!scope.condition.empty()) {
        conditions.add(scope.condition);
        query.arguments = scope.arguments;
    }
    addVisibility(conditions, scope, options);
    if (options.includeAssetSourceTypes != 0) {
        conditions.add(fmt::format(
            "assets.source_type & {}", static_cast<std::int64_t>(options.includeAssetSourceTypes)));
    }
    addLimits(conditions, query);
    if (options.predicate) {
        conditions.begin();
        addPredicate(query, *options.predicate, kAssetKeys);
    }
    if (options.sortDescriptors.empty()) {
        query.add(fmt::format(" ORDER BY {}", scope.order));
    } else {
        addOrder(query, options.sortDescriptors, kAssetKeys, "assets.id");
    }
    if (options.fetchLimit != 0) {
        query.add(fmt::format(" LIMIT {}", options.fetchLimit));
    }
    return query;
}

} // namespace exifcard

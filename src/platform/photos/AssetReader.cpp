#include "platform/photos/AssetReader.h"

#include "platform/photos/AssetRow.h"

#include <fmt/format.h>

namespace exifcard {
namespace {

SQLiteStatement queryOn(SQLiteDatabase& database) {
    static const std::string sql = fmt::format("SELECT {} FROM assets WHERE id = ?", kAssetColumns);
    return database.query(sql, {0});
}

} // namespace

AssetReader::AssetReader(SQLiteDatabase& database) : _query(queryOn(database)) {
}

PHAssetPtr AssetReader::asset(std::int64_t number) {
    _query.restart({number});
    auto asset = _query.step() ? std::make_shared<const PHAsset>(assetFromRow(_query)) : nullptr;
    _query.restart({});
    return asset;
}

} // namespace exifcard

#pragma once

#include "platform/photos/PHAsset.h"
#include "platform/sqlite/SQLiteDatabase.h"

#include <cstdint>

namespace exifcard {

/// Reads assets one by one over a connection that outlives it.
class AssetReader {
public:
    explicit AssetReader(SQLiteDatabase& database);

    /// Null for a number that there is not.
    PHAssetPtr asset(std::int64_t number);

private:
    SQLiteStatement _query;
};

} // namespace exifcard

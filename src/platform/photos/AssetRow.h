#pragma once

#include "platform/photos/PHAsset.h"
#include "platform/sqlite/SQLiteDatabase.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace exifcard {

inline constexpr std::string_view kAssetIdentifierSuffix = "/L0/001";
inline constexpr std::string_view kAlbumIdentifierSuffix = "/L0/040";

/// The UUID of an identifier, by which the catalogue knows the object: what stands before the suffix.
std::string uuidOfIdentifier(std::string_view localIdentifier);
/// A new one, upper case.
std::string makeUUID();
/// One that follows from the text: a library that is built again gives its assets the same ones.
std::string uuidFromBytes(std::string_view bytes);

/// Selects what `assetFromRow` reads, from a table named `assets`; more columns may follow.
inline constexpr std::string_view kAssetColumns =
    "uuid, media_type, subtypes, playback, source_type, width, height, created, modified, duration, located,"
    " latitude, longitude, altitude, horizontal_accuracy, vertical_accuracy, course, speed, located_at, favorite,"
    " hidden, burst, represents_burst, burst_selection";
inline constexpr int kAssetColumnCount = 24;

/// The asset of the row. Values that cannot be, which only a damaged catalogue holds, come as absent or 0.
PHAsset assetFromRow(const SQLiteStatement& row);

/// The values of `kAssetColumns` in their order.
std::vector<Value> valuesOfAsset(const PHAsset& asset);

} // namespace exifcard

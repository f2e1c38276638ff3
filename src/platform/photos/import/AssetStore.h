#pragma once

#include "platform/photos/CatalogueRecords.h"
#include "platform/photos/import/AssetIdentities.h"
#include "platform/photos/import/AssetReading.h"
#include "platform/photos/import/ImportPlan.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace exifcard {

class CatalogueWriter;
class LibraryPlaces;

/// What an import did, in assets.
struct ImportCounts {
    std::size_t added = 0;
    std::size_t changed = 0;  ///< Their files were.
    std::size_t moved = 0;    ///< Their files lie elsewhere or have another name.
    std::size_t returned = 0; ///< They had vanished.
    std::size_t vanished = 0;
};

/// Puts what was read into the catalogue, so that an asset stays the same one however its files are moved,
/// renamed or edited. For the thread of the writer.
class AssetStore {
public:
    AssetStore(CatalogueWriter& writer, LibraryPlaces& places)
        : _writer(writer)
        , _places(places)
        , _identities(writer, places) {}

    /// @param folder  Where its files lie: an absolute path.
    void store(const ReadAsset& read, const std::string& folder);
    /// Marks the assets of which no file is left, after all were stored: one that was met in another place
    /// is not missing.
    void forget(std::vector<MissingFile> missing);

    const ImportCounts& counts() const { return _counts; }

private:
    bool isKnownAsItIs(const CatalogueAsset& asset);
    void absorb(const CatalogueAsset& asset);
    void chooseForBurst(CatalogueAsset& asset, const std::string& burst);
    bool joinOtherHalf(CatalogueAsset& asset);
    void addMovingHalf(CatalogueAsset& picture, CatalogueFile video);
    bool joinPicture(std::int64_t number, const CatalogueAsset& video);
    void count(const AssetIdentity& identity);

    CatalogueWriter& _writer;
    LibraryPlaces& _places;
    AssetIdentities _identities;
    ImportCounts _counts;
    std::vector<std::int64_t> _absorbed; // Assets that became a part of others.
};

} // namespace exifcard

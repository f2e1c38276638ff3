#pragma once

#include "platform/photos/CatalogueRecords.h"
#include "platform/photos/import/AssetReading.h"
#include "platform/photos/import/ImportPlan.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace exifcard {

class CatalogueWriter;
class LibraryPlaces;

/// Which asset of the catalogue some files are.
struct AssetIdentity {
    std::int64_t asset = 0;            ///< 0: a new one.
    std::int64_t wholeFingerprint = 0; ///< Of its first file; 0: not taken.
    bool isMoved = false;              ///< That file lies elsewhere or has another name than before.
    bool isReturned = false;           ///< It had vanished.
};

/// Knows files again: by their place, else by their content. For the thread of the writer.
class AssetIdentities {
public:
    AssetIdentities(CatalogueWriter& writer, const LibraryPlaces& places)
        : _writer(writer)
        , _places(places) {}

    /// A file that was known in the place of another one which moved there gets a place that no file can
    /// have, so that it is still known when it is met.
    /// @param folder  Where the files lie, by its path and by its number.
    AssetIdentity identityOf(const ReadAsset& read, const std::string& folder, std::int64_t folderNumber);

    /// Files that lost their place to others, since the last call.
    std::vector<MissingFile> takeDisplaced() { return std::exchange(_displaced, {}); }

    bool liesInItsPlace(const CatalogueFile& file) const;

private:
    /// Where a file lay before, when it is one that the library knows and that no longer lies there.
    struct FormerPlace {
        std::optional<CatalogueFile> file;
        std::int64_t wholeFingerprint = 0; ///< Of the file as it is now; 0: not taken.
    };

    AssetIdentity identityOfPrimary(
        const ReadFile& primary, const std::string& folder, std::int64_t folderNumber);
    FormerPlace formerPlace(const ReadFile& file, const std::string& folder);
    std::vector<CatalogueFile> equalFiles(const ReadFile& file);
    std::int64_t inheritedAsset(const CatalogueFile& occupant);
    bool isUnplugged(const CatalogueFile& file) const;
    void takeWholeFingerprint(CatalogueFile& file);
    void clearPlace(CatalogueFile occupant, const std::string& folder);

    CatalogueWriter& _writer;
    const LibraryPlaces& _places;
    std::vector<MissingFile> _displaced;
};

/// Whether the file is the one that tells which asset it is; the others go along with it.
bool isPrimary(const CatalogueFile& file);

} // namespace exifcard

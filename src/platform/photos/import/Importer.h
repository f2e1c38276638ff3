#pragma once

#include "platform/photos/import/AssetStore.h"
#include "platform/photos/import/ImportPlan.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace exifcard {

class PhotoCatalogue;

/// How far an import is.
struct ImportProgress {
    bool isScanning = true;    ///< The folders are still looked through: nobody knows how much there is.
    std::size_t fileCount = 0; ///< Files seen while scanning, files to read afterwards.
    std::size_t filesDone = 0;
    std::int64_t sizeInBytes = 0; ///< Of the files to read.
    std::int64_t bytesDone = 0;
};

/// Called on the importing thread.
struct ImportHandlers {
    ProblemHandler onProblem;
    std::function<void(std::string_view notice)> onNotice; ///< What is no failure.
    std::function<void(const ImportProgress& progress)> onProgress;
};

/// What an import did.
struct ImportReport {
    ImportCounts assets = {};
    std::size_t unchangedFiles = 0;
    std::size_t problems = 0;
    std::optional<std::string> error = std::nullopt; ///< Why it ended early: one sentence.

    bool hasChanges() const {
        return assets.added + assets.changed + assets.moved + assets.returned + assets.vanished > 0;
    }
};

/// Takes folders into the photo library. What is unchanged is not opened; whatever happens, nothing is
/// written but the catalogue. A kill at any moment loses nothing that the next import does not find again.
class Importer {
public:
    /// @param jobs  How many files are read at once; at least 1.
    Importer(std::shared_ptr<PhotoCatalogue> catalogue, ImportHandlers handlers, unsigned jobs);

    /// Takes in the folders and all below them. Waits while another import runs. Blocks.
    ImportReport importTrees(std::vector<std::string> folders);
    /// Looks again at single folders of the library and at whole trees of it.
    ImportReport update(const std::vector<std::string>& folders, const std::vector<std::string>& trees);
    /// What `importTrees` would do, without doing it.
    ImportPlan plan(const std::vector<std::string>& folders);

    /// Forgets what the library holds of the folders and all below them and is not there, as an import does,
    /// but also what lay on drives that are not mounted and below roots that are gone. What comes back is
    /// known again by its content. Takes nothing in. Blocks.
    ImportReport forgetMissing(const std::vector<std::string>& folders);
    /// What `forgetMissing` would do, without doing it.
    ImportPlan planToForget(const std::vector<std::string>& folders);

    /// The folders of this computer that the library was told to take, without those that are gone and of
    /// which it holds nothing.
    std::vector<std::string> roots();

private:
    using Choice = std::function<void(ImportPlanner& planner, const LibraryPlaces& places)>;

    ImportPlan planOf(const Choice& choose);
    ImportReport write(
        const std::function<void(CatalogueWriter& writer, LibraryPlaces& places, ImportReport& report)>&
            work);
    ImportReport run(const std::function<void(ImportPlanner&, LibraryPlaces&)>& choose);
    void tellLostRoots(const ImportPlan& plan, const LibraryPlaces& places);
    static void noteMountPoints(const ImportPlan& plan, LibraryPlaces& places);
    void addTree(ImportPlanner& planner, const LibraryPlaces& places, const std::string& folder);
    void readAndStore(const ImportPlan& plan, AssetStore& store, CatalogueWriter& writer);
    std::vector<MissingFile> missingForSure(const ImportPlan& plan, const LibraryPlaces& places);
    ImportPlanner plannerFor(CatalogueWriter* writer, const LibraryPlaces& places);
    void tellProblem(const ImportProblem& problem);

    std::shared_ptr<PhotoCatalogue> _catalogue;
    ImportHandlers _handlers;
    unsigned _jobs;
    std::size_t _problems = 0;
    bool _isRebuilding = false; // The catalogue was lost, and all roots are read anew.
};

} // namespace exifcard

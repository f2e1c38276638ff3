#pragma once

#include "platform/photos/CatalogueRecords.h"
#include "platform/photos/import/FileGroup.h"
#include "platform/photos/import/ScannedFile.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace exifcard {

class CatalogueWriter;
class LibraryPlaces;

/// A group of files that is new or changed.
struct PlannedGroup {
    std::size_t folder = 0; ///< Position in `ImportPlan::folders`.
    FileGroup group;
    bool isNew = true; ///< The library knows none of its files.
};

/// A file that the library knows and that no longer lies where it was.
struct MissingFile {
    std::string folder; ///< An absolute path.
    CatalogueFile file;
};

/// What an import has to do.
struct ImportPlan {
    std::vector<std::string> folders; ///< Those with something to read; absolute paths.
    std::vector<PlannedGroup> groups;
    std::vector<MissingFile> missing;
    std::vector<std::string> goneFolders;       ///< Known ones that are no longer there.
    std::vector<std::string> mountPoints;       ///< Folders on which a drive is mounted that was not known.
    std::vector<std::string> formerMountPoints; ///< Folders that lie no longer on a drive of their own.
    std::size_t fileCount = 0;                  ///< Files to read, without sidecars.
    std::int64_t sizeInBytes = 0;               ///< Of these.
    std::size_t unchangedCount = 0;             ///< Files that are as they were.
    std::optional<std::string> error = std::nullopt; ///< Why the library could not be asked: one sentence.
};

/// Compares folders with what the library knows of them. Opens no file. For the thread of the writer.
class ImportPlanner {
public:
    /// @param writer  Null: there is no library yet.
    /// @param onScan  Called after each folder with the number of files seen so far.
    ImportPlanner(CatalogueWriter* writer,
        const LibraryPlaces& places,
        ProblemHandler onProblem,
        std::function<void(std::size_t)> onScan = nullptr);

    /// Adds a folder and all below it. One that is gone is looked for among the known ones.
    void addTree(const std::string& folder);
    /// Adds what lies in a folder, without the folders in it.
    void addFolder(const std::string& folder);
    /// Adds what the library knows of a folder and all below it and is not there, also where a drive is not
    /// mounted or the root is gone. Looks for nothing new.
    void addGoneForGood(const std::string& folder);

    ImportPlan take() { return std::move(_plan); }

private:
    bool isPlaceOfUnpluggedDrive(const std::string& folder) const;
    void compare(ScannedFolder scanned);
    void compareMountPoint(const ScannedFolder& scanned);
    void tellDrivesAway(const std::string& folder) const;
    void addGoneFolders(const std::string& tree, const std::vector<std::string>& seen);
    void addGroup(FileGroup group, bool isNew);

    CatalogueWriter* _writer;
    const LibraryPlaces& _places;
    ProblemHandler _onProblem;
    std::function<void(std::size_t)> _onScan;
    ImportPlan _plan;
};

} // namespace exifcard

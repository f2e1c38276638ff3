#include "platform/photos/import/ImportPlan.h"

#include "platform/photos/CatalogueWriter.h"
#include "platform/photos/import/FolderScan.h"
#include "platform/photos/import/LibraryPlaces.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

namespace exifcard {
namespace {

/// What the library knows of one folder, held against what is there.
class FolderComparison {
public:
    /// @param known  Ascending by name.
    FolderComparison(std::vector<CatalogueFile> known, const ScannedFolder& scanned)
        : _known(std::move(known)) {
        if (!scanned.isWhole) {
            return; // What was not seen may still be there.
        }
        for (const CatalogueFile& file : _known) {
            if (!file.isVanished &&
                !std::ranges::binary_search(scanned.files, file.name, {}, &ScannedFile::name)) {
                _missing.push_back(file);
                _incompleteAssets.insert(file.asset);
            }
        }
    }

    const std::vector<CatalogueFile>& missing() const { return _missing; }

    bool isNew(const FileGroup& group) const {
        return std::ranges::all_of(group.files, [this](const ScannedFile& file) {
            const CatalogueFile* const known = knownFile(file.name);
            return known == nullptr || known->isVanished;
        });
    }

    bool isUnchanged(const FileGroup& group) const {
        const auto isKnown = [this](const ScannedFile& file) {
            const CatalogueFile* const known = knownFile(file.name);
            return known != nullptr && !known->isVanished && known->stamp == file.stamp &&
                   !_incompleteAssets.contains(known->asset);
        };
        return std::ranges::all_of(group.files, isKnown) && std::ranges::all_of(group.sidecars, isKnown);
    }

private:
    const CatalogueFile* knownFile(std::string_view name) const {
        const auto found = std::ranges::lower_bound(_known, name, {}, &CatalogueFile::name);
        return found != _known.end() && found->name == name ? &*found : nullptr;
    }

    std::vector<CatalogueFile> _known;
    std::vector<CatalogueFile> _missing;
    std::set<std::int64_t> _incompleteAssets; // Those of which a file is missing.
};

} // namespace

ImportPlanner::ImportPlanner(CatalogueWriter* writer,
    const LibraryPlaces& places,
    ProblemHandler onProblem,
    std::function<void(std::size_t)> onScan)
    : _writer(writer)
    , _places(places)
    , _onProblem(std::move(onProblem))
    , _onScan(std::move(onScan)) {
}

void ImportPlanner::addTree(const std::string& folder) {
    tellDrivesAway(folder);
    std::vector<std::string> seen;
    if (!isGone(folder)) {
        FolderScan scan(folder, _onProblem);
        while (auto scanned = scan.next()) {
            if (scanned->isEmpty && isPlaceOfUnpluggedDrive(scanned->path)) {
                _onProblem({scanned->path, "is empty; what the library holds of it is kept"});
                return;
            }
            seen.push_back(scanned->path);
            compare(std::move(*scanned));
        }
    }
    std::ranges::sort(seen);
    addGoneFolders(folder, seen);
}

/// A root with nothing at all in it, of which something is known.
bool ImportPlanner::isPlaceOfUnpluggedDrive(const std::string& folder) const {
    const LibraryRoot* const root = _places.rootOf(folder);
    return root != nullptr && root->path == folder && _places.holdsFilesBelow(folder);
}

/// The root itself is told where it is found empty or missing.
void ImportPlanner::tellDrivesAway(const std::string& folder) const {
    for (const std::string& place : _places.mountPointsAway(folder)) {
        const LibraryRoot* const root = _places.rootOf(place);
        if (root != nullptr && root->path != place && _places.holdsFilesBelow(place)) {
            _onProblem({place, "is not mounted; what the library holds of it is kept"});
        }
    }
}

void ImportPlanner::addFolder(const std::string& folder) {
    if (isGone(folder)) {
        addGoneFolders(folder, {});
    } else if (auto scanned = FolderScan(folder, _onProblem).next();
               scanned && !(scanned->isEmpty && isPlaceOfUnpluggedDrive(folder))) {
        compare(std::move(*scanned));
    }
}

void ImportPlanner::addGoneForGood(const std::string& folder) {
    const std::vector<std::string> known = _places.foldersBelow(folder);
    if (known.empty()) {
        _onProblem({folder, "is no folder of the library"});
    }
    for (const std::string& place : known) {
        std::vector<CatalogueFile> files = _writer->filesInFolder(_places.numberOf(place));
        std::erase_if(files, [&place](const CatalogueFile& file) {
            return file.isVanished || !isGone(place + "/" + file.name);
        });
        for (CatalogueFile& file : files) {
            _plan.missing.push_back({place, std::move(file)});
        }
        if (isGone(place)) {
            _plan.goneFolders.push_back(place);
        }
    }
}

void ImportPlanner::compare(ScannedFolder scanned) {
    const std::int64_t number = _places.numberOf(scanned.path);
    const FolderComparison comparison(
        number != 0 ? _writer->filesInFolder(number) : std::vector<CatalogueFile>(), scanned);
    if (!_places.isAway(scanned.path)) {
        for (const CatalogueFile& file : comparison.missing()) {
            _plan.missing.push_back({scanned.path, file});
        }
        compareMountPoint(scanned);
    }
    const std::size_t groupCount = _plan.groups.size();
    for (FileGroup& group : groupsOfFiles(std::move(scanned.files))) {
        if (comparison.isUnchanged(group)) {
            _plan.unchangedCount += group.files.size();
        } else {
            const bool isNew = comparison.isNew(group);
            addGroup(std::move(group), isNew);
        }
    }
    if (_plan.groups.size() > groupCount) {
        _plan.folders.push_back(std::move(scanned.path));
    }
    if (_onScan) {
        _onScan(_plan.fileCount + _plan.unchangedCount);
    }
}

void ImportPlanner::compareMountPoint(const ScannedFolder& scanned) {
    const bool isKnown = _places.isKnownMountPoint(scanned.path);
    if (scanned.isMountPoint && !isKnown) {
        _plan.mountPoints.push_back(scanned.path);
    } else if (isKnown && scanned.isWhole && !scanned.isMountPoint) {
        _plan.formerMountPoints.push_back(scanned.path);
    }
}

void ImportPlanner::addGroup(FileGroup group, bool isNew) {
    _plan.fileCount += group.files.size();
    _plan.sizeInBytes += group.sizeInBytes();
    _plan.groups.push_back({.folder = _plan.folders.size(), .group = std::move(group), .isNew = isNew});
}

void ImportPlanner::addGoneFolders(const std::string& tree, const std::vector<std::string>& seen) {
    for (const std::string& folder : _places.foldersBelow(tree)) {
        if (std::ranges::binary_search(seen, folder) || !isGone(folder) || _places.isAway(folder)) {
            continue;
        }
        for (CatalogueFile& file : _writer->filesInFolder(_places.numberOf(folder))) {
            if (!file.isVanished) {
                _plan.missing.push_back({folder, std::move(file)});
            }
        }
        _plan.goneFolders.push_back(folder);
    }
}

} // namespace exifcard

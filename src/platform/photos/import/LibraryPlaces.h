#pragma once

#include "platform/photos/CatalogueRecords.h"

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace exifcard {

class CatalogueWriter;

/// The folders of this computer that the library holds, by their paths. A folder belongs to the innermost
/// root at or above it, so that it is in the library once, whichever folders were imported. For the thread
/// of the writer.
class LibraryPlaces {
public:
    /// @param writer  Null: there is no library yet.
    explicit LibraryPlaces(CatalogueWriter* writer);

    /// Of this computer.
    const std::vector<LibraryRoot>& roots() const { return _roots; }
    /// Null for a folder that lies in none.
    const LibraryRoot* rootOf(std::string_view folder) const;
    /// Makes the folder a root unless it lies in one.
    void addRoot(const std::string& folder);

    /// Remembers whether a drive is mounted on a folder of the library.
    void noteMountPoint(const std::string& folder, bool isMountPoint);
    bool isKnownMountPoint(const std::string& folder) const { return _mountPoints.contains(folder); }
    /// Whether the folder lay on a drive of whose place nothing is left, or an empty folder: what is not
    /// found there is not gone. Looks at the disk, where there are such drives.
    bool isAway(std::string_view folder) const;
    /// The places of such drives at, above and below a folder.
    std::vector<std::string> mountPointsAway(std::string_view folder) const;

    /// 0 for a folder that the library does not hold.
    std::int64_t numberOf(const std::string& folder) const;
    /// The same, but the library holds it afterwards.
    std::int64_t store(const std::string& folder);
    /// Takes it out of the library, where it is empty by now.
    void remove(const std::string& folder);
    /// Empty for a number that is none of a folder of this computer.
    std::string pathOf(std::int64_t folder) const;
    /// The folder, where the library holds it, and all known ones below it.
    std::vector<std::string> foldersBelow(std::string_view folder) const;
    /// Whether the library has files in the folder or below it, of assets that have not vanished.
    bool holdsFilesBelow(std::string_view folder) const;

private:
    void add(const std::string& folder, std::int64_t number);
    void storeIn(const LibraryRoot& root, const std::string& folder);

    CatalogueWriter* _writer;
    std::vector<LibraryRoot> _roots;
    std::unordered_map<std::string, std::int64_t> _numbers;
    std::unordered_map<std::int64_t, std::string> _paths;
    std::set<std::string> _mountPoints;
    std::unordered_set<std::string> _stored; // Folders that were asked for, and so are albums.
};

/// Whether `path` is `folder` or lies below it; both without a slash at the end.
bool isWithin(std::string_view path, std::string_view folder);

} // namespace exifcard

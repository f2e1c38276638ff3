#include "platform/photos/import/LibraryPlaces.h"

#include "platform/photos/CatalogueWriter.h"
#include "platform/photos/import/ScannedFile.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <system_error>
#include <utility>

namespace exifcard {
namespace {

constexpr std::string_view kFolderKind = "folder"; // Roots of other kinds lie elsewhere.

std::string pathBelow(std::string_view folder, const LibraryRoot& root) {
    return folder.size() == root.path.size() ? std::string()
                                             : std::string(folder.substr(root.path.size() + 1));
}

/// What lies in the place of a drive without being mounted is what the library shall hold now.
bool isDriveAway(const std::string& place) {
    std::error_code error;
    return !isMountPoint(place) && (std::filesystem::is_empty(place, error) || error);
}

} // namespace

bool isWithin(std::string_view path, std::string_view folder) {
    return path.starts_with(folder) &&
           (path.size() == folder.size() || path[folder.size()] == '/' || folder == "/");
}

LibraryPlaces::LibraryPlaces(CatalogueWriter* writer) : _writer(writer) {
    if (_writer == nullptr) {
        return;
    }
    _roots = _writer->roots();
    std::erase_if(_roots, [](const LibraryRoot& root) { return root.kind != kFolderKind; });
    for (const LibraryRoot& root : _roots) {
        for (const LibraryFolder& folder : _writer->foldersOfRoot(root.number)) {
            std::string path = folder.path.empty() ? root.path : root.path + "/" + folder.path;
            add(path, folder.number);
            if (folder.isMountPoint) {
                _mountPoints.insert(std::move(path));
            }
        }
    }
}

const LibraryRoot* LibraryPlaces::rootOf(std::string_view folder) const {
    const LibraryRoot* innermost = nullptr;
    for (const LibraryRoot& root : _roots) {
        const bool isDeeper = innermost == nullptr || root.path.size() > innermost->path.size();
        innermost = isDeeper && isWithin(folder, root.path) ? &root : innermost;
    }
    return innermost;
}

void LibraryPlaces::addRoot(const std::string& folder) {
    if (rootOf(folder) == nullptr) {
        LibraryRoot root{.path = folder};
        root.number = _writer->storeRoot(root);
        _roots.push_back(std::move(root));
    }
}

void LibraryPlaces::noteMountPoint(const std::string& folder, bool isMountPoint) {
    const LibraryRoot* const root = rootOf(folder);
    if (root == nullptr || isMountPoint == isKnownMountPoint(folder)) {
        return;
    }
    if (isMountPoint) {
        _mountPoints.insert(folder);
    } else {
        _mountPoints.erase(folder);
    }
    storeIn(*root, folder);
    _writer->markMountPoint(numberOf(folder), isMountPoint);
}

bool LibraryPlaces::isAway(std::string_view folder) const {
    return std::ranges::any_of(_mountPoints,
        [folder](const std::string& place) { return isWithin(folder, place) && isDriveAway(place); });
}

std::vector<std::string> LibraryPlaces::mountPointsAway(std::string_view folder) const {
    std::vector<std::string> away;
    std::ranges::copy_if(_mountPoints, std::back_inserter(away), [folder](const std::string& place) {
        return (isWithin(place, folder) || isWithin(folder, place)) && isDriveAway(place);
    });
    return away;
}

std::int64_t LibraryPlaces::numberOf(const std::string& folder) const {
    const auto known = _numbers.find(folder);
    return known == _numbers.end() ? 0 : known->second;
}

std::int64_t LibraryPlaces::store(const std::string& folder) {
    const LibraryRoot* const root = rootOf(folder);
    if (root == nullptr || !_stored.insert(folder).second) {
        return numberOf(folder);
    }
    storeIn(*root, folder);
    const std::size_t slash = folder.rfind('/');
    _writer->showFolderAsAlbum(numberOf(folder), std::string_view(folder).substr(slash + 1));
    return numberOf(folder);
}

void LibraryPlaces::remove(const std::string& folder) {
    const std::int64_t number = numberOf(folder);
    if (number != 0) {
        _writer->removeFolder(number);
        _paths.erase(number);
        _numbers.erase(folder);
    }
}

std::string LibraryPlaces::pathOf(std::int64_t folder) const {
    const auto known = _paths.find(folder);
    return known == _paths.end() ? std::string() : known->second;
}

std::vector<std::string> LibraryPlaces::foldersBelow(std::string_view folder) const {
    std::vector<std::string> folders;
    for (const auto& [path, number] : _numbers) {
        if (isWithin(path, folder)) {
            folders.push_back(path);
        }
    }
    std::ranges::sort(folders);
    return folders;
}

bool LibraryPlaces::holdsFilesBelow(std::string_view folder) const {
    return std::ranges::any_of(foldersBelow(folder), [this](const std::string& known) {
        return std::ranges::any_of(_writer->filesInFolder(numberOf(known)),
            [](const CatalogueFile& file) { return !file.isVanished; });
    });
}

void LibraryPlaces::storeIn(const LibraryRoot& root, const std::string& folder) {
    if (numberOf(folder) == 0) {
        add(folder, _writer->storeFolder(root.number, pathBelow(folder, root)));
    }
}

void LibraryPlaces::add(const std::string& folder, std::int64_t number) {
    _numbers[folder] = number;
    _paths[number] = folder;
}

} // namespace exifcard

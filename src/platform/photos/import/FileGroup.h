#pragma once

#include "platform/photos/import/ScannedFile.h"

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace exifcard {

/// The files of one shot: those of a folder that share a name but for the extension. What changes in one of
/// them may change the assets that the others make.
struct FileGroup {
    std::vector<ScannedFile> files;    ///< Pictures, raw files and videos, ascending by name.
    std::vector<ScannedFile> sidecars; ///< What editors wrote about them.

    std::int64_t sizeInBytes() const;
};

/// Which files of a group make one asset. Positions within `FileGroup::files`.
struct AssetFiles {
    std::size_t primary = 0;
    /// The raw file of a picture that the camera wrote beside it.
    std::optional<std::size_t> raw = std::nullopt;
    /// The video that may be the moving half of a live photo: whether it is, their contents tell.
    std::optional<std::size_t> video = std::nullopt;
};

/// Sorts the files of one folder into groups, ascending by name.
std::vector<FileGroup> groupsOfFiles(std::vector<ScannedFile> files);

/// The assets that the group's files make by their names alone.
std::vector<AssetFiles> assetsOfGroup(const FileGroup& group);

/// The sidecar that is about the file: "IMG.JPG.xmp", else "IMG.xmp". Null without one.
const ScannedFile* sidecarOf(const FileGroup& group, const ScannedFile& file);

} // namespace exifcard

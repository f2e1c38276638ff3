#pragma once

#include "platform/photos/import/FileGroup.h"
#include "platform/photos/import/MediaFacts.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace exifcard {

/// One file of an asset, read.
struct ReadFile {
    ScannedFile file;
    MediaFacts facts = {};
    std::int64_t quickFingerprint = 0;
};

/// One asset as its files tell it.
struct ReadAsset {
    ReadFile primary;                           ///< Its facts are the asset's, those of sidecars among them.
    std::optional<ReadFile> raw = std::nullopt; ///< What the camera wrote beside the picture.
    std::optional<ReadFile> video = std::nullopt; ///< The moving half of a live photo.
    /// Of the whole group, with the first of its assets.
    std::vector<ScannedFile> sidecars = {};
};

/// What became of one group of files.
struct ReadGroup {
    std::vector<ReadAsset> assets;
    std::vector<ImportProblem> problems; ///< Of files that could not be read.
};

/// Reads the files of a group. Any thread; blocks.
/// @param folder  Where they lie: an absolute path.
ReadGroup readGroup(const std::string& folder, const FileGroup& group);

} // namespace exifcard

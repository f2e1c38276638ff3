#pragma once

#include "platform/photos/AssetFiles.h"
#include "platform/photos/PHError.h"
#include "platform/photos/PHImageRequestOptions.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace exifcard {

/// The file that shows the asset: with edits, or the original. Nothing for an asset without such a file.
std::optional<StoredFile> renditionOf(
    const std::vector<StoredFile>& files, PHImageRequestOptionsVersion version);

/// A file's way to this computer.
struct BroughtFile {
    std::optional<std::string> path = std::nullopt; ///< Where the bytes are; nothing when they are not here.
    bool isElsewhere = false;                       ///< They could be brought.
    bool wasCancelled = false;
    std::optional<PHError> error = std::nullopt;
};

/// @param mayUseNetwork  Whether what lies elsewhere is brought, which blocks.
/// @param progress       Told while it is, with the error that ended it last; answers false to stop. May be
/// empty.
BroughtFile broughtFile(const StoredFile& file,
    bool mayUseNetwork,
    const std::function<bool(double fraction, const std::optional<PHError>& error)>& progress);

} // namespace exifcard

#pragma once

#include "platform/photos/FileStamp.h"
#include "platform/photos/import/FileKind.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace exifcard {

/// What went wrong with one file or folder.
struct ImportProblem {
    std::string path;
    std::string cause; ///< "is empty"
};
using ProblemHandler = std::function<void(const ImportProblem& problem)>;

/// The stamp of a regular file; nothing for what is none. A link is not followed.
std::optional<FileStamp> stampOfFile(const std::string& path);

/// Whether surely neither a file nor a folder is at that path; not so where nobody may look.
bool isGone(const std::string& path);

/// Whether a folder is at that path. A link to one is none.
bool isFolderThere(const std::string& path);

/// Whether a drive, or a part of one, is mounted on that path.
bool isMountPoint(const std::string& path);

/// A regular file of which the library takes something.
struct ScannedFile {
    std::string name; ///< Without its folder; any bytes but "/" and NUL.
    FileKind kind = FileKind::Other;
    FileStamp stamp = {};
};

/// One folder, without those in it.
struct ScannedFolder {
    std::string path;
    std::vector<ScannedFile> files = {}; ///< Ascending by name.
    bool isWhole = true;                 ///< False where some of it, or all, could not be looked at.
    bool isEmpty = true; ///< Nothing at all is in it, as in the place of a drive that is unplugged.
    bool isMountPoint = false;
};

} // namespace exifcard

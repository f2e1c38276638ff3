#pragma once

#include <optional>
#include <string>

namespace exifcard {

/// Whether this program may write to what is there: for a folder, make files in it.
bool isWritableFile(const std::string& path);

/// Whether this program may remove the file.
bool isDeletableFile(const std::string& path);

/// Makes a folder, but none above it. One that is there already is no failure.
/// @return What failed, in words.
std::optional<std::string> makeOneFolder(const std::string& path);

/// What the last failed call about a file failed of on this thread, in words.
std::string lastFileError();

} // namespace exifcard

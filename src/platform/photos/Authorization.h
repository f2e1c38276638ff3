#pragma once

#include <optional>
#include <string>
#include <vector>

namespace exifcard {

/// Whether fetches answer anything.
bool isLibraryReadable();
/// The folders to which the user limited the library; nothing: not limited.
std::optional<std::vector<std::string>> allowedFolders();

} // namespace exifcard

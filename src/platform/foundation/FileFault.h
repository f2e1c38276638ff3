#pragma once

#include <string>

namespace exifcard {

/// Why a path is no regular file that can be read: "no such file", "is a folder", "is a pipe", "Permission
/// denied". Empty for one that can. Opens nothing.
std::string faultOfFile(const std::string& path);

} // namespace exifcard

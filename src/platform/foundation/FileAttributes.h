#pragma once

#include "platform/foundation/Date.h"

#include <optional>
#include <string>

namespace exifcard {

/// When the file was made; on a file system that does not keep that, when it was last written. Nothing for
/// what is not there.
std::optional<Date> creationDateOfFile(const std::string& path);

} // namespace exifcard

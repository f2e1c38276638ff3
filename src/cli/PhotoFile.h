#pragma once

#include "platform/foundation/URL.h"

#include <string>

namespace exifcard {

/// The file URL of a name as typed.
URL urlOfFile(const std::string& name);

/// Why a file gave no metadata: "no such file", "is a folder", "is not an image". Reads the file once more.
std::string causeOfFailure(const std::string& name);

} // namespace exifcard

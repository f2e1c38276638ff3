#pragma once

#include "platform/foundation/Data.h"
#include "platform/foundation/URL.h"

#include <optional>
#include <string>

namespace exifcard {

// Operations on NSData. Files in the temporary folder stay there until the system clears it.

/// The same as below with the file name "tempImage".
std::optional<URL> temporaryURLForImageNSData(const std::optional<Data>& data);

/// Writes the bytes to a file in the temporary folder and answers where.
/// @param fileName  "IMG_1.jpg"; of a path its last component.
/// @return Nothing without data, and where the file cannot be written.
std::optional<URL> temporaryURLForImageNSData(const std::optional<Data>& data, const std::string& fileName);

/// Only asks whether the file could be removed, and leaves it.
void deleteTemporaryFileAtURL(const URL& url);

} // namespace exifcard

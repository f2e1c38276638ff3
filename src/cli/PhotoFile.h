#pragma once

#include "platform/foundation/URL.h"

#include <memory>
#include <string>

namespace exifcard {

class ExifInformation;

/// The file URL of a name as typed.
URL urlOfFile(const std::string& name);

/// The record of the photo or video in a file; null where it cannot be read. Never waits for a pipe.
std::shared_ptr<ExifInformation> readPhoto(const std::string& name);

bool isVideo(const ExifInformation& record);

/// Why a file gave no metadata: "no such file", "is a folder", "is not an image". Reads the file once more.
std::string causeOfFailure(const std::string& name);

} // namespace exifcard

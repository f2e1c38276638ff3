#pragma once

#include "platform/avfoundation/AVMetadataItem.h"

#include <span>
#include <string>
#include <utility>
#include <vector>

namespace exifcard {

/// The items of a container's names and texts, those of QuickTime metadata ("com.apple.quicktime.make")
/// before those of user data ("make"). Left out are what the container says of itself ("major_brand"), the
/// mark of a program that wrote it, and the copies that a language makes ("make-eng").
std::vector<AVMetadataItem> metadataItems(std::span<const std::pair<std::string, std::string>> entries);

} // namespace exifcard

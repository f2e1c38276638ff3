#pragma once

#include "platform/foundation/Data.h"
#include "platform/foundation/Dictionary.h"
#include "platform/imageio/XmpPacket.h"

#include <optional>
#include <vector>

namespace exifcard {

/// The datasets within a block of image resources, as an editor keeps them in a
/// JPEG or TIFF; empty when there are none.
Data iptcFromImageResources(const Data& resources);

/// "{IPTC}" of the datasets and the packet's properties; where both tell
/// something, the packet holds.
///
/// @param datasets    Untrusted bytes; may be empty.
/// @param exifRating  Stars from the first directory, for a packet without any.
/// @return Null when there is nothing to tell.
DictionaryPtr iptcProperties(
    const Data& datasets, const std::vector<XmpProperty>& packet, std::optional<std::int64_t> exifRating);

} // namespace exifcard

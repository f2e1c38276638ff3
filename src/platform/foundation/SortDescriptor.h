#pragma once

#include "platform/foundation/Predicate.h"

#include <cstddef>
#include <string>
#include <vector>

namespace exifcard {

/// By which key path objects are sorted, and which way.
struct SortDescriptor {
    std::string key;
    bool ascending = true;
};

/// The positions of the objects in sorted order. The first descriptor counts most; objects that are alike
/// in all keep their order. Nothing is smaller than any value.
std::vector<std::size_t> sortedPositions(
    const std::vector<KeyValueLookup>& objects, const std::vector<SortDescriptor>& descriptors);

} // namespace exifcard

#include "platform/foundation/SortDescriptor.h"

#include "platform/foundation/ValueOrder.h"

#include <algorithm>
#include <numeric>

namespace exifcard {
namespace {

/// The values that one object is sorted by, in the order of the descriptors.
using SortKeys = std::vector<Value>;

SortKeys keysOf(const KeyValueLookup& object, const std::vector<SortDescriptor>& descriptors) {
    SortKeys keys;
    for (const SortDescriptor& descriptor : descriptors) {
        keys.push_back(object(descriptor.key));
    }
    return keys;
}

bool standsBefore(
    const SortKeys& left, const SortKeys& right, const std::vector<SortDescriptor>& descriptors) {
    for (std::size_t key = 0; key < descriptors.size(); ++key) {
        const auto order = sortingOrderOfValues(left[key], right[key]);
        if (order != 0) {
            return (order < 0) == descriptors[key].ascending;
        }
    }
    return false;
}

} // namespace

std::vector<std::size_t> sortedPositions(
    const std::vector<KeyValueLookup>& objects, const std::vector<SortDescriptor>& descriptors) {
    std::vector<SortKeys> keys; // Each object is asked once.
    for (const KeyValueLookup& object : objects) {
        keys.push_back(keysOf(object, descriptors));
    }
    std::vector<std::size_t> positions(objects.size());
    std::iota(positions.begin(), positions.end(), 0U);
    std::ranges::stable_sort(positions, [&](std::size_t left, std::size_t right) {
        return standsBefore(keys[left], keys[right], descriptors);
    });
    return positions;
}

} // namespace exifcard

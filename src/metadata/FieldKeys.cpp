#include "metadata/FieldKeys.h"

#include "metadata/FieldKeyTable.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace exifcard {
namespace {

using fieldtable::kFields;

/// Positions in the table, in ascending order of their keys.
constexpr auto kPositionsByKey = [] {
    std::array<std::uint8_t, std::size(kFields)> positions = {};
    std::iota(positions.begin(), positions.end(), std::uint8_t(0));
    std::sort(positions.begin(), positions.end(),
        [](std::uint8_t left, std::uint8_t right) { return kFields[left].key < kFields[right].key; });
    return positions;
}();

} // namespace

std::span<const FieldKey> fieldKeys() {
    return kFields;
}

const FieldKey* findFieldKey(std::string_view key) {
    const auto found = std::lower_bound(kPositionsByKey.begin(), kPositionsByKey.end(), key,
        [](std::uint8_t position, std::string_view wanted) { return kFields[position].key < wanted; });
    return found != kPositionsByKey.end() && kFields[*found].key == key ? &kFields[*found] : nullptr;
}

} // namespace exifcard

#pragma once

#include "platform/photos/NumberList.h"

#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace exifcard {

/// How one list of different numbers became another.
struct ListDifference {
    std::vector<std::size_t> removed;  ///< Ascending positions in the old list.
    std::vector<std::size_t> inserted; ///< Ascending positions in the new list.
    /// From and to, one after the other, on the old list after removals and insertions.
    std::vector<std::pair<std::size_t, std::size_t>> moves;
};

/// @return Nothing where moving one by one would cost more than to begin anew.
std::optional<ListDifference> differenceOfLists(const NumberList& before, const NumberList& after);

} // namespace exifcard

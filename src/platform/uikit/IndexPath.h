#pragma once

// The toolkit's code generator cannot read <compare> as the first header of all.
// clang-format off
#include <cstddef>
#include <compare>
// clang-format on

namespace exifcard {

/// The place of an item in a list of sections.
struct IndexPath {
    std::size_t section = 0;
    std::size_t item = 0;
    auto operator<=>(const IndexPath&) const = default;

    static IndexPath indexPathForItem(std::size_t item, std::size_t inSection) { return {inSection, item}; }
};

} // namespace exifcard

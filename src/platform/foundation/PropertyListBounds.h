#pragma once

#include <string_view>

namespace exifcard::propertylist {

/// Deeper than any property list that a person or a program means.
inline constexpr int kMostNesting = 64;

/// Whether the bytes are in binary form, by their first bytes.
bool isBinary(std::string_view bytes);

/// Whether the bytes, well formed or not, cost a reader that trusts them no
/// more than tolerable time, memory and stack.
bool isWithinBounds(std::string_view bytes);

} // namespace exifcard::propertylist

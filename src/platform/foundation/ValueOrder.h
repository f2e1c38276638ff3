#pragma once

#include "platform/foundation/Value.h"

#include <compare>

namespace exifcard {

/// The order of two values: of numbers of every kind by size, of texts by code point, of dates by time.
/// Unordered for any other two, and where a number is none.
std::partial_ordering orderOfValues(const Value& left, const Value& right);

/// The order of any two values in a sorted list: nothing stands before all others, and values of different
/// kinds by their kind.
std::weak_ordering sortingOrderOfValues(const Value& left, const Value& right);

} // namespace exifcard

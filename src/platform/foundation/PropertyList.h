#pragma once

#include "platform/foundation/Data.h"
#include "platform/foundation/Value.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

/// Property lists as the platform writes them, in XML or binary form.
///
/// Reading is safe on hostile bytes: length, nesting and the number of objects
/// are bounded. Texts keep the characters that XML can hold; any other, and
/// bytes that are no UTF-8, become U+FFFD. A date keeps its microseconds in
/// binary form and its seconds in XML, from 1933 to 2068.
namespace exifcard::propertylist {

/// @return Nothing for bytes that are no property list or go beyond the bounds.
///         An integer above the signed 64 bits comes out as the negative number
///         of the same bits; a reference of a keyed archive as {"CF$UID": n}.
std::optional<Value> read(const Data& bytes);

/// The XML form. A float is written as the double it widens to; nothing inside
/// a container is left out. No bytes for nothing.
Data writeXML(const Value& value);
/// The binary form.
Data writeBinary(const Value& value);

/// A key and its new value; nothing removes the key.
using Change = std::pair<std::string, Value>;

/// The property list with some entries of its dictionary changed. The others
/// keep what they are, and the list its form and order.
/// @param bytes  What is no dictionary counts as an empty one in binary form.
/// @return Nothing when the result would go beyond what `read` takes.
std::optional<Data> withChanges(const Data& bytes, const std::vector<Change>& changes);

} // namespace exifcard::propertylist

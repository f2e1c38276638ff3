#pragma once

#include "platform/foundation/Data.h"
#include "platform/foundation/Value.h"

#include <optional>
#include <string>

namespace exifcard {

/// Property lists as the platform writes them, in XML or binary form.
///
/// Reading is safe on hostile bytes: length, nesting and the number of objects
/// are bounded.
namespace propertylist {

/// @return Nothing for bytes that are no property list or go beyond the bounds.
std::optional<Value> read(const Data& bytes);

/// The XML form. A float is written as the double it widens to.
Data writeXML(const Value& value);
/// The binary form.
Data writeBinary(const Value& value);

} // namespace propertylist

} // namespace exifcard

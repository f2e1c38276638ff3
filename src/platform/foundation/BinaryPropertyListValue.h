#pragma once

#include "platform/foundation/Value.h"

#include <optional>
#include <string_view>

namespace exifcard::propertylist {

/// The whole of a property list in binary form.
/// @param bytes  Within the bounds (isWithinBounds).
/// @return Nothing when any object of it has no form.
std::optional<Value> valueOfBinaryList(std::string_view bytes);

} // namespace exifcard::propertylist

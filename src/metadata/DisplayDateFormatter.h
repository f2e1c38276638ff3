#pragma once

#include "platform/foundation/Date.h"

#include <optional>
#include <string>

namespace exifcard {

/// The date by the pattern that the user chose, in the user's locale; empty without a date.
std::string displayTextOfDate(const std::optional<Date>& date);

} // namespace exifcard

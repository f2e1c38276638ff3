#pragma once

#include "platform/foundation/Date.h"

#include <string>

namespace exifcard {

/// The moment in the local time zone, to the second, as ISO 8601: "2024-05-06T07:08:09+02:00".
std::string localTimeText(Date date);

} // namespace exifcard

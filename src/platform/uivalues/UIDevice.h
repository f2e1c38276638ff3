#pragma once

#include <string>
#include <string_view>

namespace exifcard {

/// The system version, "13.0" unless a test sets another.
const std::string& systemVersion();
void setSystemVersion(std::string version);

/// Whether the system version is at least `version`, digit runs compared as numbers ("9.3" is below "10.0").
bool isSystemVersionAtLeast(std::string_view version);

} // namespace exifcard

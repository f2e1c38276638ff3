#pragma once

#include <string_view>

namespace exifcard {

/// Lines of an identifier, a tab and a name, in ascending byte order. One text
/// rather than an array of views: nothing is set up when the program starts.
extern const std::string_view kDeviceNames;

} // namespace exifcard

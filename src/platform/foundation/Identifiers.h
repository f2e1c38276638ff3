#pragma once

#include <string_view>

namespace exifcard {

/// The names under which this system is known to others.
inline constexpr std::string_view kApplicationIdentifier = "org.exifcard";
inline constexpr std::string_view kApplicationGroup = "group.org.exifcard";
inline constexpr std::string_view kQueueLabelPrefix = "org.exifcard";
inline constexpr std::string_view kWebAddress = "https://exifcard.example/";

} // namespace exifcard

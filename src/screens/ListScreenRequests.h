#pragma once

#include <string_view>

namespace exifcard {

/// Posted on the main queue by a list screen without photos when the user asks for some. Whoever shows the
/// screen answers them.
inline constexpr std::string_view kAddPhotosRequestedNotification = "ExifcardAddPhotosRequested";
inline constexpr std::string_view kLibraryAccessRequestedNotification = "ExifcardLibraryAccessRequested";

} // namespace exifcard

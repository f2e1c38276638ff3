#pragma once

#include <string_view>

namespace exifcard {

// The keys of the dictionary that comes with the result of a request. Booleans are the numbers 0 and 1.

inline constexpr std::string_view kPHImageResultIsInCloudKey = "PHImageResultIsInCloudKey";
inline constexpr std::string_view kPHImageResultIsDegradedKey = "PHImageResultIsDegradedKey";
inline constexpr std::string_view kPHImageResultRequestIDKey = "PHImageResultRequestIDKey";
inline constexpr std::string_view kPHImageCancelledKey = "PHImageCancelledKey";
inline constexpr std::string_view kPHImageErrorKey = "PHImageErrorKey"; ///< {"domain", "code", "description"}
inline constexpr std::string_view kPHImageFileURLKey = "PHImageFileURLKey"; ///< "file:///…", a text.
inline constexpr std::string_view kPHImageFileUTIKey = "PHImageFileUTIKey"; ///< "public.jpeg"
inline constexpr std::string_view kPHImageFileOrientationKey =
    "PHImageFileOrientationKey"; ///< UIImageOrientation

// The keys of the dictionary that comes with a content-editing input.
inline constexpr std::string_view kPHContentEditingInputResultIsInCloudKey =
    "PHContentEditingInputResultIsInCloudKey";
inline constexpr std::string_view kPHContentEditingInputCancelledKey = "PHContentEditingInputCancelledKey";
inline constexpr std::string_view kPHContentEditingInputErrorKey = "PHContentEditingInputErrorKey";

} // namespace exifcard

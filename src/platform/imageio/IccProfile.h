#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace exifcard {

/// The description of a colour profile, such as "Display P3".
///
/// @param profile  Untrusted bytes of any length.
/// @return UTF-8, in English where there are several languages; empty when the profile has no description.
std::string descriptionOfIccProfile(std::span<const std::uint8_t> profile);

} // namespace exifcard

#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace exifcard {

/// RFC 4648's base64, padded.
std::string base64(std::span<const std::uint8_t> bytes);

} // namespace exifcard

#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace exifcard {

struct JpegHeader {
    bool isProgressive = false;
    std::vector<std::uint8_t> iccProfile; ///< Empty: none, or one with pieces missing.
};

/// What the segments before the picture data tell.
JpegHeader readJpegHeader(std::span<const std::uint8_t> jpeg);

/// Puts an Exif block and a profile behind a JPEG's own first segment, JFIF. Either may be empty.
/// @param exif  From the TIFF header on; without one when it is larger than a segment can be.
void insertJpegSegments(std::vector<std::uint8_t>& jpeg,
    std::span<const std::uint8_t> exif,
    std::span<const std::uint8_t> iccProfile);

} // namespace exifcard

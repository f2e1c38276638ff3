#pragma once

#include <cstdint>
#include <vector>

namespace exifcard {

/// Decoded pixels: rows from top to bottom without padding, 8 bits a channel.
/// A header-only type, so that a module can fill one without linking the program.
struct Bitmap {
    int width = 0;
    int height = 0;
    int channels = 3; ///< 1 grey, 3 RGB, 4 RGB and straight alpha.
    std::vector<std::uint8_t> pixels;
    std::vector<std::uint8_t> iccProfile; ///< Empty: sRGB.

    bool isEmpty() const { return pixels.empty(); }
};

} // namespace exifcard

#pragma once

#include "platform/foundation/Data.h"
#include "platform/uivalues/Bitmap.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace exifcard {

/// The picture of these tests: 64 × 48 pixels, top left red, top right green, bottom left blue, bottom right
/// white. `cornersOf` tells it as "RGBW".
inline Data cornersFile(const std::string& name) {
    return Data::mappedFile(std::string(EXIFCARD_TEST_DATA "/pixels/") + name).value_or(Data());
}

inline Bitmap cornersBitmap(int width = 64, int height = 48) {
    constexpr std::array<std::array<std::uint8_t, 3>, 4> colors = {
        {{255, 0, 0}, {0, 255, 0}, {0, 0, 255}, {255, 255, 255}}};
    Bitmap bitmap;
    bitmap.width = width;
    bitmap.height = height;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const auto& color = colors[(2 * y >= height ? 2U : 0U) + (2 * x >= width ? 1U : 0U)];
            bitmap.pixels.insert(bitmap.pixels.end(), color.begin(), color.end());
        }
    }
    return bitmap;
}

/// A letter for the colour: R, G, B, Y(ellow), W(hite), K (black), . (transparent), ? (any other).
inline char colorAt(const Bitmap& bitmap, int x, int y) {
    const auto channels = static_cast<std::size_t>(bitmap.channels);
    const auto* const pixel =
        bitmap.pixels.data() +
        (static_cast<std::size_t>(y) * static_cast<std::size_t>(bitmap.width) + static_cast<std::size_t>(x)) *
            channels;
    if (channels == 4 && pixel[3] < 32) {
        return '.';
    }
    std::size_t bits = 0;
    for (std::size_t color = 0; color < 3; ++color) {
        bits = bits * 2 + (pixel[channels == 1 ? 0 : color] >= 128 ? 1U : 0U);
    }
    return "KBG?R?YW"[bits];
}

/// The colours near the four corners, row by row.
inline std::string cornersOf(const Bitmap& bitmap) {
    std::string colors;
    for (const int y : {bitmap.height / 8, bitmap.height - 1 - bitmap.height / 8}) {
        for (const int x : {bitmap.width / 8, bitmap.width - 1 - bitmap.width / 8}) {
            colors += colorAt(bitmap, x, y);
        }
    }
    return colors;
}

} // namespace exifcard

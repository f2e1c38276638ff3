#include "platform/uivalues/RoundedCorners.h"

#include "platform/uivalues/BitmapGeometry.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace exifcard {
namespace {

/// How far the middle of a pixel lies beyond the straight part of a side, into a corner; 0 between corners.
double depthIntoCorner(int pixel, int length, double radius) {
    const double middle = pixel + 0.5;
    return std::max({0.0, radius - middle, middle - (length - radius)});
}

/// How much of the pixel lies inside, 0 to 1.
double coverage(double across, double down, double radius) {
    const double beyond = std::hypot(across, down) - radius;
    return across > 0 && down > 0 ? std::clamp(0.5 - beyond, 0.0, 1.0) : 1;
}

} // namespace

Bitmap withRoundedCorners(const Bitmap& bitmap, double radius) {
    Bitmap rounded = bitmapOnCanvas(bitmap, 0, 0, bitmap.width, bitmap.height);
    const double limited = std::clamp(radius, 0.0, std::min(bitmap.width, bitmap.height) / 2.0);
    std::size_t alpha = 3;
    for (int y = 0; y < rounded.height; ++y) {
        const double down = depthIntoCorner(y, rounded.height, limited);
        for (int x = 0; x < rounded.width; ++x, alpha += 4) {
            const double inside = coverage(depthIntoCorner(x, rounded.width, limited), down, limited);
            rounded.pixels[alpha] = static_cast<std::uint8_t>(std::lround(rounded.pixels[alpha] * inside));
        }
    }
    return rounded;
}

} // namespace exifcard

#pragma once

#include "platform/imageio/PixelCoder.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace exifcard {

inline std::size_t pixelCount(PixelSize size) {
    return static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
}

/// The size to decode to: the wanted one where it has the picture's shape to within a pixel, otherwise the
/// smallest of that shape that holds it. Never larger than the picture.
inline PixelSize targetSize(PixelSize stored, std::optional<PixelSize> wanted) {
    if (!wanted || wanted->width > stored.width || wanted->height > stored.height) {
        return stored;
    }
    const double scale =
        std::max(double(wanted->width) / stored.width, double(wanted->height) / stored.height);
    const auto side = [scale](int storedSide, int wantedSide) {
        const int exact = static_cast<int>(std::ceil(storedSide * scale));
        return exact - wantedSide <= 1 ? std::max(wantedSide, 1) : exact;
    };
    return {side(stored.width, wanted->width), side(stored.height, wanted->height)};
}

} // namespace exifcard

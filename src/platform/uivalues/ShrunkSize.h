#pragma once

#include "platform/uivalues/CGGeometry.h"

#include <algorithm>
#include <cmath>

namespace exifcard {

/// A length that something drawn can have.
inline double wholeLength(double length) {
    return std::max(1.0, std::round(length));
}

/// The size, or the largest of its shape that fits into the limits; in whole pixels, of which there is at
/// least one each way.
/// @param size    With area.
/// @param limits  Without area: none.
inline CGSize shrunkToFit(CGSize size, CGSize limits) {
    const bool isLimited = limits.width > 0 && limits.height > 0;
    const double factor =
        isLimited ? std::min({1.0, limits.width / size.width, limits.height / size.height}) : 1;
    return {wholeLength(size.width * factor), wholeLength(size.height * factor)};
}

} // namespace exifcard

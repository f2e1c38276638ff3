#pragma once

#include "appearance/UIColor+Hex.h"

namespace exifcard {

// The quiet colours of the screens, beside those of `Apperance`.

/// Texts of less weight: sizes, dates, hints.
inline UIColor secondaryTextColor() {
    return colorForCurrentStyleWithLight(colorWithHexString("6A6A6E"), colorWithHexString("9C9CA1"));
}

/// The disc behind a mark on a picture.
inline UIColor pictureBadgeColor() {
    return UIColor::white(0, 0.42);
}

/// The box of the progress overlay.
inline UIColor overlayBoxColor() {
    return colorForCurrentStyleWithLight(UIColor::white(0.1, 0.84), colorWithHexString("F02E2F33"));
}

} // namespace exifcard

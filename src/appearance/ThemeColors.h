#pragma once

#include "appearance/UIColor+Hex.h"

#include <string_view>

namespace exifcard {

// The quiet colours of the screens, beside those of `Apperance`.

/// Two colours as hexadecimal texts, for light and for dark; follows the appearance whatever the system
/// version.
inline UIColor colorPair(std::string_view light, std::string_view dark) {
    return UIColor(colorWithHexString(light).resolved(UIUserInterfaceStyle::Light),
        colorWithHexString(dark).resolved(UIUserInterfaceStyle::Light));
}

/// Texts of less weight: sizes, dates, hints.
inline UIColor secondaryTextColor() {
    return colorPair("6A6A6E", "9C9CA1");
}

/// Lines of one pixel.
inline UIColor hairlineColor() {
    return colorPair("DCDCDE", "2A2A2C");
}

/// Bars of a window, and what lies around an input field.
inline UIColor chromeColor() {
    return colorPair("FBFBFB", "0B0B0C");
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

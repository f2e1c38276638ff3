#pragma once

#include "platform/uivalues/UIColor.h"

#include <string_view>

namespace exifcard {

/// Reads a colour such as "#F6F6F6" or, with the opacity first, "80FF0000".
///
/// @param text  Six or eight digits in either case; every "#" is dropped.
/// @return Transparent black for any other length. Digits that are none give 0
///         for their component.
UIColor colorWithHexString(std::string_view text);

/// Two hexadecimal digits as a component from 0 to 1; 0 for what is no number.
double colorComponentWithHexString(std::string_view digits);

/// A colour that is `light` in light and `dark` in dark appearance. Before
/// system 13 it is always `light`.
UIColor colorForCurrentStyleWithLight(const UIColor& light, const UIColor& dark);

/// The near-black that stands in for pure black.
UIColor blackOLEDSafe();
/// White in light, black in dark appearance.
UIColor themeColor();

} // namespace exifcard

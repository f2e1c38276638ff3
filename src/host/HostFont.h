#pragma once

#include <QFont>

namespace exifcard {

enum class HostFontWeight { Regular, Medium, DemiBold, Bold };

/// Text of 15 grows to 24 at most, and all other sizes in proportion.
inline constexpr double kLargestTextScale = 1.6;

/// The window's face at that size, in logical pixels, scaled as the user's content size category asks.
/// @param largestScale  Less where the room is fixed; 1 keeps the size.
QFont hostFont(
    double size, HostFontWeight weight = HostFontWeight::Regular, double largestScale = kLargestTextScale);
/// The height of a line of such text, from that at the default category.
int hostLineHeight(int lineHeight, double largestScale = kLargestTextScale);

} // namespace exifcard

#pragma once

#include <QFont>

namespace exifcard {

enum class HostFontWeight { Regular, Medium, DemiBold, Bold };

/// The window's face at that size, in logical pixels, scaled as the user's content size category asks.
QFont hostFont(double size, HostFontWeight weight = HostFontWeight::Regular);
/// How much higher lines are than at the default category; at least as high as `hostFont` needs.
int hostLineHeight(int lineHeight);

} // namespace exifcard

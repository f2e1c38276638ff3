#pragma once

namespace exifcard {

/// Whether the desktop inverts all colours; false unless the host or a test sets it.
bool UIAccessibilityIsInvertColorsEnabled();
void setInvertColorsEnabled(bool isEnabled);

} // namespace exifcard

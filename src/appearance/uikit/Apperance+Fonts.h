#pragma once

#include "platform/uikit/UIFont.h"
#include "platform/uikit/UIFontMetrics.h"

#include <optional>

namespace exifcard {

// Class operations of `Apperance` on fonts. Nothing scales to nothing; without metrics a font stays as it is.

/// What scales texts with the user's content size; nothing on a system before "11.0". Found out once.
const std::optional<UIFontMetrics>& bodyMetrics();
const std::optional<UIFontMetrics>& calloutMetrics();

std::optional<UIFont> scaledFontForBodyMetricsWithFont(const std::optional<UIFont>& font);
/// @param maximumSize  In points.
std::optional<UIFont> scaledFontForBodyMetricsWithFont(const std::optional<UIFont>& font, double maximumSize);
std::optional<UIFont> scaledFontForCalloutMetricsWithFont(
    const std::optional<UIFont>& font, double maximumSize);

/// The font of detail rows: light or medium, as the user chose, at 15 points, scaled to at most 24.
std::optional<UIFont> fontStyleWithCurrentSettingsMaximumSize();

} // namespace exifcard

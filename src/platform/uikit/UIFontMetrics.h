#pragma once

#include "platform/uikit/UIFont.h"

#include <optional>

namespace exifcard {

enum class UIFontTextStyle { Body, Callout };

/// Scales fonts as the user's content size category asks for a text style: by the ratio of the style's
/// leading to that of the default category, rounded to the screen's pixels.
class UIFontMetrics {
public:
    explicit UIFontMetrics(UIFontTextStyle textStyle) : _textStyle(textStyle) {}

    double scaledValueForValue(double value) const;
    /// @param maximumPointSize  The size never exceeds it, even where `font` does.
    UIFont scaledFontForFont(const UIFont& font, std::optional<double> maximumPointSize = std::nullopt) const;

private:
    UIFontTextStyle _textStyle;
};

} // namespace exifcard

#pragma once

#include <optional>
#include <string>

class QFont;

namespace exifcard {

/// A typeface by the name it was asked for, and its size.
struct UIFont {
    std::string fontName;
    double pointSize = 0;
    bool operator==(const UIFont&) const = default;

    /// "AvenirNext-Regular", "-Medium", "-DemiBold" and "-Bold" are there; nothing for any other name.
    static std::optional<UIFont> fontWithName(const std::string& fontName, double size);
};

/// What the toolkit draws for it: the closest free face, in logical pixels.
QFont qFont(const UIFont& font);

} // namespace exifcard

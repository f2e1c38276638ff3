#pragma once

namespace exifcard {

/// Light or dark; the platform's numbers.
enum class UIUserInterfaceStyle { Unspecified = 0, Light = 1, Dark = 2 };

/// Components from 0 to 1, straight alpha.
struct RGBA {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;
    bool operator==(const RGBA&) const = default;
};

/// A colour, or a pair that is resolved against the interface style each time it is drawn.
class UIColor {
public:
    UIColor() = default;
    explicit UIColor(RGBA components) : _light(components), _dark(components) {}
    UIColor(RGBA light, RGBA dark) : _light(light), _dark(dark) {}

    static UIColor white(double white, double alpha = 1) { return UIColor(RGBA{white, white, white, alpha}); }
    static UIColor whiteColor() { return white(1); }
    static UIColor blackColor() { return white(0); }
    static UIColor lightGrayColor() { return white(2.0 / 3); }
    static UIColor darkGrayColor() { return white(1.0 / 3); }

    /// The components in that style; unspecified counts as light.
    const RGBA& resolved(UIUserInterfaceStyle style) const {
        return style == UIUserInterfaceStyle::Dark ? _dark : _light;
    }
    bool isDynamic() const { return !(_light == _dark); }
    UIColor withAlpha(double alpha) const;

    bool operator==(const UIColor&) const = default;

private:
    RGBA _light;
    RGBA _dark;
};

inline UIColor UIColor::withAlpha(double alpha) const {
    UIColor color = *this;
    color._light.alpha = alpha;
    color._dark.alpha = alpha;
    return color;
}

} // namespace exifcard

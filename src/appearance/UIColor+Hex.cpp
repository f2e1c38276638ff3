#include "appearance/UIColor+Hex.h"
#include "platform/uivalues/UIDevice.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string>

namespace exifcard {
namespace {

constexpr std::size_t kOpaqueLength = 6;    // RRGGBB
constexpr std::size_t kLengthWithAlpha = 8; // AARRGGBB
constexpr char kNoDigit = '?';
constexpr RGBA kTransparentBlack = {0, 0, 0, 0};

/// Without "#", and with one letter that is no digit for each character beyond ASCII: lengths count
/// characters, not bytes, and outside the basic plane two each.
std::string charactersOf(std::string_view text) {
    std::string characters;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        const bool isContinued = (byte & 0xC0U) == 0x80U;
        if (byte < 0x80U) {
            characters.append(character == '#' ? 0 : 1, character);
        } else if (!isContinued) {
            characters.append(byte >= 0xF0U ? 2 : 1, kNoDigit);
        }
    }
    return characters;
}

RGBA opaqueColorFromDigits(std::string_view digits) {
    const auto component = [digits](std::size_t position) {
        return colorComponentWithHexString(digits.substr(position, 2));
    };
    return RGBA{component(0), component(2), component(4), 1};
}

} // namespace

double colorComponentWithHexString(std::string_view digits) {
    digits.remove_prefix(std::min(digits.find_first_not_of(" \t\r\n"), digits.size()));
    std::uint32_t number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
    return static_cast<float>(number) / 255.0F; // Single precision, as the platform has components.
}

UIColor colorWithHexString(std::string_view text) {
    const std::string digits = charactersOf(text);
    if (digits.size() == kOpaqueLength) {
        return UIColor(opaqueColorFromDigits(digits));
    }
    if (digits.size() == kLengthWithAlpha) {
        const std::string_view view = digits;
        RGBA color = opaqueColorFromDigits(view.substr(2));
        color.alpha = colorComponentWithHexString(view.substr(0, 2));
        return UIColor(color);
    }
    return UIColor(kTransparentBlack);
}

UIColor colorForCurrentStyleWithLight(const UIColor& light, const UIColor& dark) {
    if (!isSystemVersionAtLeast("13.0")) {
        return light;
    }
    return {light.resolved(UIUserInterfaceStyle::Light), dark.resolved(UIUserInterfaceStyle::Dark)};
}

UIColor blackOLEDSafe() {
    return UIColor::white(5.0 / 255);
}

UIColor themeColor() {
    return colorForCurrentStyleWithLight(UIColor::whiteColor(), UIColor::blackColor());
}

} // namespace exifcard

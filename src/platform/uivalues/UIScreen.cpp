#include "platform/uivalues/UIScreen.h"

#include <charconv>

namespace exifcard {
namespace {

constexpr double kLargestSide = 100'000; // Beyond any display; keeps pixel counts far from overflow.
constexpr double kLargestScale = 16;

UIScreen& storedScreen() {
    static UIScreen screen;
    return screen;
}

/// Takes a number greater than 0 and at most `limit` off the front of `rest`.
std::optional<double> takeNumber(std::string_view& rest, double limit) {
    double number = 0;
    const auto parsed =
        std::from_chars(rest.data(), rest.data() + rest.size(), number, std::chars_format::fixed);
    if (parsed.ec != std::errc() || !(number > 0) || number > limit) {
        return std::nullopt;
    }
    rest.remove_prefix(static_cast<std::size_t>(parsed.ptr - rest.data()));
    return number;
}

bool takeLetter(std::string_view& rest, char letter) {
    if (!rest.starts_with(letter)) {
        return false;
    }
    rest.remove_prefix(1);
    return true;
}

} // namespace

const UIScreen& UIScreen::mainScreen() {
    return storedScreen();
}

void UIScreen::setMainScreen(const UIScreen& screen) {
    storedScreen() = screen;
}

std::optional<UIScreen> UIScreen::screenFromText(std::string_view text) {
    const auto width = takeNumber(text, kLargestSide);
    if (!width || !takeLetter(text, 'x')) {
        return std::nullopt;
    }
    const auto height = takeNumber(text, kLargestSide);
    if (!height || !takeLetter(text, '@')) {
        return std::nullopt;
    }
    const auto scale = takeNumber(text, kLargestScale);
    if (!scale || !text.empty()) {
        return std::nullopt;
    }
    return UIScreen{{*width, *height}, *scale};
}

} // namespace exifcard

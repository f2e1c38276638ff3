#include "platform/foundation/NumericDatePattern.h"

#include <algorithm>
#include <charconv>

namespace exifcard {
namespace {

struct Field {
    std::string_view letters;
    int WallClock::*number;
};
constexpr Field kFields[] = {
    {"yyyy", &WallClock::year},
    {"MM", &WallClock::month},
    {"dd", &WallClock::day},
    {"HH", &WallClock::hour},
    {"mm", &WallClock::minute},
    {"ss", &WallClock::second},
};

/// The field at the front of the pattern, or null where a sign stands.
const Field* frontField(std::string_view pattern) {
    const auto* const found =
        std::ranges::find_if(kFields, [&](const Field& field) { return pattern.starts_with(field.letters); });
    return found != std::end(kFields) ? found : nullptr;
}

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

/// Takes the field's number off the front of `text`; false without one.
bool takeField(std::string_view& text, const Field& field, WallClock& clock) {
    if (text.empty() || !isDigit(text.front())) {
        return false; // from_chars would take a minus.
    }
    const char* const end = text.data() + std::min(text.size(), field.letters.size());
    const auto parsed = std::from_chars(text.data(), end, clock.*field.number);
    text.remove_prefix(static_cast<std::size_t>(parsed.ptr - text.data()));
    return true;
}

bool takeSign(std::string_view& text, char sign) {
    if (!text.starts_with(sign)) {
        return false;
    }
    text.remove_prefix(1);
    return true;
}

} // namespace

std::optional<NumericDatePattern> NumericDatePattern::fromPattern(std::string_view pattern) {
    constexpr std::string_view kSigns = " :-./,_";
    bool isAfterNumber = false;
    for (std::string_view rest = pattern; !rest.empty();) {
        const Field* const field = frontField(rest);
        const bool isSign = kSigns.find(rest.front()) != std::string_view::npos;
        const std::size_t length = field != nullptr ? field->letters.size() : 1;
        const bool isRepeated =
            field != nullptr && rest.find(field->letters.front(), length) != std::string_view::npos;
        if ((field == nullptr && !isSign) || (field != nullptr && isAfterNumber) || isRepeated) {
            return std::nullopt;
        }
        isAfterNumber = field != nullptr;
        rest.remove_prefix(length);
    }
    return NumericDatePattern(pattern);
}

std::optional<WallClock> NumericDatePattern::read(std::string_view text) const {
    WallClock clock;
    for (std::string_view pattern = _pattern; !pattern.empty();) {
        const Field* const field = frontField(pattern);
        if (!(field != nullptr ? takeField(text, *field, clock) : takeSign(text, pattern.front()))) {
            return std::nullopt;
        }
        pattern.remove_prefix(field != nullptr ? field->letters.size() : 1);
    }
    return text.empty() ? std::optional(clock) : std::nullopt;
}

} // namespace exifcard

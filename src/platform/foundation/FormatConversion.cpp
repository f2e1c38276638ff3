#include "platform/foundation/FormatConversion.h"

#include <algorithm>
#include <charconv>

namespace exifcard {
namespace {

/// A number without digits is 0; nothing for one above `largest`.
std::optional<std::size_t> takeNumber(std::string_view& rest, std::size_t largest) {
    std::size_t number = 0;
    const auto parsed = std::from_chars(rest.data(), rest.data() + rest.size(), number);
    if (parsed.ec == std::errc::invalid_argument) {
        return 0;
    }
    if (parsed.ec != std::errc() || number > largest) {
        return std::nullopt;
    }
    rest.remove_prefix(static_cast<std::size_t>(parsed.ptr - rest.data()));
    return number;
}

/// "2$": the position in front of everything else. False for one out of range.
bool takePosition(std::string_view& rest, FormatConversion& conversion) {
    const auto digits = std::min(rest.find_first_not_of("0123456789"), rest.size());
    if (digits == 0 || digits == rest.size() || rest[digits] != '$') {
        return true;
    }
    const auto position = takeNumber(rest, kHighestFormatPosition);
    if (!position || *position == 0) {
        return false;
    }
    conversion.position = *position;
    rest.remove_prefix(1);
    return true;
}

void takeFlags(std::string_view& rest, FormatConversion& conversion) {
    for (; !rest.empty(); rest.remove_prefix(1)) {
        switch (rest.front()) {
        case '-':
            conversion.isLeftAligned = true;
            break;
        case '+':
            conversion.showsPlus = true;
            break;
        case ' ':
            conversion.showsSpace = true;
            break;
        case '#':
            conversion.isAlternate = true;
            break;
        case '0':
            conversion.padsWithZeros = true;
            break;
        default:
            return;
        }
    }
}

/// The width and precision; false for one out of range.
bool takeSizes(std::string_view& rest, FormatConversion& conversion) {
    const auto width = takeNumber(rest, kWidestFormatField);
    if (!width) {
        return false;
    }
    conversion.width = *width;
    if (rest.starts_with('.')) {
        rest.remove_prefix(1);
        conversion.precision = takeNumber(rest, kHighestFormatPrecision);
        return conversion.precision.has_value();
    }
    return true;
}

void takeLength(std::string_view& rest, FormatConversion& conversion) {
    struct Length {
        std::string_view modifier;
        unsigned integerBits;
    };
    constexpr Length kLengths[] = {
        {"hh", 8}, {"h", 16}, {"ll", 64}, {"l", 64}, {"q", 64}, {"j", 64}, {"z", 64}, {"t", 64}, {"L", 64}};
    for (const Length& length : kLengths) {
        if (rest.starts_with(length.modifier)) {
            conversion.integerBits = length.integerBits;
            rest.remove_prefix(length.modifier.size());
            return;
        }
    }
}

FormatConversion::Takes takesOfLetter(char letter) {
    using Takes = FormatConversion::Takes;
    if (std::string_view("diuxXo").find(letter) != std::string_view::npos) {
        return Takes::Integer;
    }
    if (std::string_view("fFeEgGaA").find(letter) != std::string_view::npos) {
        return Takes::Real;
    }
    if (letter == '@') {
        return Takes::Object;
    }
    return letter == '%' ? Takes::Percent : Takes::Nothing;
}

} // namespace

FormatConversion FormatConversion::takeFrom(std::string_view& rest) {
    FormatConversion conversion;
    std::string_view after = rest.substr(1);
    if (takePosition(after, conversion)) {
        takeFlags(after, conversion);
        if (takeSizes(after, conversion)) {
            takeLength(after, conversion);
            conversion.letter = after.empty() ? '\0' : after.front();
            conversion.takes = takesOfLetter(conversion.letter);
        }
    }
    if (conversion.takes != Takes::Nothing) {
        after.remove_prefix(1);
    }
    conversion.written = rest.substr(0, rest.size() - after.size());
    rest = after;
    return conversion;
}

} // namespace exifcard

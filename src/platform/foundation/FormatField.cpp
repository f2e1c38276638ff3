#include "platform/foundation/FormatField.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <span>
#include <tuple>
#include <utility>

namespace exifcard {
namespace {

/// Holds the digits of the largest double before the point and the highest precision after it.
constexpr std::size_t kLongestReal = 310 + kHighestFormatPrecision + 16;
/// Holds the octal digits of 64 bits behind any precision.
constexpr std::size_t kLongestInteger = kHighestFormatPrecision + 64;

/// Fills the field's width with spaces, or with zeros between `prefix` (a sign, "0x") and `body`.
void appendField(std::string& text,
    const FormatConversion& conversion,
    std::string_view prefix,
    std::string_view body,
    bool mayPadWithZeros) {
    const std::size_t length = prefix.size() + body.size();
    const std::size_t padding = conversion.width > length ? conversion.width - length : 0;
    const bool padsWithZeros = conversion.padsWithZeros && mayPadWithZeros && !conversion.isLeftAligned;
    if (!conversion.isLeftAligned && !padsWithZeros) {
        text.append(padding, ' ');
    }
    text += prefix;
    if (padsWithZeros) {
        text.append(padding, '0');
    }
    text += body;
    if (conversion.isLeftAligned) {
        text.append(padding, ' ');
    }
}

std::string_view signPrefix(const FormatConversion& conversion, bool isNegative) {
    if (isNegative) {
        return "-";
    }
    if (conversion.showsPlus) {
        return "+";
    }
    return conversion.showsSpace ? " " : "";
}

bool isSigned(const FormatConversion& conversion) {
    return conversion.letter == 'd' || conversion.letter == 'i';
}

/// The part of the argument that the conversion's length lets through, sign extended for "%d".
std::uint64_t countedBits(const FormatConversion& conversion, std::int64_t argument) {
    const unsigned dropped = 64 - conversion.integerBits;
    const auto shifted = static_cast<std::uint64_t>(argument) << dropped;
    return isSigned(conversion) ? static_cast<std::uint64_t>(static_cast<std::int64_t>(shifted) >> dropped)
                                : shifted >> dropped;
}

int baseOf(const FormatConversion& conversion) {
    switch (conversion.letter) {
    case 'x':
    case 'X':
        return 16;
    case 'o':
        return 8;
    default:
        return 10;
    }
}

void makeUpper(char* first, char* last) {
    std::transform(first, last, first, [](char character) {
        return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
    });
}

/// The digits of an integer, in a part of `buffer`. A precision is the least
/// number of digits, so that with 0 the number 0 has none.
std::string_view writeInteger(
    std::span<char> buffer, const FormatConversion& conversion, std::uint64_t magnitude) {
    char* const digits = buffer.data() + kHighestFormatPrecision; // Room for zeros in front.
    char* const end = std::to_chars(digits, buffer.data() + buffer.size(), magnitude, baseOf(conversion)).ptr;
    if (conversion.letter == 'X') {
        makeUpper(digits, end);
    }
    char* start = magnitude == 0 && conversion.precision == 0 ? end : digits;
    const auto leastDigits = static_cast<std::ptrdiff_t>(conversion.precision.value_or(1));
    while (end - start < leastDigits) {
        *--start = '0';
    }
    if (conversion.isAlternate && conversion.letter == 'o' && (start == end || *start != '0')) {
        *--start = '0';
    }
    return {start, static_cast<std::size_t>(end - start)};
}

/// The digits of a finite number that is not negative, as C writes them; `letter` is f, e, g or a.
char* writeReal(std::span<char> buffer, char letter, std::optional<std::size_t> precision, double magnitude) {
    constexpr std::size_t kDefaultPrecision = 6;
    constexpr std::pair<char, std::chars_format> kStyles[] = {{'f', std::chars_format::fixed},
        {'e', std::chars_format::scientific}, {'g', std::chars_format::general},
        {'a', std::chars_format::hex}};
    const auto style = std::ranges::find(kStyles, letter, &std::pair<char, std::chars_format>::first)->second;
    char* const first = buffer.data();
    char* const last = first + buffer.size();
    if (letter == 'a' && !precision) {
        return std::to_chars(first, last, magnitude, style).ptr;
    }
    return std::to_chars(
        first, last, magnitude, style, static_cast<int>(precision.value_or(kDefaultPrecision)))
        .ptr;
}

/// "%#g" keeps its zeros: the style and precision that write as many digits.
std::pair<char, std::size_t> unshortenedGeneral(
    std::span<char> buffer, std::size_t significantDigits, double magnitude) {
    const std::size_t fractionDigits = significantDigits - 1;
    char* const end = writeReal(buffer, 'e', fractionDigits, magnitude);
    const char* exponentText = std::find(buffer.data(), end, 'e') + 1;
    exponentText += *exponentText == '+' ? 1 : 0; // from_chars reads no plus.
    int exponent = 0;
    std::from_chars(exponentText, end, exponent);
    if (exponent < -4 || exponent >= static_cast<int>(significantDigits)) {
        return {'e', fractionDigits};
    }
    return {'f', static_cast<std::size_t>(static_cast<int>(fractionDigits) - exponent)};
}

/// The same with "#": there is always a decimal point.
char* writeAlternateReal(
    std::span<char> buffer, char letter, std::optional<std::size_t> precision, double magnitude) {
    if (letter == 'g') {
        std::tie(letter, precision) =
            unshortenedGeneral(buffer, std::max<std::size_t>(precision.value_or(6), 1), magnitude);
    }
    char* const first = buffer.data();
    char* const end = writeReal(buffer, letter, precision, magnitude);
    if (std::find(first, end, '.') != end) {
        return end;
    }
    char* const exponent = std::find(first, end, letter == 'a' ? 'p' : 'e');
    std::move_backward(exponent, end, end + 1);
    *exponent = '.';
    return end + 1;
}

} // namespace

void appendInteger(std::string& text, const FormatConversion& conversion, std::int64_t argument) {
    const std::uint64_t bits = countedBits(conversion, argument);
    const bool isNegative = isSigned(conversion) && static_cast<std::int64_t>(bits) < 0;
    const std::uint64_t magnitude = isNegative ? 0 - bits : bits;
    std::string_view prefix = isSigned(conversion) ? signPrefix(conversion, isNegative) : "";
    if (conversion.isAlternate && baseOf(conversion) == 16 && magnitude != 0) {
        prefix = conversion.letter == 'x' ? "0x" : "0X";
    }
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): written before it is read.
    std::array<char, kLongestInteger> buffer;
    appendField(text, conversion, prefix, writeInteger(buffer, conversion, magnitude),
        /*mayPadWithZeros=*/!conversion.precision);
}

void appendReal(std::string& text, const FormatConversion& conversion, double argument) {
    const bool isUpper = conversion.letter < 'a';
    const char lowerLetter = isUpper ? static_cast<char>(conversion.letter - 'A' + 'a') : conversion.letter;
    // Intended: not-a-number has no sign, whatever its sign bit says.
    const bool isNegative = std::signbit(argument) && !std::isnan(argument);
    std::string prefix(signPrefix(conversion, isNegative));
    if (!std::isfinite(argument)) {
        const std::string_view lower = std::isnan(argument) ? "nan" : "inf";
        const std::string_view upper = std::isnan(argument) ? "NAN" : "INF";
        appendField(text, conversion, prefix, isUpper ? upper : lower, /*mayPadWithZeros=*/false);
        return;
    }
    if (lowerLetter == 'a') {
        prefix += isUpper ? "0X" : "0x";
    }
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): written before it is read.
    std::array<char, kLongestReal> buffer;
    char* const end = (conversion.isAlternate ? writeAlternateReal : writeReal)(
        buffer, lowerLetter, conversion.precision, std::abs(argument));
    if (isUpper) {
        makeUpper(buffer.data(), end);
    }
    appendField(text, conversion, prefix,
        std::string_view(buffer.data(), static_cast<std::size_t>(end - buffer.data())),
        /*mayPadWithZeros=*/true);
}

void appendObject(std::string& text, const FormatConversion& conversion, std::string_view argument) {
    if (conversion.width == 0 && !conversion.precision) {
        text += argument;
        return;
    }
    const auto beginsCharacter = [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
    };
    std::size_t characters = 0;
    std::size_t length = 0;
    for (; length < argument.size(); ++length) {
        if (beginsCharacter(argument[length]) && characters++ == conversion.precision) {
            break;
        }
    }
    argument = argument.substr(0, length);
    FormatConversion inBytes = conversion;
    inBytes.width +=
        argument.size() - static_cast<std::size_t>(std::ranges::count_if(argument, beginsCharacter));
    appendField(text, inBytes, "", argument, /*mayPadWithZeros=*/false);
}

} // namespace exifcard

#include "platform/foundation/FormatString.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <span>
#include <tuple>
#include <vector>

namespace exifcard {
namespace {

/// No text of the system is wider or more exact; a translation that asks for more is wrong.
constexpr std::size_t kWidestField = 512;
constexpr std::size_t kHighestPrecision = 512;
/// Positions count from 1. No format takes more arguments.
constexpr std::size_t kHighestPosition = 32;
/// Holds the digits of the largest double before the point and the highest precision after it.
constexpr std::size_t kLongestNumber = 310 + kHighestPrecision + 16;

enum class Takes { Nothing, Integer, Real, Object };

/// One "%…" of a format, read but not yet filled.
struct Conversion {
    std::string_view written; ///< From the "%" to its letter.
    std::size_t position = 0; ///< 0 takes the argument after the one before.
    std::size_t width = 0;
    std::optional<std::size_t> precision;
    bool isLeftAligned = false;
    bool showsPlus = false;
    bool showsSpace = false;
    bool isAlternate = false;
    bool padsWithZeros = false;
    unsigned integerBits = 32; ///< What of an integer argument counts.
    char letter = '\0';
    Takes takes = Takes::Nothing;
};

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
bool takePosition(std::string_view& rest, Conversion& conversion) {
    const auto digits = std::min(rest.find_first_not_of("0123456789"), rest.size());
    if (digits == 0 || digits == rest.size() || rest[digits] != '$') {
        return true;
    }
    const auto position = takeNumber(rest, kHighestPosition);
    if (!position || *position == 0) {
        return false;
    }
    conversion.position = *position;
    rest.remove_prefix(1);
    return true;
}

void takeFlags(std::string_view& rest, Conversion& conversion) {
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
bool takeSizes(std::string_view& rest, Conversion& conversion) {
    const auto width = takeNumber(rest, kWidestField);
    if (!width) {
        return false;
    }
    conversion.width = *width;
    if (rest.starts_with('.')) {
        rest.remove_prefix(1);
        conversion.precision = takeNumber(rest, kHighestPrecision);
        return conversion.precision.has_value();
    }
    return true;
}

void takeLength(std::string_view& rest, Conversion& conversion) {
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

Takes takesOfLetter(char letter) {
    if (std::string_view("diuxXo").find(letter) != std::string_view::npos) {
        return Takes::Integer;
    }
    if (std::string_view("fFeEgGaA").find(letter) != std::string_view::npos) {
        return Takes::Real;
    }
    return letter == '@' ? Takes::Object : Takes::Nothing;
}

/// Takes the conversion off the front of `rest`, which begins with "%". With
/// `takes` Nothing it is one that cannot be filled, unless its letter is "%".
Conversion takeConversion(std::string_view& rest) {
    Conversion conversion;
    std::string_view after = rest.substr(1);
    const bool isReadable =
        takePosition(after, conversion) && (takeFlags(after, conversion), takeSizes(after, conversion));
    if (isReadable) {
        takeLength(after, conversion);
    }
    if (isReadable && !after.empty()) {
        conversion.letter = after.front();
        conversion.takes = takesOfLetter(conversion.letter);
    }
    if (conversion.takes != Takes::Nothing || conversion.letter == '%') {
        after.remove_prefix(1);
    }
    conversion.written = rest.substr(0, rest.size() - after.size());
    rest = after;
    return conversion;
}

/// Text, "%…", text, "%…": hands each to its own function in their order.
template<typename OnText, typename OnConversion>
void readFormat(std::string_view format, const OnText& onText, const OnConversion& onConversion) {
    while (!format.empty()) {
        const auto percent = std::min(format.find('%'), format.size());
        if (percent > 0) {
            onText(format.substr(0, percent));
            format.remove_prefix(percent);
        }
        if (!format.empty()) {
            onConversion(takeConversion(format));
        }
    }
}

/// Fills the field's width with spaces, or with zeros between `prefix` (a sign, "0x") and `body`.
void appendField(std::string& text,
    const Conversion& conversion,
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

std::string_view signPrefix(const Conversion& conversion, bool isNegative) {
    if (isNegative) {
        return "-";
    }
    if (conversion.showsPlus) {
        return "+";
    }
    return conversion.showsSpace ? " " : "";
}

bool isSigned(const Conversion& conversion) {
    return conversion.letter == 'd' || conversion.letter == 'i';
}

/// The part of the argument that the conversion's length lets through, sign extended for "%d".
std::uint64_t countedBits(const Conversion& conversion, std::int64_t argument) {
    const unsigned dropped = 64 - conversion.integerBits;
    const auto shifted = static_cast<std::uint64_t>(argument) << dropped;
    return isSigned(conversion) ? static_cast<std::uint64_t>(static_cast<std::int64_t>(shifted) >> dropped)
                                : shifted >> dropped;
}

void appendInteger(std::string& text, const Conversion& conversion, std::int64_t argument) {
    const std::uint64_t bits = countedBits(conversion, argument);
    const bool isNegative = isSigned(conversion) && static_cast<std::int64_t>(bits) < 0;
    const std::uint64_t magnitude = isNegative ? 0 - bits : bits;
    const bool isHexadecimal = conversion.letter == 'x' || conversion.letter == 'X';
    const int base = isHexadecimal ? 16 : conversion.letter == 'o' ? 8 : 10;

    std::array<char, kHighestPrecision + 64> buffer;
    char* const digits = buffer.data() + kHighestPrecision;
    char* const end = std::to_chars(digits, buffer.data() + buffer.size(), magnitude, base).ptr;
    if (conversion.letter == 'X') {
        std::transform(digits, end, digits,
            [](char digit) { return digit >= 'a' ? static_cast<char>(digit - 'a' + 'A') : digit; });
    }
    // A precision is the least number of digits, so that with 0 the number 0 has none.
    char* start = magnitude == 0 && conversion.precision == 0 ? end : digits;
    const auto leastDigits = static_cast<std::ptrdiff_t>(conversion.precision.value_or(1));
    while (end - start < leastDigits) {
        *--start = '0';
    }
    if (conversion.isAlternate && base == 8 && (start == end || *start != '0')) {
        *--start = '0';
    }

    std::string_view prefix = isSigned(conversion) ? signPrefix(conversion, isNegative) : "";
    if (conversion.isAlternate && isHexadecimal && magnitude != 0) {
        prefix = conversion.letter == 'x' ? "0x" : "0X";
    }
    appendField(text, conversion, prefix, std::string_view(start, static_cast<std::size_t>(end - start)),
        /*mayPadWithZeros=*/!conversion.precision);
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

void appendReal(std::string& text, const Conversion& conversion, double argument) {
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
    std::array<char, kLongestNumber> buffer;
    char* const end = (conversion.isAlternate ? writeAlternateReal : writeReal)(
        buffer, lowerLetter, conversion.precision, std::abs(argument));
    if (isUpper) {
        std::transform(buffer.data(), end, buffer.data(), [](char digit) {
            return digit >= 'a' && digit <= 'z' ? static_cast<char>(digit - 'a' + 'A') : digit;
        });
    }
    appendField(text, conversion, prefix,
        std::string_view(buffer.data(), static_cast<std::size_t>(end - buffer.data())),
        /*mayPadWithZeros=*/true);
}

void appendObject(std::string& text, const Conversion& conversion, std::string_view object) {
    const auto isContinuation = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; };
    if (conversion.precision) {
        std::size_t characters = 0;
        const auto end = std::ranges::find_if(object,
            [&](char byte) { return !isContinuation(byte) && characters++ == *conversion.precision; });
        object = object.substr(0, static_cast<std::size_t>(end - object.begin()));
    }
    const auto continuations = static_cast<std::size_t>(std::ranges::count_if(object, isContinuation));
    Conversion counted = conversion;
    counted.width =
        conversion.width == 0 ? 0 : conversion.width + continuations; // A width counts characters.
    appendField(text, counted, "", object, /*mayPadWithZeros=*/false);
}

/// False, and nothing appended, when the argument is of another kind.
bool appendArgument(std::string& text, const Conversion& conversion, const FormatArgument& argument) {
    using Kind = FormatArgument::Kind;
    if (conversion.takes == Takes::Integer && argument.kind() == Kind::Integer) {
        appendInteger(text, conversion, argument.integer());
        return true;
    }
    if (conversion.takes == Takes::Real && argument.kind() == Kind::Real) {
        appendReal(text, conversion, argument.real());
        return true;
    }
    if (conversion.takes == Takes::Object && argument.kind() == Kind::Text) {
        appendObject(text, conversion, argument.text());
        return true;
    }
    if (conversion.takes == Takes::Object && argument.kind() == Kind::Object) {
        appendObject(text, conversion, argument.object().description());
        return true;
    }
    return false;
}

/// What the format takes at each position, or nothing for one that cannot be filled.
std::optional<std::vector<Takes>> takenKinds(std::string_view format) {
    std::vector<Takes> kinds;
    bool isFillable = true;
    std::size_t next = 0;
    const auto note = [&](const Conversion& conversion) {
        if (conversion.letter == '%') {
            return;
        }
        const std::size_t index = conversion.position > 0 ? conversion.position - 1 : next++;
        if (conversion.takes == Takes::Nothing || index >= kHighestPosition) {
            isFillable = false;
            return;
        }
        kinds.resize(std::max(kinds.size(), index + 1), Takes::Nothing);
        isFillable = isFillable && (kinds[index] == Takes::Nothing || kinds[index] == conversion.takes);
        kinds[index] = conversion.takes;
    };
    readFormat(
        format, [](std::string_view) {}, note);
    return isFillable ? std::optional(std::move(kinds)) : std::nullopt;
}

} // namespace

std::string stringWithFormat(std::string_view format, std::initializer_list<FormatArgument> arguments) {
    std::string text;
    std::size_t next = 0;
    const auto fill = [&](const Conversion& conversion) {
        if (conversion.letter == '%') {
            text += '%';
            return;
        }
        const bool isKnown = conversion.takes != Takes::Nothing;
        const std::size_t index = conversion.position > 0 ? conversion.position - 1 : isKnown ? next++ : 0;
        const bool isFilled =
            isKnown && index < arguments.size() && appendArgument(text, conversion, arguments.begin()[index]);
        if (!isFilled) {
            text += conversion.written;
        }
    };
    readFormat(
        format, [&text](std::string_view literal) { text += literal; }, fill);
    return text;
}

bool formatsAgree(std::string_view original, std::string_view translated) {
    const auto kinds = takenKinds(original);
    return kinds && kinds == takenKinds(translated);
}

} // namespace exifcard

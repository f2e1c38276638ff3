#include "cli/DisplayText.h"

#include <clocale>
#include <cwchar>

namespace exifcard {
namespace {

constexpr std::string_view kReplacement = "\uFFFD";

/// The bytes that follow a first byte, and the smallest code point written with so many; 0 for no first byte.
struct Sequence {
    std::size_t followers = 0;
    char32_t bits = 0;
    char32_t smallest = 0;
};

Sequence sequenceOf(unsigned char first) {
    if (first < 0x80) {
        return {0, first, 0};
    }
    if (first >= 0xC2 && first < 0xE0) {
        return {1, first & 0x1FU, 0x80};
    }
    if (first >= 0xE0 && first < 0xF0) {
        return {2, first & 0x0FU, 0x800};
    }
    if (first >= 0xF0 && first < 0xF5) {
        return {3, first & 0x07U, 0x10000};
    }
    return {0, kMalformedCharacter, 0};
}

bool isControl(char32_t character) {
    return character < 0x20 || (character >= 0x7F && character < 0xA0);
}

/// Marks that turn the direction of what follows, and line separators: they could rearrange a terminal's
/// line.
bool isLayoutMark(char32_t character) {
    return (character >= 0x2028 && character <= 0x202E) || (character >= 0x2066 && character <= 0x2069);
}

/// U+2400 and on are pictures of the control characters.
std::string pictureOf(char32_t control) {
    if (control >= 0x80) {
        return std::string(kReplacement);
    }
    const char32_t picture = control == 0x7F ? 0x2421 : 0x2400 + control;
    return {static_cast<char>(0xE2), static_cast<char>(0x80 | (picture >> 6 & 0x3F)),
        static_cast<char>(0x80 | (picture & 0x3F))};
}

bool isPlain(std::string_view text) {
    for (const char character : text) {
        if (character < 0x20 || character == 0x7F) {
            return false; // Bytes beyond ASCII are negative.
        }
    }
    return true;
}

std::string display(std::string_view text, std::string_view lineEnd, std::string_view tab) {
    if (isPlain(text)) {
        return std::string(text);
    }
    std::string shown;
    shown.reserve(text.size());
    for (std::string_view rest = text; !rest.empty();) {
        const std::string_view before = rest;
        const char32_t character = takeCharacter(rest);
        if (character == '\n') {
            shown += lineEnd;
        } else if (character == '\t') {
            shown += tab;
        } else if (character == kMalformedCharacter || isLayoutMark(character)) {
            shown += kReplacement;
        } else if (isControl(character)) {
            shown += pictureOf(character);
        } else {
            shown += before.substr(0, before.size() - rest.size());
        }
    }
    return shown;
}

/// The C library's widths of Unicode characters, whatever locale the program runs in.
std::size_t widthOf(char32_t character) {
    static const locale_t unicodeLocale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    if (unicodeLocale == nullptr) {
        return 1;
    }
    const locale_t before = uselocale(unicodeLocale);
    const int width = wcwidth(static_cast<wchar_t>(character));
    uselocale(before);
    return width < 0 ? 1 : static_cast<std::size_t>(width);
}

} // namespace

std::string displayLine(std::string_view text) {
    return display(text, "\u23CE", " ");
}

std::string displayLines(std::string_view text) {
    return display(text, "\n", "\t");
}

std::size_t displayWidth(std::string_view text) {
    std::size_t width = 0;
    while (!text.empty()) {
        const char32_t character = takeCharacter(text);
        width += character < 0x7F ? 1 : widthOf(character);
    }
    return width;
}

char32_t takeCharacter(std::string_view& rest) {
    auto [followers, character, smallest] = sequenceOf(static_cast<unsigned char>(rest.front()));
    if (character == kMalformedCharacter || rest.size() <= followers) {
        rest.remove_prefix(1);
        return kMalformedCharacter;
    }
    for (std::size_t index = 1; index <= followers; ++index) {
        const auto follower = static_cast<unsigned char>(rest[index]);
        if ((follower & 0xC0) != 0x80) {
            rest.remove_prefix(1);
            return kMalformedCharacter;
        }
        character = character << 6 | (follower & 0x3FU);
    }
    const bool isSurrogate = character >= 0xD800 && character < 0xE000;
    if (character < smallest || isSurrogate || character > 0x10FFFF) {
        rest.remove_prefix(1);
        return kMalformedCharacter;
    }
    rest.remove_prefix(followers + 1);
    return character;
}

} // namespace exifcard

#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace exifcard {

inline bool isASCII(std::string_view text) {
    return std::ranges::all_of(text, [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

/// Letters beyond ASCII stay as they are, whatever the locale.
constexpr char lowerCaseASCII(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

inline std::string lowerCaseASCII(std::string_view text) {
    std::string lowerCase(text);
    std::ranges::transform(lowerCase, lowerCase.begin(), [](char letter) { return lowerCaseASCII(letter); });
    return lowerCase;
}

/// Whether the texts differ in the case of ASCII letters at most.
inline bool isEqualIgnoringCase(std::string_view left, std::string_view right) {
    return std::ranges::equal(
        left, right, [](char a, char b) { return lowerCaseASCII(a) == lowerCaseASCII(b); });
}

} // namespace exifcard

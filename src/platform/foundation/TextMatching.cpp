#include "platform/foundation/TextMatching.h"

#include "platform/foundation/ASCII.h"

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <optional>

namespace exifcard {
namespace {

/// ICU counts UTF-16 units in 32 bits, and a letter may become several.
constexpr std::size_t kLongestFoldedText = std::numeric_limits<std::int32_t>::max() / 32;

icu::UnicodeString withoutMarks(const icu::UnicodeString& text) {
    auto status = U_ZERO_ERROR;
    const icu::Normalizer2* const decomposer = icu::Normalizer2::getNFDInstance(status);
    if (U_FAILURE(status) != 0) {
        return text;
    }
    const icu::UnicodeString decomposed = decomposer->normalize(text, status);
    icu::UnicodeString bare;
    for (std::int32_t at = 0; at < decomposed.length(); at = decomposed.moveIndex32(at, 1)) {
        const UChar32 character = decomposed.char32At(at);
        if (u_charType(character) != U_NON_SPACING_MARK) {
            bare.append(character);
        }
    }
    return bare;
}

bool isContinuation(std::string_view text, std::size_t at) {
    return at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U;
}

/// Where the character after the one at `at` starts.
std::size_t nextCharacter(std::string_view text, std::size_t at) {
    do {
        ++at;
    } while (isContinuation(text, at));
    return at;
}

/// Two places that move on together, one in the text and one in the pattern.
struct Places {
    std::size_t text = 0;
    std::size_t pattern = 0;
};

/// Moves both on when the pattern there, which is no "*", takes the text there.
bool takeOne(std::string_view text, std::string_view pattern, Places& places) {
    if (places.text == text.size() || places.pattern == pattern.size()) {
        return false;
    }
    if (pattern[places.pattern] == '?') {
        places = {nextCharacter(text, places.text), places.pattern + 1};
        return true;
    }
    const bool isEscape = pattern[places.pattern] == '\\' && places.pattern + 1 < pattern.size();
    const std::size_t letter = places.pattern + (isEscape ? 1 : 0);
    if (pattern[letter] != text[places.text]) {
        return false;
    }
    places = {places.text + 1, letter + 1};
    return true;
}

} // namespace

std::string foldedText(std::string_view text, bool isCaseIgnored, bool areDiacriticsIgnored) {
    if ((!isCaseIgnored && !areDiacriticsIgnored) || text.size() > kLongestFoldedText) {
        return std::string(text);
    }
    if (isASCII(text)) {
        return isCaseIgnored ? lowerCaseASCII(text) : std::string(text);
    }
    auto folded = icu::UnicodeString::fromUTF8(text);
    if (areDiacriticsIgnored) {
        folded = withoutMarks(folded);
    }
    if (isCaseIgnored) {
        folded.foldCase();
    }
    std::string result;
    return folded.toUTF8String(result);
}

bool matchesWildcards(std::string_view text, std::string_view pattern) {
    Places places;
    // Only the last "*" is ever gone back to: what an earlier one takes more, a later one can take too.
    std::optional<Places> afterStar;
    while (places.text < text.size() || places.pattern < pattern.size()) {
        if (places.pattern < pattern.size() && pattern[places.pattern] == '*') {
            ++places.pattern;
            afterStar = places;
        } else if (!takeOne(text, pattern, places)) {
            if (!afterStar || afterStar->text == text.size()) {
                return false;
            }
            afterStar->text = nextCharacter(text, afterStar->text);
            places = *afterStar;
        }
    }
    return true;
}

} // namespace exifcard

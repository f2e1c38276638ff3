#include "platform/foundation/PropertyListText.h"

#include <unicode/unistr.h>

#include <algorithm>

namespace exifcard::propertylist {
namespace {

bool isXMLCharacter(char16_t unit) {
    return unit >= 0x20 ? unit != 0xfffe && unit != 0xffff : unit == '\t' || unit == '\n' || unit == '\r';
}

} // namespace

std::string wellFormedText(std::string_view text) {
    const bool isPlain = std::ranges::all_of(text, [](char byte) { return byte >= 0x20 && byte <= 0x7e; });
    if (isPlain) {
        return std::string(text);
    }
    // Puts U+FFFD in place of what is no UTF-8 by itself.
    auto units = icu::UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())});
    for (std::int32_t index = 0; index < units.length(); ++index) {
        if (!isXMLCharacter(units[index])) {
            units.setCharAt(index, 0xfffd);
        }
    }
    std::string wellFormed;
    return units.toUTF8String(wellFormed);
}

} // namespace exifcard::propertylist

#pragma once

#include <string>
#include <string_view>

namespace exifcard {

/// Character sets in which files write text beside UTF-8.
enum class TextEncoding { Latin1, Utf16BigEndian, Utf16LittleEndian, Iso2022Jp };

/// The text as UTF-8; what the set does not know becomes U+FFFD.
std::string utf8FromEncoded(std::string_view bytes, TextEncoding encoding);

/// The bytes themselves when they are UTF-8, else taken as Latin-1, so that the answer is always valid UTF-8.
std::string utf8FromUnknown(std::string_view bytes);

/// `text` up to its first NUL.
std::string_view textBeforeNul(std::string_view text);

/// `text` without the NULs, spaces and line ends at its end.
std::string_view withoutTrailingBlanks(std::string_view text);

} // namespace exifcard

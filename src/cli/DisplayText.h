#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace exifcard {

/// Text as a terminal can show it: a file's content cannot move the cursor, change colours or pass for
/// another line. A control character becomes its picture ("␛"), bytes that are no UTF-8 become "�".

/// In one line: line ends become "⏎", tabs become spaces.
std::string displayLine(std::string_view text);
/// Line ends and tabs stay.
std::string displayLines(std::string_view text);

/// The columns that a terminal takes for `text`, which `displayLine` made: 2 for a wide character, 0 for an
/// accent.
std::size_t displayWidth(std::string_view text);

/// Takes one character off the front of `rest`, which must not be empty.
/// @return The code point, or `kMalformedCharacter` for a byte that begins no well-formed UTF-8 character.
char32_t takeCharacter(std::string_view& rest);
inline constexpr char32_t kMalformedCharacter = 0xFFFFFFFF;

} // namespace exifcard

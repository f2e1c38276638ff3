#pragma once

#include <string>
#include <string_view>

namespace exifcard {

/// The text without what is to be ignored: letters in one case, and without the marks above and below them
/// ("Élan" and "elan" give the same). As it is when nothing is ignored.
std::string foldedText(std::string_view text, bool isCaseIgnored, bool areDiacriticsIgnored);

/// Whether the whole text fits a pattern in which "*" stands for any characters, "?" for one, and a
/// backslash takes the meaning of the next. Takes at most time in proportion to the product of both lengths.
bool matchesWildcards(std::string_view text, std::string_view pattern);

} // namespace exifcard

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace exifcard {

/// The user's locale as the environment names it ("de_DE.UTF-8"): LC_ALL, else
/// LC_MESSAGES, else LANG. Empty when none is set.
std::string userLocaleName();

/// The languages in which the user wants texts, best first, named as catalogue
/// folders are: "de_AT", "de". From LANGUAGE, else from the locale's name; ends
/// before English, the language of the keys.
///
/// As everywhere, LANGUAGE does not count where the locale is plainly "C" or
/// "POSIX"; where no locale is set at all, it does.
std::vector<std::string> userLanguages();

} // namespace exifcard

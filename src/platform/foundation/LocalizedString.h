#pragma once

#include "platform/foundation/FormatString.h"

#include <cstdint>
#include <string>
#include <string_view>

/// Marks a text in a table for translation, without looking it up.
// NOLINTNEXTLINE(cppcoreguidelines-macro-usage,readability-identifier-naming): gettext's own name for it.
#define N_(text) text

namespace exifcard {

/// The text in the user's language; the English text is its own key. A text
/// without translation is the key itself.
///
/// The language is chosen at the first call from LANGUAGE, LC_ALL, LC_MESSAGES
/// and LANG, whether or not the machine has that locale installed.
/// @return Valid until the program ends.
std::string_view localizedString(const char* key);

/// The translated format filled with `arguments`. A translation whose arguments
/// do not fit the key's is not used.
std::string localizedStringWithFormat(const char* key, std::initializer_list<FormatArgument> arguments);

/// Drops what was chosen and reads the environment again at the next call; for
/// tests. Texts answered before stay valid.
void resetLocalization();
/// How often it was reset: whoever keeps something in the user's language compares.
std::uint64_t localizationGeneration();

} // namespace exifcard

#pragma once

#include "platform/foundation/FormatConversion.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace exifcard {

/// Appends an integer to `text` as C does; the bits that the length modifier does not cover are dropped.
void appendInteger(std::string& text, const FormatConversion& conversion, std::int64_t argument);
/// Appends a real as C does, with a correctly rounded last digit; not-a-number has no sign.
void appendReal(std::string& text, const FormatConversion& conversion, double argument);
/// Appends an object's text, which is UTF-8; a precision cuts it after so many characters.
void appendObject(std::string& text, const FormatConversion& conversion, std::string_view argument);

} // namespace exifcard

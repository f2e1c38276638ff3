#pragma once

#include "platform/foundation/FormatConversion.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace exifcard {

/// Each appends one argument as the conversion asks, which takes its kind.

/// As C's integer conversions; the bits that the length modifier does not cover are dropped.
void appendInteger(std::string& text, const FormatConversion& conversion, std::int64_t argument);
/// As C's, with a correctly rounded last digit; not-a-number has no sign.
void appendReal(std::string& text, const FormatConversion& conversion, double argument);
/// A precision cuts after so many characters; the text is UTF-8.
void appendObject(std::string& text, const FormatConversion& conversion, std::string_view argument);

} // namespace exifcard

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace exifcard {

/// The number at the front of `text`: white space, an optional sign, decimal
/// digits; the rest does not count. 0 without digits; clamped to the type.
std::int64_t integerFromText(std::string_view text);

/// The decimal number at the front of `text`, with "." whatever the locale and
/// an optional exponent; 0 without digits ("0x10" is 0).
double doubleFromText(std::string_view text);

/// Whether `text` begins, after spaces, a sign and zeros, with Y, y, T, t or 1 to 9.
bool boolFromText(std::string_view text);

/// C's "%0.16g", the readable text of a double: 4.0 is "4", 0.1 + 0.2 is "0.3".
std::string textFromDouble(double number);

/// C's "%0.7g", the readable text of a single-precision number.
std::string textFromFloat(float number);

/// The number truncated toward zero and clamped to the type; 0 for not-a-number.
std::int64_t saturatingInteger(double number);

} // namespace exifcard

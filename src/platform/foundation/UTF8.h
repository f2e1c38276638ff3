#pragma once

#include <string_view>

namespace exifcard {

/// Whether the bytes are UTF-8 text: no overlong forms, no surrogates, nothing beyond U+10FFFF.
bool isValidUTF8(std::string_view text);

} // namespace exifcard

#pragma once

#include <string>
#include <string_view>

namespace exifcard::propertylist {

/// The text with U+FFFD in place of each byte that is no UTF-8 and each
/// character that XML cannot hold.
std::string wellFormedText(std::string_view text);

} // namespace exifcard::propertylist

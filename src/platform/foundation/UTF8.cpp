#include "platform/foundation/UTF8.h"

#include "platform/foundation/ASCII.h"

#include <unicode/ustring.h>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace exifcard {

bool isValidUTF8(std::string_view text) {
    if (isASCII(text)) {
        return true; // Most texts, and much faster.
    }
    if (text.size() > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) {
        return false; // More than ICU counts.
    }
    std::int32_t length = 0; // Only counted: an overflow of the missing buffer is the answer for good text.
    UErrorCode status = U_ZERO_ERROR;
    u_strFromUTF8(nullptr, 0, &length, text.data(), static_cast<std::int32_t>(text.size()), &status);
    return U_SUCCESS(status) || status == U_BUFFER_OVERFLOW_ERROR;
}

} // namespace exifcard

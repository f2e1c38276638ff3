#include "platform/imageio/TextEncoding.h"

#include "platform/foundation/UTF8.h"

#include <unicode/ucnv.h>

#include <limits>

namespace exifcard {
namespace {

/// As ICU calls them, in the order of `TextEncoding`.
constexpr const char* kConverterNames[] = {"ISO-8859-1", "UTF-16BE", "UTF-16LE", "ISO-2022-JP"};

/// ICU counts in 32 bits, and three bytes of UTF-8 may come of one.
constexpr std::size_t kMostBytes = std::numeric_limits<std::int32_t>::max() / 4;

} // namespace

std::string utf8FromEncoded(std::string_view bytes, TextEncoding encoding) {
    bytes = bytes.substr(0, kMostBytes);
    std::string text(bytes.size() * 3 + 1, '\0');
    UErrorCode status = U_ZERO_ERROR;
    const auto length = ucnv_convert("UTF-8", kConverterNames[static_cast<std::size_t>(encoding)],
        text.data(), static_cast<std::int32_t>(text.size()), bytes.data(),
        static_cast<std::int32_t>(bytes.size()), &status);
    if (U_FAILURE(status)) {
        return {};
    }
    text.resize(static_cast<std::size_t>(length));
    return text;
}

std::string utf8FromUnknown(std::string_view bytes) {
    return isValidUTF8(bytes) ? std::string(bytes) : utf8FromEncoded(bytes, TextEncoding::Latin1);
}

std::string_view textBeforeNul(std::string_view text) {
    return text.substr(0, text.find('\0'));
}

std::string_view withoutTrailingBlanks(std::string_view text) {
    const auto last = text.find_last_not_of(std::string_view("\0 \r\n\t", 5));
    return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

} // namespace exifcard

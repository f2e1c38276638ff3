#include "platform/foundation/MessageCatalogue.h"

#include "platform/foundation/FormatString.h"
#include "platform/foundation/UTF8.h"

#include <cstdint>
#include <cstdlib>
#include <vector>

namespace exifcard {

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    const auto catalogue =
        MessageCatalogue::fromData(Data::fromBytes(std::vector<std::uint8_t>(bytes, bytes + count)));
    for (const std::string_view key :
        {"", "Loading", "All", "%@ of %ld", "ISO %ld", "Zero KB", "%@ (%@ bytes)"}) {
        const auto text = catalogue ? catalogue->textForKey(key) : std::nullopt;
        const auto format = catalogue ? catalogue->formatForKey(key) : std::nullopt;
        if ((text && !isValidUTF8(*text)) || (format && (format != text || !formatsAgree(key, *format)))) {
            std::abort();
        }
    }
    return 0;
}

} // namespace exifcard

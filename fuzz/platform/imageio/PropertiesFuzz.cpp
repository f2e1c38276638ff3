#include "platform/foundation/Array.h"
#include "platform/foundation/Dictionary.h"
#include "platform/foundation/UTF8.h"
#include "platform/imageio/CGImageSource.h"

#include <cstdint>
#include <cstdlib>

namespace {

/// Ends the program unless every text is UTF-8.
void demandText(const exifcard::Value& value) {
    if (value.text() != nullptr && !exifcard::isValidUTF8(*value.text())) {
        std::abort();
    }
    if (const auto* const list = value.arrayView()) {
        for (const auto& element : *list) {
            demandText(element);
        }
    }
    if (const auto* const dictionary = value.dictionaryView()) {
        for (const auto& [key, element] : *dictionary) {
            demandText(element);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    const auto source =
        exifcard::CGImageSourceCreateWithData(exifcard::Data::fromBytes({bytes, bytes + count}));
    const auto images = exifcard::CGImageSourceGetCount(*source);
    if (images > count || exifcard::CGImageSourceCopyPropertiesAtIndex(*source, images + 1)) {
        std::abort();
    }
    demandText(exifcard::CGImageSourceCopyPropertiesAtIndex(*source, 0));
    return 0;
}

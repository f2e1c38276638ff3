#include "platform/imageio/HeifBoxes.h"

#include <cstdint>
#include <cstdlib>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    const auto file = exifcard::Data::fromBytes(std::vector<std::uint8_t>(bytes, bytes + count));
    const auto contents = exifcard::readHeifBoxes(file);
    if (contents && (contents->imageCount == 0 || contents->width < 0 || contents->height < 0 ||
                        contents->exifOrientation < 0 || contents->exifOrientation > 8 ||
                        contents->bitsPerComponent < 0)) {
        std::abort();
    }
    return 0;
}

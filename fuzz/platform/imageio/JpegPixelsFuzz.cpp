#include "platform/imageio/PixelModules.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    constexpr exifcard::PixelSize kWanted = {24, 24};
    const auto bitmap = exifcard::decodedBitmap({bytes, count}, "public.jpeg", kWanted);
    if (bitmap) {
        const auto pixelCount =
            static_cast<std::size_t>(bitmap->width) * static_cast<std::size_t>(bitmap->height);
        if (pixelCount == 0 ||
            bitmap->pixels.size() != pixelCount * static_cast<std::size_t>(bitmap->channels)) {
            std::abort();
        }
    }
    return 0;
}

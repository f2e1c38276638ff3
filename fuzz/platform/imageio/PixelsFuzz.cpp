#include "platform/imageio/CGImageSource.h"
#include "platform/imageio/PixelModules.h"

#include <cstdint>
#include <cstdlib>

// Pictures of every kind but JPEG and raw, which have targets of their own.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    constexpr exifcard::PixelSize kWanted = {24, 24};
    const auto source =
        exifcard::CGImageSourceCreateWithData(exifcard::Data::fromBytes({bytes, bytes + count}));
    const auto bitmap =
        exifcard::decodedBitmap({bytes, count}, exifcard::CGImageSourceGetType(*source), kWanted);
    if (bitmap && bitmap->pixels.size() != std::size_t(bitmap->width) * std::size_t(bitmap->height) *
                                               std::size_t(bitmap->channels)) {
        std::abort();
    }
    return 0;
}

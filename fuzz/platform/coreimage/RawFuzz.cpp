#include "platform/imageio/EmbeddedPreviews.h"
#include "platform/imageio/RawPixels.h"
#include "platform/uivalues/Bitmap.h"

#include <cstdint>
#include <cstdlib>

// A larger picture takes the fuzzer long, and shows it nothing new.
constexpr int kLargestSide = 2048;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    const auto file = exifcard::Data::fromBytes({bytes, bytes + count});
    for (const auto& preview : exifcard::embeddedPreviews(file)) {
        if (preview.jpeg.size() > count || preview.size.width <= 0 || preview.size.height <= 0) {
            std::abort();
        }
    }
    const auto facts = exifcard::rawFacts(file);
    if (!facts || facts->size.width > kLargestSide || facts->size.height > kLargestSide) {
        return 0;
    }
    const auto bitmap = exifcard::rawPixels(file, facts->size)->decode(exifcard::CGSize{16, 16});
    if (bitmap && bitmap->pixels.size() != std::size_t(bitmap->width) * std::size_t(bitmap->height) *
                                               std::size_t(bitmap->channels)) {
        std::abort();
    }
    return 0;
}

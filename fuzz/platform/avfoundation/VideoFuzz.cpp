#include "platform/avfoundation/VideoModule.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    constexpr double kLimit = 64;
    const auto facts = exifcard::videoFacts({bytes, count});
    const auto frame = exifcard::videoFrame({bytes, count}, 0, {kLimit, kLimit});
    if (frame) {
        const auto pixels = std::size_t(frame->width) * std::size_t(frame->height) * 3U;
        const bool fits = frame->width <= kLimit && frame->height <= kLimit;
        if (!facts || !fits || pixels == 0 || frame->pixels.size() != pixels) {
            std::abort();
        }
    }
    return 0;
}

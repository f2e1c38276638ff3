#include "platform/avfoundation/VideoModule.h"

#include "platform/foundation/LoadableModule.h"

namespace exifcard {
namespace {

const VideoReader* videoReader() {
    static const auto* const reader = moduleService<VideoReaderEntry>("video", kVideoReaderEntry);
    return reader;
}

} // namespace

std::optional<VideoFacts> videoFacts(std::span<const std::uint8_t> file) {
    return videoReader() != nullptr ? videoReader()->facts(file) : std::nullopt;
}

std::optional<Bitmap> videoFrame(std::span<const std::uint8_t> file, double seconds, CGSize limits) {
    return videoReader() != nullptr ? videoReader()->frame(file, seconds, limits) : std::nullopt;
}

} // namespace exifcard

// The module "video": reads videos through the FFmpeg libraries.
#include "platform/avfoundation/VideoReader.h"
#include "platform/avfoundation/ffmpeg/VideoFacts.h"
#include "platform/avfoundation/ffmpeg/VideoFile.h"
#include "platform/avfoundation/ffmpeg/VideoFrames.h"

namespace exifcard {
namespace {

// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): final, and never deleted through its base.
class FfmpegReader final : public VideoReader {
public:
    std::optional<VideoFacts> facts(std::span<const std::uint8_t> bytes) const override {
        const auto file = VideoFile::open(bytes);
        return file ? std::optional(readVideoFacts(*file)) : std::nullopt;
    }

    std::optional<Bitmap> frame(
        std::span<const std::uint8_t> bytes, double seconds, CGSize limits) const override {
        const auto file = VideoFile::open(bytes);
        return file ? readVideoFrame(*file, seconds, limits) : std::nullopt;
    }
};

} // namespace
} // namespace exifcard

extern "C" [[gnu::visibility("default")]] const exifcard::VideoReader* exifcardVideoReader() {
    static const exifcard::FfmpegReader reader;
    return &reader;
}

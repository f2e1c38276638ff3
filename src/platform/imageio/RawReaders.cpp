#include "platform/imageio/ByteView.h"
#include "platform/imageio/ContainerReaders.h"
#include "platform/imageio/ImageProperties.h"
#include "platform/imageio/NotesModule.h"

#include <algorithm>
#include <utility>

namespace exifcard {
namespace {

// Fujifilm's header tells where a JPEG preview, which holds the Exif data, and
// a directory of the raw picture lie.
constexpr std::size_t kFujiPreview = 84;
constexpr std::size_t kFujiDirectory = 92;
constexpr std::uint32_t kMostFujiRecords = 255;
constexpr std::uint16_t kFujiFullSize = 0x0100;
constexpr std::uint16_t kFujiCroppedSize = 0x0111;

constexpr std::size_t kMinoltaBlockHead = 8;
/// The longest CRW of a camera is 12 MB; Exiv2 reads it as a whole.
constexpr std::size_t kMostCanonBytes = std::size_t(256) << 20U;

struct PixelSize {
    std::int64_t width = 0;
    std::int64_t height = 0;
};

/// The cropped size in Fujifilm's directory, else the full one.
PixelSize fujiSize(const ByteView& view) {
    PixelSize size;
    std::size_t place = view.longAt(kFujiDirectory).value_or(0);
    const auto count = std::min(view.longAt(place).value_or(0), kMostFujiRecords);
    place += 4;
    for (std::uint32_t record = 0; record < count; ++record) {
        const auto tag = view.shortAt(place);
        const auto width = view.shortAt(place + 6);
        if (width && (tag == kFujiCroppedSize || (tag == kFujiFullSize && size.width == 0))) {
            size = {*width, *view.shortAt(place + 4)};
        }
        place += 4 + std::size_t(view.shortAt(place + 2).value_or(0));
    }
    return size;
}

} // namespace

std::optional<ImageFacts> readFujiRaw(const Data& file, std::size_t index) {
    const ByteView view(file.bytes());
    const std::size_t offset = view.longAt(kFujiPreview).value_or(0);
    const std::size_t length = view.longAt(kFujiPreview + 4).value_or(0);
    auto facts = readJpeg(file.slice(offset, length), index);
    if (!facts) {
        return std::nullopt;
    }
    const auto size = fujiSize(view);
    if (size.width > 0 && size.height > 0) {
        facts->width = size.width;
        facts->height = size.height;
    }
    facts->dictionaries.clear(); // They tell of the preview.
    return facts;
}

std::optional<ImageFacts> readMinoltaRaw(const Data& file, std::size_t index) {
    const ByteView view(file.bytes());
    const auto headEnd = view.longAt(4);
    if (index > 0 || !headEnd) {
        return std::nullopt;
    }
    ImageFacts facts;
    facts.colorModel = kCGImagePropertyColorModelRGB;
    const std::size_t end = std::size_t(*headEnd) + kMinoltaBlockHead;
    for (std::size_t place = kMinoltaBlockHead; place < end;) {
        const auto length = view.longAt(place + 4);
        if (!length) {
            break;
        }
        const std::size_t content = place + kMinoltaBlockHead;
        if (view.hasTextAt(place, {"\0PRD", 4})) {
            facts.height = view.shortAt(content + 12).value_or(0);
            facts.width = view.shortAt(content + 14).value_or(0);
            facts.depth = view.byteAt(content + 17).value_or(0);
        } else if (view.hasTextAt(place, {"\0TTW", 4})) {
            facts.exif = file.slice(content, *length);
        }
        place = content + *length;
    }
    return facts.exif.empty() ? std::nullopt : std::optional(std::move(facts));
}

std::optional<ImageFacts> readCanonCrw(const Data& file, std::size_t index) {
    if (index > 0 || file.size() > kMostCanonBytes || noteDecoder() == nullptr) {
        return std::nullopt;
    }
    auto crw = noteDecoder()->canonCrw(file.bytes(), logNoteFault);
    if (!crw) {
        return std::nullopt;
    }
    ImageFacts facts;
    facts.width = crw->width;
    facts.height = crw->height;
    facts.colorModel = kCGImagePropertyColorModelRGB;
    facts.exif = Data::fromBytes(std::move(crw->exif));
    return facts;
}

} // namespace exifcard

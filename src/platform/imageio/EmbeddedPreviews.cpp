#include "platform/imageio/EmbeddedPreviews.h"

#include "platform/imageio/ByteView.h"
#include "platform/imageio/ContainerReaders.h"
#include "platform/imageio/ContentType.h"
#include "platform/imageio/IsoBoxes.h"
#include "platform/imageio/TiffBlock.h"
#include "platform/imageio/TiffTags.h"
#include "platform/imageio/TiffValue.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace exifcard {
namespace {

constexpr std::uint16_t kJpegOffset = 0x0201;
constexpr std::uint16_t kJpegLength = 0x0202;
constexpr std::uint16_t kStripOffsets = 0x0111;
constexpr std::uint16_t kStripLengths = 0x0117;
constexpr std::uint16_t kPanasonicPreview = 0x002e;
constexpr std::size_t kFujiPreview = 84; // Where its offset and length lie.
// Directories in a chain, and below each.
constexpr int kMostDirectories = 16;
// The size of a sensor and that of its preview differ by a border of some pixels.
constexpr double kShapeTolerance = 0.02;

using Previews = std::vector<EmbeddedPreview>;

void addPreview(Previews& previews, const Data& jpeg, std::size_t length) {
    const bool isWhole = length > 0 && jpeg.size() == length;
    if (const auto size = isWhole ? sizeOfJpeg(jpeg) : std::nullopt) {
        previews.push_back({jpeg, *size});
    }
}

void addPointedAt(Previews& previews,
    const Data& block,
    const TiffDirectory& directory,
    std::uint16_t at,
    std::uint16_t length) {
    const auto offset = directory.numberFor(at);
    const auto size = directory.numberFor(length);
    const auto pieces = directory.find(at);
    if (offset && size && pieces->count == 1) {
        addPreview(previews, block.slice(*offset, *size), *size);
    }
}

void addFromDirectory(Previews& previews, const Data& block, const TiffDirectory& directory) {
    addPointedAt(previews, block, directory, kJpegOffset, kJpegLength);
    addPointedAt(previews, block, directory, kStripOffsets, kStripLengths);
    if (const auto panasonic = directory.find(kPanasonicPreview)) {
        const auto offset = static_cast<std::size_t>(panasonic->bytes.data() - block.data());
        addPreview(previews, block.slice(offset, panasonic->bytes.size()), panasonic->bytes.size());
    }
}

/// Those of the directories in the chain and of the directories below each.
Previews previewsInTiff(const Data& block) {
    Previews previews;
    const auto tiff = TiffBlock::fromBytes(block.bytes());
    std::uint32_t offset = tiff ? tiff->firstDirectoryOffset() : 0;
    for (int count = 0; offset != 0 && count < kMostDirectories; ++count) {
        const auto directory = tiff->directoryAt(offset);
        addFromDirectory(previews, block, directory);
        const auto below = directory.find(kTiffSubDirectories);
        for (std::uint32_t index = 0;
             below && index < std::min<std::uint32_t>(below->count, kMostDirectories); ++index) {
            const auto place = integerAt(*below, index).value_or(0);
            addFromDirectory(previews, block, tiff->directoryAt(static_cast<std::uint32_t>(place)));
        }
        offset = directory.nextDirectory();
    }
    return previews;
}

Previews previewsInJpeg(const Data& file) {
    const auto facts = readJpeg(file, 0);
    return facts ? previewsInTiff(facts->exif) : Previews();
}

Previews previewsInFujiRaw(const Data& file) {
    const ByteView view(file.bytes());
    const std::size_t length = view.longAt(kFujiPreview + 4).value_or(0);
    const Data jpeg = file.slice(view.longAt(kFujiPreview).value_or(0), length);
    Previews previews = previewsInJpeg(jpeg);
    addPreview(previews, jpeg, length);
    return previews;
}

/// Canon's CR3 keeps one of medium size in a box of its own, "PRVW".
Previews previewsInIsoFile(const Data& file) {
    constexpr std::string_view kName("\xea\xf4\x2b\x5e\x1c\x98\x4b\x88\xb9\xfb\xb7\xdc\x40\x6e\x4d\x16", 16);
    constexpr std::size_t kHead = 8;   // Behind the name.
    constexpr std::size_t kSizes = 16; // Of the preview, before its JPEG.
    Previews previews;
    BoxWalk walk(file.bytes());
    while (const auto box = walk.next()) {
        if (box->type != boxType("uuid") || !textView(box->payload).starts_with(kName)) {
            continue;
        }
        const auto preview = firstBox(
            box->payload.subspan(std::min(box->payload.size(), kName.size() + kHead)), boxType("PRVW"));
        if (preview && preview->payload.size() > kSizes) {
            const auto offset = static_cast<std::size_t>(preview->payload.data() - file.data()) + kSizes;
            const std::size_t length = preview->payload.size() - kSizes;
            addPreview(previews, file.slice(offset, length), length);
        }
    }
    return previews;
}

struct PreviewReader {
    Container container;
    Previews (*read)(const Data& file);
};

constexpr PreviewReader kReaders[] = {
    {Container::Jpeg, previewsInJpeg},
    {Container::TiffRaw, previewsInTiff},
    {Container::PanasonicRaw, previewsInTiff},
    {Container::FujiRaw, previewsInFujiRaw},
    {Container::Heif, previewsInIsoFile},
};

std::int64_t areaOf(const EmbeddedPreview& preview) {
    return std::int64_t(preview.size.width) * preview.size.height;
}

} // namespace

std::vector<EmbeddedPreview> embeddedPreviews(const Data& file) {
    const auto* const reader =
        std::ranges::find(kReaders, contentTypeOf(file).container, &PreviewReader::container);
    Previews previews = reader != std::end(kReaders) ? reader->read(file) : Previews();
    std::ranges::sort(previews, {}, areaOf);
    return previews;
}

bool isSufficient(PixelSize preview, PixelSize stored, std::optional<PixelSize> wanted) {
    const double own = double(preview.width) * stored.height;
    const double other = double(preview.height) * stored.width;
    // Who made the preview may have rounded the shorter side the other way.
    const bool isLargeEnough =
        !wanted ||
        (std::max(preview.width, preview.height) >= std::max(wanted->width, wanted->height) &&
            std::min(preview.width, preview.height) + 1 >= std::min(wanted->width, wanted->height));
    return isLargeEnough && own > 0 && std::abs(own - other) <= kShapeTolerance * own;
}

std::optional<EmbeddedPreview> embeddedPreview(
    const Data& file, PixelSize stored, std::optional<PixelSize> wanted) {
    auto previews = embeddedPreviews(file);
    if (!wanted) {
        std::ranges::reverse(previews);
    }
    const auto found = std::ranges::find_if(
        previews, [&](const EmbeddedPreview& preview) { return isSufficient(preview.size, stored, wanted); });
    return found != previews.end() ? std::optional(std::move(*found)) : std::nullopt;
}

std::optional<PixelSize> sizeOfJpeg(const Data& jpeg) {
    constexpr std::string_view kStart = "\xff\xd8\xff";
    const auto facts = jpeg.text().starts_with(kStart) ? readJpeg(jpeg, 0) : std::nullopt;
    // A sensor's pixels in lossless JPEG have more bits.
    const bool isPicture = facts && facts->width > 0 && facts->height > 0 && facts->depth == 8;
    return isPicture
               ? std::optional(PixelSize{static_cast<int>(facts->width), static_cast<int>(facts->height)})
               : std::nullopt;
}

std::optional<PixelSize> wholePixels(CGSize size) {
    constexpr double kMost = std::numeric_limits<int>::max();
    if (!(size.width < kMost && size.height < kMost)) {
        return std::nullopt;
    }
    return PixelSize{static_cast<int>(std::ceil(size.width)), static_cast<int>(std::ceil(size.height))};
}

} // namespace exifcard

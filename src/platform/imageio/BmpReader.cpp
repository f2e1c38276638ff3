#include "platform/imageio/ByteView.h"
#include "platform/imageio/ContainerReaders.h"
#include "platform/imageio/ImageProperties.h"

#include <cstdlib>

namespace exifcard {
namespace {

/// The size of the oldest header, with sizes of 16 bits.
constexpr std::uint32_t kCoreHeaderSize = 12;
constexpr int kPaletteBits = 8;
constexpr double kMetresPerInch = 0.0254;

} // namespace

std::optional<ImageFacts> readBmp(const Data& file, std::size_t index) {
    const ByteView view(file.bytes(), ByteOrder::Little);
    const bool isCore = view.longAt(14) == kCoreHeaderSize;
    const auto bitsPerPixel = view.shortAt(isCore ? 24 : 28);
    if (index > 0 || !bitsPerPixel) {
        return std::nullopt;
    }
    ImageFacts facts;
    if (isCore) {
        facts.width = *view.shortAt(18);
        facts.height = *view.shortAt(20);
    } else {
        facts.width = static_cast<std::int32_t>(*view.longAt(18));
        // A picture whose rows stand top down has a negative height.
        facts.height = std::abs(std::int64_t(static_cast<std::int32_t>(*view.longAt(22))));
        facts.dpiWidth = view.longAt(38).value_or(0) * kMetresPerInch;
        facts.dpiHeight = view.longAt(42).value_or(0) * kMetresPerInch;
    }
    if (facts.width <= 0 || facts.height <= 0) {
        return std::nullopt;
    }
    if (facts.dpiWidth <= 0 || facts.dpiHeight <= 0) {
        facts.dpiWidth.reset();
        facts.dpiHeight.reset();
    }
    facts.depth = 8;
    facts.colorModel = kCGImagePropertyColorModelRGB;
    facts.isIndexed = *bitsPerPixel <= kPaletteBits;
    return facts;
}

} // namespace exifcard

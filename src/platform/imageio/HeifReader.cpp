#include "platform/imageio/ContainerReaders.h"
#include "platform/imageio/HeifBoxes.h"
#include "platform/imageio/ImageProperties.h"

namespace exifcard {
namespace {

/// H.273's number of the primaries of sRGB.
constexpr int kBt709 = 1;
/// H.273's numbers of the curves that files of sRGB name: its own one and that of BT.709.
constexpr int kSRgbTransfer = 13;
constexpr int kBt709Transfer = 1;

bool isSRgb(const std::optional<HeifColor>& color) {
    return color && color->primaries == kBt709 &&
           (color->transfer == kSRgbTransfer || color->transfer == kBt709Transfer);
}

} // namespace

std::optional<ImageFacts> readHeif(const Data& file, std::size_t index) {
    const auto contents = readHeifBoxes(file);
    if (!contents || index >= contents->imageCount) {
        return std::nullopt;
    }
    ImageFacts facts;
    facts.width = contents->width;
    facts.height = contents->height;
    facts.depth = contents->bitsPerComponent;
    facts.colorModel = kCGImagePropertyColorModelRGB;
    facts.hasAlpha = contents->hasAlpha;
    facts.isSRgb = isSRgb(contents->color);
    if (contents->exifOrientation > 0) {
        facts.orientation = contents->exifOrientation;
    }
    facts.iccProfile = contents->iccProfile;
    facts.xmp = contents->xmp;
    facts.exif = contents->isCr3 ? contents->cmtBlocks[0] : contents->exif;
    facts.exifDirectory = contents->cmtBlocks[1];
    facts.makerNote = contents->cmtBlocks[2];
    facts.gpsDirectory = contents->cmtBlocks[3];
    return facts;
}

std::size_t countHeif(const Data& file) {
    const auto contents = readHeifBoxes(file);
    return contents ? contents->imageCount : 0;
}

} // namespace exifcard

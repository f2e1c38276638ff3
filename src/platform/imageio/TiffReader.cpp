#include "platform/imageio/ContainerReaders.h"
#include "platform/imageio/ImageProperties.h"
#include "platform/imageio/IptcProperties.h"
#include "platform/imageio/TiffBlock.h"
#include "platform/imageio/TiffTags.h"
#include "platform/imageio/TiffValue.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>
#include <vector>

namespace exifcard {
namespace {

/// A file of more pages than this, each in a chain that has to be walked, is no photo.
constexpr std::size_t kMostPages = 65536;
/// Raw files have up to four pictures beside the first.
constexpr std::uint32_t kMostSubDirectories = 16;

struct PhotometricModel {
    std::uint32_t photometric;
    std::string_view colorModel;
};

/// Any other is RGB.
constexpr PhotometricModel kModels[] = {
    {0, kCGImagePropertyColorModelGray}, // White is 0.
    {1, kCGImagePropertyColorModelGray},
    {5, kCGImagePropertyColorModelCMYK},
    {8, kCGImagePropertyColorModelLab},
    {9, kCGImagePropertyColorModelLab},
    {10, kCGImagePropertyColorModelLab},
};
constexpr std::uint32_t kPalette = 3;
constexpr std::uint32_t kFloatFormat = 3;
constexpr std::uint32_t kMostDepth = 64;

std::string_view colorModelOf(std::uint32_t photometric) {
    const auto model = std::ranges::find(kModels, photometric, &PhotometricModel::photometric);
    return model == std::end(kModels) ? kCGImagePropertyColorModelRGB : model->colorModel;
}

/// The slice of the file in which the entry's value lies; empty without the entry.
Data valueSlice(const Data& file, const std::optional<TiffEntry>& entry) {
    return entry
               ? file.slice(static_cast<std::size_t>(entry->bytes.data() - file.data()), entry->bytes.size())
               : Data();
}

/// Where each page's directory lies, in the order of the chain, up to the first that comes twice.
std::vector<std::uint32_t> pageOffsets(const TiffBlock& block, std::size_t most) {
    std::vector<std::uint32_t> offsets;
    std::unordered_set<std::uint32_t> visited;
    std::uint32_t offset = block.firstDirectoryOffset();
    while (offsets.size() < most && offset != 0 && visited.insert(offset).second) {
        const auto directory = block.directoryAt(offset);
        if (directory.count() == 0) {
            break;
        }
        offsets.push_back(offset);
        offset = directory.nextDirectory();
    }
    return offsets;
}

bool hasAlphaChannel(const TiffDirectory& directory) {
    const auto extra = directory.numberFor(kTiffExtraSamples);
    return extra == 1U || extra == 2U;
}

void takePixels(ImageFacts& facts, const TiffDirectory& directory) {
    const auto photometric = directory.numberFor(kTiffPhotometric).value_or(2);
    facts.width = directory.numberFor(kTiffImageWidth).value_or(0);
    facts.height = directory.numberFor(kTiffImageLength).value_or(0);
    // A picture that states no depth is one of two colours.
    facts.depth = static_cast<int>(std::min(directory.numberFor(kTiffBitsPerSample).value_or(1), kMostDepth));
    facts.colorModel = colorModelOf(photometric);
    facts.isIndexed = photometric == kPalette;
    facts.isFloat = directory.numberFor(kTiffSampleFormat) == kFloatFormat;
    facts.hasAlpha = hasAlphaChannel(directory);
}

void takeBlocks(ImageFacts& facts, const Data& file, const TiffDirectory& directory) {
    facts.exif = file;
    facts.isTiffFile = true;
    facts.xmp = valueSlice(file, directory.find(kTiffXmp));
    facts.iccProfile = valueSlice(file, directory.find(kTiffIccProfile));
    facts.iptc = valueSlice(file, directory.find(kTiffIptc));
    if (facts.iptc.empty()) {
        facts.iptc = iptcFromImageResources(valueSlice(file, directory.find(kTiffImageResources)));
    }
}

std::int64_t areaOf(const TiffDirectory& directory) {
    return std::int64_t(directory.numberFor(kTiffImageWidth).value_or(0)) *
           directory.numberFor(kTiffImageLength).value_or(0);
}

/// The largest picture among the first directories and their sub-directories: the others are previews.
TiffDirectory largestPicture(const TiffBlock& block) {
    TiffDirectory largest = block.firstDirectory();
    const auto consider = [&](const TiffDirectory& directory) {
        if (areaOf(directory) > areaOf(largest)) {
            largest = directory;
        }
    };
    for (const std::uint32_t offset : pageOffsets(block, kMostSubDirectories)) {
        const auto directory = block.directoryAt(offset);
        consider(directory);
        const auto below = directory.find(kTiffSubDirectories);
        for (std::uint32_t index = 0; below && index < std::min(below->count, kMostSubDirectories); ++index) {
            consider(block.directoryAt(static_cast<std::uint32_t>(integerAt(*below, index).value_or(0))));
        }
    }
    return largest;
}

/// A DNG tells which part of the sensor is picture: its top, left, bottom and right.
void takeActiveArea(ImageFacts& facts, const TiffDirectory& picture) {
    const auto area = picture.find(kTiffActiveArea);
    const auto edge = [&area](std::size_t index) { return integerAt(*area, index).value_or(0); };
    if (area && edge(2) > edge(0) && edge(3) > edge(1) && edge(3) <= facts.width && edge(2) <= facts.height) {
        facts.width = edge(3) - edge(1);
        facts.height = edge(2) - edge(0);
    }
}

/// Canon's raw pictures state no size; the Exif directory tells it.
void takeLargerExifSize(ImageFacts& facts, const TiffBlock& block) {
    const auto offset = block.firstDirectory().numberFor(kTiffExif);
    const auto exif = block.directoryAt(offset.value_or(0));
    const std::int64_t width = exif.numberFor(kExifPixelXDimension).value_or(0);
    const std::int64_t height = exif.numberFor(kExifPixelYDimension).value_or(0);
    if (width > facts.width && height > facts.height) {
        facts.width = width;
        facts.height = height;
    }
}

/// Panasonic's raw files have tags of their own: the borders of the picture on
/// the sensor, and a JPEG preview that holds the Exif data.
void takePanasonicTags(ImageFacts& facts, const Data& file, const TiffDirectory& directory) {
    constexpr std::uint16_t kTop = 4;
    constexpr std::uint16_t kLeft = 5;
    constexpr std::uint16_t kBottom = 6;
    constexpr std::uint16_t kRight = 7;
    constexpr std::uint16_t kBits = 10;
    constexpr std::uint16_t kPreview = 0x002e;
    const auto number = [&](std::uint16_t tag) { return std::int64_t(directory.numberFor(tag).value_or(0)); };
    facts.height = number(kBottom) - number(kTop);
    facts.width = number(kRight) - number(kLeft);
    facts.depth = static_cast<int>(std::min(number(kBits), std::int64_t(kMostDepth)));
    auto preview = readJpeg(valueSlice(file, directory.find(kPreview)), 0);
    if (preview && !preview->exif.empty()) {
        facts.exif = std::move(preview->exif);
        facts.isTiffFile = false;
    }
}

} // namespace

std::optional<ImageFacts> readTiff(const Data& file, std::size_t index) {
    const auto block = TiffBlock::fromBytes(file.bytes());
    const auto offsets =
        block ? pageOffsets(*block, std::min(index, kMostPages - 1) + 1) : std::vector<std::uint32_t>();
    if (index >= offsets.size()) {
        return std::nullopt;
    }
    const auto directory = block->directoryAt(offsets[index]);
    ImageFacts facts;
    takePixels(facts, directory);
    if (facts.width == 0 || facts.height == 0) {
        return std::nullopt;
    }
    takeBlocks(facts, file, directory);
    facts.directory = offsets[index];
    return facts;
}

std::size_t countTiff(const Data& file) {
    const auto block = TiffBlock::fromBytes(file.bytes());
    return block ? pageOffsets(*block, kMostPages).size() : 0;
}

std::optional<ImageFacts> readTiffRaw(const Data& file, std::size_t index) {
    const auto block = TiffBlock::fromBytes(file.bytes());
    if (!block || index > 0 || block->firstDirectory().count() == 0) {
        return std::nullopt;
    }
    ImageFacts facts;
    const auto picture = largestPicture(*block);
    takePixels(facts, picture);
    takeActiveArea(facts, picture);
    takeLargerExifSize(facts, *block);
    if (!picture.find(kTiffBitsPerSample)) {
        facts.depth = 0;
    }
    takeBlocks(facts, file, block->firstDirectory());
    // Pixels of a sensor become colours when they are developed.
    facts.colorModel = kCGImagePropertyColorModelRGB;
    return facts;
}

std::optional<ImageFacts> readPanasonicRaw(const Data& file, std::size_t index) {
    auto facts = readTiffRaw(file, index);
    if (facts) {
        takePanasonicTags(*facts, file, TiffBlock::fromBytes(file.bytes())->firstDirectory());
    }
    return facts;
}

} // namespace exifcard

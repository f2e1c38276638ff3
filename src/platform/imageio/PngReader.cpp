#include "platform/foundation/Array.h"
#include "platform/imageio/ByteView.h"
#include "platform/imageio/ContainerReaders.h"
#include "platform/imageio/ImageProperties.h"
#include "platform/imageio/IptcProperties.h"
#include "platform/imageio/PngText.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

namespace exifcard {
namespace {

constexpr std::size_t kSignatureSize = 8;
constexpr std::size_t kChunkOverhead = 12; ///< Length, name and checksum.
constexpr double kMetresPerInch = 0.0254;
/// Fractions are kept as whole numbers of this unit.
constexpr double kUnitsPerOne = 100000;
constexpr std::size_t kChromaticityCount = 8;

constexpr std::uint8_t kColorFlag = 2;
constexpr std::uint8_t kPaletteFlag = 1;
constexpr std::uint8_t kAlphaFlag = 4;

struct Chunk {
    std::string_view name; ///< Four characters.
    Data content;
    ByteView view() const { return ByteView(content.bytes()); }
};

/// Keywords that are keys of "{PNG}", too.
constexpr std::string_view kTextKeys[] = {
    kCGImagePropertyPNGAuthor,
    kCGImagePropertyPNGComment,
    kCGImagePropertyPNGCopyright,
    kCGImagePropertyPNGCreationTime,
    kCGImagePropertyPNGDescription,
    kCGImagePropertyPNGDisclaimer,
    kCGImagePropertyPNGSoftware,
    kCGImagePropertyPNGSource,
    kCGImagePropertyPNGTitle,
    kCGImagePropertyPNGWarning,
};

class PngReader {
public:
    explicit PngReader(const Data& file) : _file(file), _view(file.bytes()) {}

    std::optional<ImageFacts> read(std::size_t index);
    std::size_t count();

private:
    std::optional<Chunk> next();
    void takeHeader(const Chunk& chunk);
    void takeResolution(const Chunk& chunk);
    void takeChromaticities(const Chunk& chunk);
    void takeModificationTime(const Chunk& chunk);
    void takeText(const Chunk& chunk);
    void takeEmbedded(PngText text);
    void takeGamma(const Chunk& chunk);
    void takeIntent(const Chunk& chunk);
    void takeTransparency(const Chunk& /*chunk*/) { _facts.hasAlpha = true; }
    void takeFrame(const Chunk& /*chunk*/) { ++_frameCount; }
    void takeExif(const Chunk& chunk) { _facts.exif = chunk.content; }
    void takeProfile(const Chunk& chunk);
    void set(std::string_view key, Value value) { _png->setObjectForKey(std::move(value), key); }

    struct ChunkReader {
        std::string_view name;
        void (PngReader::*take)(const Chunk& chunk);
    };
    static const ChunkReader kChunkReaders[13];

    const Data& _file;
    ByteView _view;
    std::size_t _place = kSignatureSize;
    ImageFacts _facts;
    DictionaryPtr _png = Dictionary::make();
    std::size_t _frameCount = 0;
};

constexpr PngReader::ChunkReader PngReader::kChunkReaders[13] = {
    {"IHDR", &PngReader::takeHeader},
    {"pHYs", &PngReader::takeResolution},
    {"cHRM", &PngReader::takeChromaticities},
    {"gAMA", &PngReader::takeGamma},
    {"sRGB", &PngReader::takeIntent},
    {"iCCP", &PngReader::takeProfile},
    {"tRNS", &PngReader::takeTransparency},
    {"tIME", &PngReader::takeModificationTime},
    {"tEXt", &PngReader::takeText},
    {"zTXt", &PngReader::takeText},
    {"iTXt", &PngReader::takeText},
    {"eXIf", &PngReader::takeExif},
    {"fcTL", &PngReader::takeFrame},
};

std::optional<Chunk> PngReader::next() {
    const auto length = _view.longAt(_place);
    const auto name = textView(_view.part(_place + 4, 4));
    if (!length || name.empty() || name == "IEND") {
        return std::nullopt;
    }
    Chunk chunk{name, _file.slice(_place + 8, *length)};
    _place += kChunkOverhead + *length;
    return chunk;
}

void PngReader::takeHeader(const Chunk& chunk) {
    const auto interlace = chunk.view().byteAt(12);
    if (!interlace) {
        return;
    }
    const auto color = *chunk.view().byteAt(9);
    _facts.width = *chunk.view().longAt(0);
    _facts.height = *chunk.view().longAt(4);
    _facts.depth = *chunk.view().byteAt(8);
    _facts.colorModel =
        (color & kColorFlag) != 0 ? kCGImagePropertyColorModelRGB : kCGImagePropertyColorModelGray;
    _facts.isIndexed = (color & kPaletteFlag) != 0;
    _facts.hasAlpha = (color & kAlphaFlag) != 0;
    set(kCGImagePropertyPNGInterlaceType, int(*interlace));
}

void PngReader::takeResolution(const Chunk& chunk) {
    const auto unit = chunk.view().byteAt(8);
    const std::int64_t x = chunk.view().longAt(0).value_or(0);
    const std::int64_t y = chunk.view().longAt(4).value_or(0);
    if (!unit || x == 0 || y == 0) {
        return;
    }
    if (*unit != 1) {
        set(kCGImagePropertyPNGPixelsAspectRatio, static_cast<double>(y) / static_cast<double>(x));
        return;
    }
    set(kCGImagePropertyPNGXPixelsPerMeter, x);
    set(kCGImagePropertyPNGYPixelsPerMeter, y);
    _facts.dpiWidth = static_cast<double>(x) * kMetresPerInch;
    _facts.dpiHeight = static_cast<double>(y) * kMetresPerInch;
}

void PngReader::takeChromaticities(const Chunk& chunk) {
    auto chromaticities = Array::make();
    for (std::size_t index = 0; index < kChromaticityCount; ++index) {
        const auto units = chunk.view().longAt(index * 4);
        if (!units) {
            return;
        }
        chromaticities->addObject(*units / kUnitsPerOne);
    }
    set(kCGImagePropertyPNGChromaticities, chromaticities);
}

void PngReader::takeGamma(const Chunk& chunk) {
    if (const auto units = chunk.view().longAt(0)) {
        set(kCGImagePropertyPNGGamma, *units / kUnitsPerOne);
    }
}

void PngReader::takeIntent(const Chunk& chunk) {
    if (const auto intent = chunk.view().byteAt(0)) {
        set(kCGImagePropertyPNGsRGBIntent, int(*intent));
        _facts.isSRgb = true;
    }
}

void PngReader::takeModificationTime(const Chunk& chunk) {
    if (const auto second = chunk.view().byteAt(6)) {
        const auto part = [&](std::size_t offset) { return int(*chunk.view().byteAt(offset)); };
        set(kCGImagePropertyPNGModificationTime,
            fmt::format("{:04}:{:02}:{:02} {:02}:{:02}:{:02}", *chunk.view().shortAt(0), part(2), part(3),
                part(4), part(5), int(*second)));
    }
}

void PngReader::takeProfile(const Chunk& chunk) {
    _facts.iccProfile = pngProfile(chunk.content);
}

void PngReader::takeText(const Chunk& chunk) {
    auto text = readPngText(chunk.name, chunk.content);
    if (!text) {
        return;
    }
    if (std::ranges::count(kTextKeys, text->keyword) == 0) {
        takeEmbedded(std::move(*text));
    } else if (!text->text.empty()) {
        set(text->keyword, std::move(text->text));
    }
}

/// Blocks that editors keep in texts.
void PngReader::takeEmbedded(PngText text) {
    if (text.keyword == "XML:com.adobe.xmp") {
        _facts.xmp = Data::fromText(text.text);
        return;
    }
    auto profile = embeddedProfile(text);
    if (!profile) {
        return;
    }
    if ((profile->name == "exif" || profile->name == "APP1") && _facts.exif.empty()) {
        _facts.exif = profile->content;
    } else if (profile->name == "xmp" && _facts.xmp.empty()) {
        _facts.xmp = profile->content;
    } else if (profile->name == "iptc" || profile->name == "8bim") {
        _facts.iptc = iptcFromImageResources(profile->content);
    }
}

std::size_t PngReader::count() {
    while (const auto chunk = next()) {
        if (chunk->name == "fcTL") {
            ++_frameCount;
        }
    }
    return std::max<std::size_t>(_frameCount, 1);
}

std::optional<ImageFacts> PngReader::read(std::size_t index) {
    while (const auto chunk = next()) {
        const auto reader = std::ranges::find(kChunkReaders, chunk->name, &ChunkReader::name);
        if (reader != std::end(kChunkReaders)) {
            (this->*reader->take)(*chunk);
        }
    }
    if (_facts.width == 0 || _facts.height == 0 || index >= std::max<std::size_t>(_frameCount, 1)) {
        return std::nullopt;
    }
    _facts.dictionaries.emplace_back(kCGImagePropertyPNGDictionary, _png);
    return std::move(_facts);
}

} // namespace

std::optional<ImageFacts> readPng(const Data& file, std::size_t index) {
    return PngReader(file).read(index);
}

std::size_t countPng(const Data& file) {
    return PngReader(file).count();
}

} // namespace exifcard

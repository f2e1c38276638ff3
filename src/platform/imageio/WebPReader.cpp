#include "platform/imageio/ByteView.h"
#include "platform/imageio/ContainerReaders.h"
#include "platform/imageio/FrameDelay.h"
#include "platform/imageio/ImageProperties.h"

namespace exifcard {
namespace {

constexpr std::size_t kFirstChunk = 12;
constexpr std::size_t kChunkHead = 8;
constexpr std::string_view kExifName("Exif\0\0", 6);
constexpr std::uint32_t kAlphaFlag = 0x10;
constexpr double kMillisecondsPerSecond = 1000;

struct Chunk {
    std::string_view name; ///< Four characters.
    Data content;
    ByteView view() const { return ByteView(content.bytes(), ByteOrder::Little); }
};

/// A number of 24 bits.
std::uint32_t numberOf24Bits(const ByteView& view, std::size_t offset) {
    return view.shortAt(offset).value_or(0) | std::uint32_t(view.byteAt(offset + 2).value_or(0)) << 16U;
}

class WebPReader {
public:
    explicit WebPReader(const Data& file) : _file(file), _view(file.bytes(), ByteOrder::Little) {}

    std::optional<ImageFacts> read(std::size_t index);
    std::size_t count();

private:
    std::optional<Chunk> next();
    void take(const Chunk& chunk, std::size_t index);
    void takeCanvas(const Chunk& chunk);
    void takeLossy(const Chunk& chunk);
    void takeLossless(const Chunk& chunk);
    void addDictionary();

    const Data& _file;
    ByteView _view;
    std::size_t _place = kFirstChunk;
    ImageFacts _facts;
    std::size_t _frameCount = 0;
    bool _hasStill = false;
    bool _isCanvas = false; // The size is the canvas', not a single picture's.
    std::optional<int> _loopCount;
    std::optional<double> _delay;
};

std::optional<Chunk> WebPReader::next() {
    const auto length = _view.longAt(_place + 4);
    if (!length) {
        return std::nullopt;
    }
    Chunk chunk{textView(_view.part(_place, 4)), _file.slice(_place + kChunkHead, *length)};
    _place += kChunkHead + *length + (*length & 1U);
    return chunk;
}

void WebPReader::takeCanvas(const Chunk& chunk) {
    _isCanvas = chunk.content.size() >= 10;
    _facts.hasAlpha = (chunk.view().byteAt(0).value_or(0) & kAlphaFlag) != 0;
    _facts.width = numberOf24Bits(chunk.view(), 4) + 1;
    _facts.height = numberOf24Bits(chunk.view(), 7) + 1;
}

void WebPReader::takeLossy(const Chunk& chunk) {
    _hasStill = true;
    const auto height = chunk.view().shortAt(8);
    if (!_isCanvas && height) {
        _facts.width = *chunk.view().shortAt(6) & 0x3fff; // The upper bits ask for scaling.
        _facts.height = *height & 0x3fff;
    }
}

void WebPReader::takeLossless(const Chunk& chunk) {
    _hasStill = true;
    const auto bits = chunk.view().longAt(1);
    if (!_isCanvas && bits) {
        _facts.width = (*bits & 0x3fffU) + 1;
        _facts.height = (*bits >> 14U & 0x3fffU) + 1;
        _facts.hasAlpha = (*bits >> 28U & 1U) != 0;
    }
}

void WebPReader::take(const Chunk& chunk, std::size_t index) {
    if (chunk.name == "VP8X") {
        takeCanvas(chunk);
    } else if (chunk.name == "VP8 ") {
        takeLossy(chunk);
    } else if (chunk.name == "VP8L") {
        takeLossless(chunk);
    } else if (chunk.name == "ANIM") {
        _loopCount = chunk.view().shortAt(4);
    } else if (chunk.name == "ANMF") {
        if (_frameCount++ == index) {
            _delay = numberOf24Bits(chunk.view(), 12) / kMillisecondsPerSecond;
        }
    } else if (chunk.name == "ICCP") {
        _facts.iccProfile = chunk.content;
    } else if (chunk.name == "XMP ") {
        _facts.xmp = chunk.content;
    } else if (chunk.name == "EXIF") {
        const bool isNamed = chunk.view().hasTextAt(0, kExifName);
        _facts.exif = chunk.content.slice(isNamed ? kExifName.size() : 0, chunk.content.size());
    }
}

std::size_t WebPReader::count() {
    while (const auto chunk = next()) {
        take(*chunk, 0);
    }
    return _frameCount > 0 ? _frameCount : _hasStill ? 1 : 0;
}

void WebPReader::addDictionary() {
    auto webP = Dictionary::make({
        {std::string(kCGImagePropertyWebPCanvasPixelWidth), _facts.width},
        {std::string(kCGImagePropertyWebPCanvasPixelHeight), _facts.height},
        {std::string(kCGImagePropertyWebPUnclampedDelayTime), *_delay},
        {std::string(kCGImagePropertyWebPDelayTime), shownDelay(*_delay)},
    });
    if (_loopCount) {
        webP->setObjectForKey(*_loopCount, kCGImagePropertyWebPLoopCount);
    }
    _facts.dictionaries.emplace_back(kCGImagePropertyWebPDictionary, webP);
}

std::optional<ImageFacts> WebPReader::read(std::size_t index) {
    while (const auto chunk = next()) {
        take(*chunk, index);
    }
    const bool hasImage = _frameCount > 0 ? index < _frameCount : _hasStill && index == 0;
    if (!hasImage || _facts.width == 0 || _facts.height == 0) {
        return std::nullopt;
    }
    _facts.depth = 8;
    _facts.colorModel = kCGImagePropertyColorModelRGB;
    if (_delay) {
        addDictionary();
    }
    return std::move(_facts);
}

} // namespace

std::optional<ImageFacts> readWebP(const Data& file, std::size_t index) {
    return WebPReader(file).read(index);
}

std::size_t countWebP(const Data& file) {
    return WebPReader(file).count();
}

} // namespace exifcard

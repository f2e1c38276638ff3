#include "platform/imageio/ByteView.h"
#include "platform/imageio/ContainerReaders.h"
#include "platform/imageio/FrameDelay.h"
#include "platform/imageio/ImageProperties.h"

namespace exifcard {
namespace {

constexpr std::size_t kScreenSize = 13;
constexpr std::uint8_t kImage = 0x2c;
constexpr std::uint8_t kExtension = 0x21;
constexpr std::uint8_t kGraphicControl = 0xf9;
constexpr std::uint8_t kApplication = 0xff;
constexpr std::string_view kLoopName = "NETSCAPE2.0";

/// The bytes of the colour table that a block's flags announce.
std::size_t colorTableSize(std::uint8_t flags) {
    return (flags & 0x80U) != 0 ? std::size_t(3) << ((flags & 0x07U) + 1) : 0;
}

/// What stands before one frame.
struct GifFrame {
    double delay = 0; ///< Seconds.
    bool hasTransparency = false;
};

/// Walks from block to block; of the pictures it touches only the lengths of their parts.
class GifWalker {
public:
    explicit GifWalker(const ByteView& view)
        : _view(view)
        , _place(kScreenSize + colorTableSize(view.byteAt(10).value_or(0))) {}

    /// The next frame; nothing behind the last one.
    std::optional<GifFrame> next();
    std::optional<int> loopCount() const { return _loopCount; }

private:
    void takeExtension(GifFrame& frame);
    void skipParts();

    ByteView _view;
    std::size_t _place;
    std::optional<int> _loopCount;
};

std::optional<GifFrame> GifWalker::next() {
    GifFrame frame;
    while (_view.byteAt(_place) == kExtension) {
        takeExtension(frame);
    }
    const auto flags = _view.byteAt(_place + 9);
    if (_view.byteAt(_place) != kImage || !flags) {
        return std::nullopt;
    }
    _place += 10 + colorTableSize(*flags) + 1; // The size of the first code stands before the parts.
    skipParts();
    return frame;
}

void GifWalker::takeExtension(GifFrame& frame) {
    const auto label = _view.byteAt(_place + 1);
    if (label == kGraphicControl) {
        frame.delay = _view.shortAt(_place + 4).value_or(0) / 100.0;
        frame.hasTransparency = (_view.byteAt(_place + 3).value_or(0) & 0x01U) != 0;
    } else if (label == kApplication && _view.hasTextAt(_place + 3, kLoopName)) {
        _loopCount = _view.shortAt(_place + 16);
    }
    _place += 2;
    skipParts();
}

void GifWalker::skipParts() {
    while (const auto length = _view.byteAt(_place)) {
        _place += 1 + std::size_t(*length);
        if (*length == 0) {
            return;
        }
    }
}

} // namespace

std::size_t countGif(const Data& file) {
    GifWalker walker(ByteView(file.bytes(), ByteOrder::Little));
    std::size_t count = 0;
    while (walker.next()) {
        ++count;
    }
    return count;
}

std::optional<ImageFacts> readGif(const Data& file, std::size_t index) {
    const ByteView view(file.bytes(), ByteOrder::Little);
    GifWalker walker(view);
    auto frame = walker.next();
    for (std::size_t passed = 0; frame && passed < index; ++passed) {
        frame = walker.next();
    }
    if (!frame) {
        return std::nullopt;
    }
    ImageFacts facts;
    facts.width = *view.shortAt(6);
    facts.height = *view.shortAt(8);
    facts.depth = 8;
    facts.colorModel = kCGImagePropertyColorModelRGB;
    facts.isIndexed = true;
    facts.hasAlpha = frame->hasTransparency;
    auto gif = Dictionary::make({
        {std::string(kCGImagePropertyGIFCanvasPixelWidth), facts.width},
        {std::string(kCGImagePropertyGIFCanvasPixelHeight), facts.height},
        {std::string(kCGImagePropertyGIFHasGlobalColorMap), (*view.byteAt(10) & 0x80U) != 0},
        {std::string(kCGImagePropertyGIFUnclampedDelayTime), frame->delay},
        {std::string(kCGImagePropertyGIFDelayTime), shownDelay(frame->delay)},
    });
    if (const auto loopCount = walker.loopCount()) {
        gif->setObjectForKey(*loopCount, kCGImagePropertyGIFLoopCount);
    }
    facts.dictionaries.emplace_back(kCGImagePropertyGIFDictionary, gif);
    return facts;
}

} // namespace exifcard

#include "platform/foundation/Array.h"
#include "platform/imageio/ByteView.h"
#include "platform/imageio/ContainerReaders.h"
#include "platform/imageio/ImageProperties.h"
#include "platform/imageio/IptcProperties.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace exifcard {
namespace {

constexpr std::uint8_t kStartOfImage = 0xd8;
constexpr std::uint8_t kStartOfScan = 0xda;
constexpr std::uint8_t kEndOfImage = 0xd9;
constexpr std::uint8_t kApp0 = 0xe0;
constexpr std::uint8_t kApp1 = 0xe1;
constexpr std::uint8_t kApp2 = 0xe2;
constexpr std::uint8_t kApp13 = 0xed;

constexpr std::string_view kJfifName("JFIF\0", 5);
constexpr std::string_view kExifName("Exif\0", 5); // A second NUL or any other byte follows.
constexpr std::string_view kXmpName =
    "http://ns.adobe.com/xap/1.0/";                       // A NUL follows, in some files a blank first.
constexpr std::string_view kIccName("ICC_PROFILE\0", 12); // The number of the part and their count follow.
constexpr std::string_view kResourcesName("Photoshop 3.0\0", 14);

/// Damaged files have stray bytes between segments; what goes on for longer is no JPEG head.
constexpr std::size_t kMostStrayBytes = 65536;

constexpr double kCentimetresPerInch = 2.54;

struct Segment {
    std::uint8_t marker = 0;
    Data content; ///< Without marker and length.
    ByteView view() const { return ByteView(content.bytes()); }
};

/// SOF0 to SOF15 without the tables that stand between them.
bool isFrameHeader(std::uint8_t marker) {
    return marker >= 0xc0 && marker <= 0xcf && marker != 0xc4 && marker != 0xc8 && marker != 0xcc;
}

bool isProgressive(std::uint8_t frameMarker) {
    return (frameMarker & 0x03U) == 2;
}

/// Markers that stand alone.
bool hasNoContent(std::uint8_t marker) {
    return marker == 0x01 || (marker >= 0xd0 && marker <= kStartOfImage);
}

/// Walks from segment to segment up to the picture's data.
class SegmentWalker {
public:
    explicit SegmentWalker(const Data& file) : _file(file), _view(file.bytes()) {}

    std::optional<Segment> next();

private:
    std::optional<std::uint8_t> nextMarker();

    const Data& _file;
    ByteView _view;
    std::size_t _place = 2; // Behind the start of the image.
};

std::optional<std::uint8_t> SegmentWalker::nextMarker() {
    for (std::size_t stray = 0; stray < kMostStrayBytes; ++stray) {
        const auto mark = _view.byteAt(_place);
        const auto marker = _view.byteAt(_place + 1);
        if (!marker) {
            return std::nullopt;
        }
        if (mark == 0xff && marker != 0xff && marker != 0x00) {
            _place += 2;
            return marker;
        }
        ++_place;
    }
    return std::nullopt;
}

std::optional<Segment> SegmentWalker::next() {
    auto marker = nextMarker();
    while (marker && hasNoContent(*marker)) {
        marker = nextMarker();
    }
    const std::size_t length = _view.shortAt(_place).value_or(0);
    if (!marker || *marker == kStartOfScan || *marker == kEndOfImage || length < 2) {
        return std::nullopt;
    }
    Segment segment{*marker, _file.slice(_place + 2, length - 2)};
    _place += length;
    return segment;
}

/// The content of segments that belong together, uncopied when there is only one.
Data joined(const std::vector<Data>& parts) {
    if (parts.size() == 1) {
        return parts.front();
    }
    std::vector<std::uint8_t> bytes;
    for (const Data& part : parts) {
        bytes.insert(bytes.end(), part.bytes().begin(), part.bytes().end());
    }
    return Data::fromBytes(std::move(bytes));
}

class JpegHead {
public:
    std::optional<ImageFacts> read(const Data& file);

private:
    void take(const Segment& segment);
    void takeFrameHeader(const Segment& segment);
    void takeJfif(const Segment& segment);
    void takeApp1(const Segment& segment);

    ImageFacts _facts;
    DictionaryPtr _jfif;
    std::vector<Data> _profileParts;
    std::vector<Data> _resourceParts;
    bool _isProgressive = false;
};

void JpegHead::takeFrameHeader(const Segment& segment) {
    const auto components = segment.view().byteAt(5);
    if (!components || _facts.depth > 0) {
        return;
    }
    _facts.depth = *segment.view().byteAt(0);
    _facts.height = *segment.view().shortAt(1);
    _facts.width = *segment.view().shortAt(3);
    _facts.colorModel = *components == 1   ? kCGImagePropertyColorModelGray
                        : *components == 4 ? kCGImagePropertyColorModelCMYK
                                           : kCGImagePropertyColorModelRGB;
    _isProgressive = isProgressive(segment.marker);
}

void JpegHead::takeJfif(const Segment& segment) {
    const auto yDensity = segment.view().shortAt(10);
    if (_jfif || !yDensity || !segment.view().hasTextAt(0, kJfifName)) {
        return;
    }
    const int major = *segment.view().byteAt(5);
    const int minor = *segment.view().byteAt(6);
    const int unit = *segment.view().byteAt(7);
    const int xDensity = *segment.view().shortAt(8);
    _jfif = Dictionary::make({
        {std::string(kCGImagePropertyJFIFVersion), Array::make({major, minor / 10, minor % 10})},
        {std::string(kCGImagePropertyJFIFDensityUnit), unit},
        {std::string(kCGImagePropertyJFIFXDensity), xDensity},
        {std::string(kCGImagePropertyJFIFYDensity), int(*yDensity)},
    });
    if (unit == 1 || unit == 2) {
        const double perInch = unit == 1 ? 1 : kCentimetresPerInch;
        _facts.dpiWidth = xDensity * perInch;
        _facts.dpiHeight = *yDensity * perInch;
    }
}

void JpegHead::takeApp1(const Segment& segment) {
    if (_facts.exif.empty() && segment.view().hasTextAt(0, kExifName)) {
        _facts.exif = segment.content.slice(kExifName.size() + 1, segment.content.size());
    } else if (_facts.xmp.empty() && segment.view().hasTextAt(0, kXmpName)) {
        const auto end = segment.content.text().find('\0', kXmpName.size());
        _facts.xmp =
            segment.content.slice(std::min(end, segment.content.size() - 1) + 1, segment.content.size());
    }
}

void JpegHead::take(const Segment& segment) {
    if (isFrameHeader(segment.marker)) {
        takeFrameHeader(segment);
    } else if (segment.marker == kApp0) {
        takeJfif(segment);
    } else if (segment.marker == kApp1) {
        takeApp1(segment);
    } else if (segment.marker == kApp2 && segment.view().hasTextAt(0, kIccName)) {
        _profileParts.push_back(segment.content.slice(kIccName.size() + 2, segment.content.size()));
    } else if (segment.marker == kApp13 && segment.view().hasTextAt(0, kResourcesName)) {
        _resourceParts.push_back(segment.content.slice(kResourcesName.size(), segment.content.size()));
    }
}

std::optional<ImageFacts> JpegHead::read(const Data& file) {
    SegmentWalker walker(file);
    while (const auto segment = walker.next()) {
        take(*segment);
    }
    if (_facts.depth == 0) {
        return std::nullopt; // Metadata without a picture's header is no picture.
    }
    if (_jfif) {
        if (_isProgressive) {
            _jfif->setObjectForKey(true, kCGImagePropertyJFIFIsProgressive);
        }
        _facts.dictionaries.emplace_back(kCGImagePropertyJFIFDictionary, _jfif);
    }
    _facts.iccProfile = joined(_profileParts);
    _facts.iptc = iptcFromImageResources(joined(_resourceParts));
    return std::move(_facts);
}

} // namespace

std::optional<ImageFacts> readJpeg(const Data& file, std::size_t index) {
    return index == 0 ? JpegHead().read(file) : std::nullopt;
}

} // namespace exifcard

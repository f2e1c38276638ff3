#include "platform/imageio/ImageFacts.h"

#include "platform/imageio/ExifTables.h"
#include "platform/imageio/IccProfile.h"
#include "platform/imageio/ImageProperties.h"
#include "platform/imageio/IptcProperties.h"
#include "platform/imageio/PropertyTable.h"
#include "platform/imageio/TiffBlock.h"
#include "platform/imageio/TiffValue.h"
#include "platform/imageio/XmpPacket.h"

#include <algorithm>
#include <iterator>

namespace exifcard {
namespace {

constexpr std::uint16_t kExifPointer = 0x8769;
constexpr std::uint16_t kGpsPointer = 0x8825;
constexpr std::uint16_t kInteroperabilityPointer = 0xa005;
constexpr std::uint16_t kInteroperabilityIndex = 0x0001;
constexpr std::uint16_t kRating = 0x4746;
/// Tags of the first directory that tell of the pixels of a TIFF file and of nothing within another one.
constexpr std::uint16_t kPixelTags[] = {0x0103, 0x0106, 0x0142, 0x0143};

constexpr std::int64_t kInch = 2;
constexpr std::int64_t kCentimetre = 3;
constexpr double kCentimetresPerInch = 2.54;

constexpr std::int64_t kSRgb = 1;
constexpr std::int64_t kAdobeRgb = 2;
constexpr std::string_view kSRgbName = "sRGB IEC61966-2.1";
constexpr std::string_view kAdobeRgbName = "Adobe RGB (1998)";

/// Brings the properties of one image together.
class PropertiesBuilder {
public:
    explicit PropertiesBuilder(const ImageFacts& facts) : _facts(facts) {}

    DictionaryPtr build();

private:
    void readExif();
    void readFirstDirectory(const TiffDirectory& directory);
    void readExifDirectory(const TiffDirectory& directory);
    void readPacket();
    void setPixels();
    void setOrientation();
    void setResolution();
    void setProfileName();
    void setDictionaries();
    std::string profileName();
    void set(std::string_view key, Value value) { _result->setObjectForKey(std::move(value), key); }

    const ImageFacts& _facts;
    std::vector<XmpProperty> _packet;
    PropertyCollector _exif{kExifTable};
    PropertyCollector _tiff{kTiffTable};
    PropertyCollector _gps{kGpsTable};
    std::optional<std::int64_t> _rating;
    bool _isAdobeRgbFile = false;
    DictionaryPtr _result = Dictionary::make();
};

DictionaryPtr PropertiesBuilder::build() {
    _packet = propertiesFromXmpPacket(_facts.xmp.bytes());
    readExif();
    readPacket();
    setPixels();
    setOrientation();
    setResolution();
    setProfileName();
    setDictionaries();
    return _result;
}

void PropertiesBuilder::readExif() {
    const auto block = TiffBlock::fromBytes(_facts.exif.bytes());
    if (!block) {
        return;
    }
    const auto first =
        block->directoryAt(_facts.directory > 0 ? _facts.directory : block->firstDirectoryOffset());
    if (const auto offset = first.numberFor(kExifPointer)) {
        readExifDirectory(block->directoryAt(*offset));
    }
    if (const auto offset = first.numberFor(kGpsPointer)) {
        const auto gps = block->directoryAt(*offset);
        for (std::uint32_t index = 0; index < gps.count(); ++index) {
            if (const auto entry = gps.entryAt(index)) {
                _gps.addEntry(*entry);
            }
        }
    }
    readFirstDirectory(first);
}

void PropertiesBuilder::readFirstDirectory(const TiffDirectory& directory) {
    for (std::uint32_t index = 0; index < directory.count(); ++index) {
        const auto entry = directory.entryAt(index);
        if (!entry) {
            continue;
        }
        if (entry->tag == kRating) {
            _rating = integerAt(*entry, 0);
        } else if (_facts.isTiffFile) {
            _tiff.addEntry(*entry);
            _exif.addEntry(*entry); // Raw files keep shooting settings here too.
        } else if (std::ranges::count(kPixelTags, entry->tag) == 0) {
            _tiff.addEntry(*entry);
        }
    }
}

void PropertiesBuilder::readExifDirectory(const TiffDirectory& directory) {
    for (std::uint32_t index = 0; index < directory.count(); ++index) {
        const auto entry = directory.entryAt(index);
        if (!entry) {
            continue;
        }
        if (entry->tag == kInteroperabilityPointer) {
            const auto offset = static_cast<std::uint32_t>(integerAt(*entry, 0).value_or(0));
            const auto name =
                TiffBlock::fromBytes(_facts.exif.bytes())->directoryAt(offset).find(kInteroperabilityIndex);
            _isAdobeRgbFile = name && textOf(*name) == "R03";
        } else {
            _exif.addEntry(*entry);
        }
    }
}

void PropertiesBuilder::readPacket() {
    for (const XmpProperty& property : _packet) {
        if (property.space == XmpNamespace::Exif) {
            _exif.addXmpProperty(property);
            _gps.addXmpProperty(property);
        } else if (property.space == XmpNamespace::Tiff) {
            _tiff.addXmpProperty(property);
        }
    }
}

void PropertiesBuilder::setPixels() {
    if (_facts.width > 0 && _facts.height > 0) {
        set(kCGImagePropertyPixelWidth, _facts.width);
        set(kCGImagePropertyPixelHeight, _facts.height);
    }
    if (_facts.depth > 0) {
        set(kCGImagePropertyDepth, _facts.depth);
    }
    if (!_facts.colorModel.empty()) {
        set(kCGImagePropertyColorModel, _facts.colorModel);
    }
    const std::pair<std::string_view, bool> marks[] = {
        {kCGImagePropertyHasAlpha, _facts.hasAlpha},
        {kCGImagePropertyIsFloat, _facts.isFloat},
        {kCGImagePropertyIsIndexed, _facts.isIndexed},
    };
    for (const auto& [key, isSet] : marks) {
        if (isSet) {
            set(key, true);
        }
    }
}

void PropertiesBuilder::setOrientation() {
    const auto stored = _tiff.valueForKey(kCGImagePropertyTIFFOrientation).integerValue();
    const auto orientation = _facts.orientation ? *_facts.orientation : stored;
    if (orientation >= 1 && orientation <= 8) {
        set(kCGImagePropertyOrientation, orientation);
    }
}

void PropertiesBuilder::setResolution() {
    const Value& unitValue = _tiff.valueForKey(kCGImagePropertyTIFFResolutionUnit);
    const auto unit = unitValue.isNothing() ? kInch : unitValue.integerValue();
    const double factor = unit == kInch ? 1 : unit == kCentimetre ? kCentimetresPerInch : 0;
    const auto resolution = [&](std::string_view tiffKey, const std::optional<double>& container) {
        const double stored = _tiff.valueForKey(tiffKey).doubleValue() * factor;
        return stored > 0 ? Value(stored) : container ? Value(*container) : Value();
    };
    set(kCGImagePropertyDPIWidth, resolution(kCGImagePropertyTIFFXResolution, _facts.dpiWidth));
    set(kCGImagePropertyDPIHeight, resolution(kCGImagePropertyTIFFYResolution, _facts.dpiHeight));
}

std::string PropertiesBuilder::profileName() {
    auto described = descriptionOfIccProfile(_facts.iccProfile.bytes());
    if (!described.empty()) {
        return described;
    }
    const auto colorSpace = _exif.valueForKey(kCGImagePropertyExifColorSpace).integerValue();
    if (colorSpace == kSRgb || _facts.isSRgb) {
        return std::string(kSRgbName);
    }
    return colorSpace == kAdobeRgb || _isAdobeRgbFile ? std::string(kAdobeRgbName) : std::string();
}

void PropertiesBuilder::setProfileName() {
    auto name = profileName();
    if (!name.empty()) {
        set(kCGImagePropertyProfileName, std::move(name));
    }
}

void PropertiesBuilder::setDictionaries() {
    for (const auto& [name, dictionary] : _facts.dictionaries) {
        set(name, dictionary);
    }
    set(kCGImagePropertyIPTCDictionary, iptcProperties(_facts.iptc, _packet, _rating));
    set(kCGImagePropertyExifDictionary, _exif.dictionary());
    set(kCGImagePropertyTIFFDictionary, _tiff.dictionary());
    set(kCGImagePropertyGPSDictionary, _gps.dictionary());
}

} // namespace

DictionaryPtr propertiesFromFacts(const ImageFacts& facts) {
    return PropertiesBuilder(facts).build();
}

} // namespace exifcard

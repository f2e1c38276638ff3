#include "platform/imageio/ImageFacts.h"

#include "platform/imageio/CGImageSource.h"
#include "platform/imageio/ExifProperties.h"
#include "platform/imageio/IccProfile.h"
#include "platform/imageio/ImageProperties.h"
#include "platform/imageio/IptcProperties.h"

#include <algorithm>
#include <initializer_list>
#include <optional>
#include <utility>

namespace exifcard {
namespace {

constexpr std::int64_t kInch = 2;
constexpr std::int64_t kCentimetre = 3;
constexpr double kCentimetresPerInch = 2.54;

constexpr std::int64_t kSRgb = 1;
constexpr std::int64_t kAdobeRgb = 2;
constexpr std::string_view kSRgbName = "sRGB IEC61966-2.1";
constexpr std::string_view kAdobeRgbName = "Adobe RGB (1998)";

void addPixels(Dictionary& properties, const ImageFacts& facts) {
    if (facts.width > 0 && facts.height > 0) {
        properties.setObjectForKey(facts.width, kCGImagePropertyPixelWidth);
        properties.setObjectForKey(facts.height, kCGImagePropertyPixelHeight);
    }
    if (facts.depth > 0) {
        properties.setObjectForKey(facts.depth, kCGImagePropertyDepth);
    }
    if (!facts.colorModel.empty()) {
        properties.setObjectForKey(facts.colorModel, kCGImagePropertyColorModel);
    }
    const std::pair<std::string_view, bool> marks[] = {
        {kCGImagePropertyHasAlpha, facts.hasAlpha},
        {kCGImagePropertyIsFloat, facts.isFloat},
        {kCGImagePropertyIsIndexed, facts.isIndexed},
    };
    for (const auto& [key, isSet] : marks) {
        if (isSet) {
            properties.setObjectForKey(true, key);
        }
    }
}

void addOrientation(Dictionary& properties, const ImageFacts& facts, const PropertyCollector& tiff) {
    const auto stored = tiff.valueForKey(kCGImagePropertyTIFFOrientation).integerValue();
    const std::int64_t orientation = facts.orientation.value_or(static_cast<int>(stored));
    if (orientation >= 1 && orientation <= 8) {
        properties.setObjectForKey(orientation, kCGImagePropertyOrientation);
    }
}

/// The first directory's resolution in pixels per inch, else the container's own.
void addResolution(Dictionary& properties, const ImageFacts& facts, const PropertyCollector& tiff) {
    const Value& unit = tiff.valueForKey(kCGImagePropertyTIFFResolutionUnit);
    const auto unitCode = unit.isNothing() ? kInch : unit.integerValue();
    const double factor = unitCode == kInch ? 1 : unitCode == kCentimetre ? kCentimetresPerInch : 0;
    const auto add = [&](std::string_view key, std::string_view tiffKey, std::optional<double> ownDpi) {
        const double stored = tiff.valueForKey(tiffKey).doubleValue() * factor;
        const auto dpi = stored > 0 ? std::optional(stored) : ownDpi;
        if (dpi) {
            properties.setObjectForKey(*dpi, key);
        }
    };
    add(kCGImagePropertyDPIWidth, kCGImagePropertyTIFFXResolution, facts.dpiWidth);
    add(kCGImagePropertyDPIHeight, kCGImagePropertyTIFFYResolution, facts.dpiHeight);
}

std::string profileName(const ImageFacts& facts, const ExifProperties& read) {
    auto described = descriptionOfIccProfile(facts.iccProfile.bytes());
    if (!described.empty()) {
        return described;
    }
    const auto colorSpace = read.exif.valueForKey(kCGImagePropertyExifColorSpace).integerValue();
    if (colorSpace == kSRgb || facts.isSRgb) {
        return std::string(kSRgbName);
    }
    return colorSpace == kAdobeRgb || read.isAdobeRgbFile ? std::string(kAdobeRgbName) : std::string();
}

void addDictionaries(Dictionary& properties, const std::vector<NamedDictionary>& dictionaries) {
    for (const auto& [name, dictionary] : dictionaries) {
        properties.setObjectForKey(dictionary, name);
    }
}

/// Whether a value that a library keeps is not in the directories, so that the packet's would be taken.
bool lacksAny(const PropertyCollector& properties, std::initializer_list<std::string_view> keys) {
    return std::ranges::any_of(
        keys, [&](std::string_view key) { return properties.valueForKey(key).isNothing(); });
}

/// Whether the packet may tell something that a library keeps and the directories lack.
bool mayTellMore(std::string_view packet, const ExifProperties& read) {
    const auto mentions = [packet](
                              std::string_view word) { return packet.find(word) != std::string_view::npos; };
    const std::initializer_list<std::string_view> placeKeys = {kCGImagePropertyGPSLatitude,
        kCGImagePropertyGPSLongitude, kCGImagePropertyGPSAltitude, kCGImagePropertyGPSSpeed,
        kCGImagePropertyGPSImgDirection, kCGImagePropertyGPSTrack, kCGImagePropertyGPSHPositioningError};
    return mentions("Rating") || mentions("title") || mentions("ns.google.com/photos/") ||
           (lacksAny(read.exif, {kCGImagePropertyExifDateTimeOriginal}) && mentions("DateTimeOriginal")) ||
           (lacksAny(read.exif, {kCGImagePropertyExifExposureTime}) && mentions("ExposureTime")) ||
           (lacksAny(read.exif, {kCGImagePropertyExifUserComment}) && mentions("UserComment")) ||
           (lacksAny(read.exif, {kCGImagePropertyExifCustomRendered}) && mentions("CustomRendered")) ||
           (lacksAny(read.tiff, {kCGImagePropertyTIFFMake}) && mentions("Make")) ||
           (lacksAny(read.tiff, {kCGImagePropertyTIFFModel}) && mentions("Model")) ||
           (lacksAny(read.tiff, {kCGImagePropertyTIFFOrientation}) && mentions("Orientation")) ||
           (lacksAny(read.gps, placeKeys) && mentions("GPS"));
}

DictionaryPtr propertiesOfImage(
    const ImageFacts& facts, const std::vector<XmpProperty>& packet, ExifProperties read) {
    auto properties = Dictionary::make();
    addPixels(*properties, facts);
    addOrientation(*properties, facts, read.tiff);
    addResolution(*properties, facts, read.tiff);
    if (auto name = profileName(facts, read); !name.empty()) {
        properties->setObjectForKey(std::move(name), kCGImagePropertyProfileName);
    }
    addDictionaries(*properties, facts.dictionaries);
    addDictionaries(*properties, read.makerDictionaries);
    addDictionaries(
        *properties, {
                         {kCGImagePropertyExifDictionary, read.exif.dictionary()},
                         {kCGImagePropertyTIFFDictionary, read.tiff.dictionary()},
                         {kCGImagePropertyGPSDictionary, read.gps.dictionary()},
                         {kCGImagePropertyExifAuxDictionary, read.aux.dictionary()},
                         {kCGImagePropertyIPTCDictionary, iptcProperties(facts.iptc, packet, read.rating)},
                     });
    return properties;
}

} // namespace

DictionaryPtr propertiesFromFacts(const ImageFacts& facts) {
    const auto packet = propertiesFromXmpPacket(facts.xmp.bytes());
    return propertiesOfImage(facts, packet, readExifProperties(facts, packet));
}

LibraryMetadata libraryMetadataFromFacts(const ImageFacts& facts) {
    auto read = readExifPropertiesForLibrary(facts, {});
    if (!mayTellMore(facts.xmp.text(), read)) {
        return {propertiesOfImage(facts, {}, std::move(read)), {}};
    }
    auto packet = propertiesFromXmpPacket(facts.xmp.bytes());
    auto properties = propertiesOfImage(facts, packet, readExifPropertiesForLibrary(facts, packet));
    return {std::move(properties), std::move(packet)};
}

} // namespace exifcard

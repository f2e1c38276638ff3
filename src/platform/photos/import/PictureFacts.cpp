#include "platform/photos/import/PictureFacts.h"

#include "platform/foundation/ASCII.h"
#include "platform/foundation/Array.h"
#include "platform/imageio/CGImageSource.h"
#include "platform/imageio/ImageProperties.h"
#include "platform/imageio/XmpPacket.h"
#include "platform/photos/import/CaptureDate.h"
#include "platform/uivalues/UIImage.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace exifcard {
namespace {

constexpr std::uint64_t kPanorama = kPHAssetMediaSubtypePhotoPanorama;
constexpr std::uint64_t kHDR = kPHAssetMediaSubtypePhotoHDR;
constexpr std::uint64_t kDepthEffect = kPHAssetMediaSubtypePhotoDepthEffect;

// Keys of "{MakerApple}".
constexpr std::string_view kAppleHDRImageType = "10";
constexpr std::string_view kAppleBurst = "11";
constexpr std::string_view kAppleContentIdentifier = "17";
constexpr std::int64_t kAppleHDRPicture = 3;

/// What one maker writes as "CustomRendered"; to others, 1 is a picture that was worked on.
struct CustomRendering {
    std::int64_t code;
    std::uint64_t subtypes;
};
constexpr CustomRendering kAppleRenderings[] = {
    {2, kHDR},
    {3, kHDR},
    {6, kPanorama},
    {7, kHDR | kDepthEffect},
    {8, kDepthEffect},
};

constexpr std::string_view kScreenshotNames[] = {
    "screenshot",
    "screen shot",
    "bildschirmfoto",
};

/// A metre a second, in the unit that the reference names.
struct SpeedUnit {
    std::string_view reference;
    double metresPerSecond;
};
constexpr SpeedUnit kSpeedUnits[] = {{"K", 1000.0 / 3600}, {"M", 1609.344 / 3600}, {"N", 1852.0 / 3600}};

/// A dictionary that may be missing.
class Section {
public:
    Section(const Dictionary& properties, std::string_view name)
        : _dictionary(properties.objectForKey(name).dictionaryView()) {}

    const Value& operator[](std::string_view key) const {
        return _dictionary != nullptr ? _dictionary->objectForKey(key) : nothing();
    }
    bool has(std::string_view key) const { return !(*this)[key].isNothing(); }
    std::string_view text(std::string_view key) const {
        const std::string* const found = (*this)[key].text();
        return found != nullptr ? std::string_view(*found) : std::string_view();
    }

private:
    const Dictionary* _dictionary;
};

bool isTextOf(const Section& section, std::string_view key, std::string_view upper, std::string_view lower) {
    const std::string_view text = section.text(key);
    return text == upper || text == lower;
}

std::optional<Date> dateFromProperties(const Dictionary& properties) {
    const Section exif(properties, kCGImagePropertyExifDictionary);
    return captureDate(exif.text(kCGImagePropertyExifDateTimeOriginal),
        exif.text(kCGImagePropertyExifOffsetTimeOriginal), exif.text(kCGImagePropertyExifSubsecTimeOriginal));
}

std::uint64_t appleSubtypes(const Dictionary& properties) {
    const Section tiff(properties, kCGImagePropertyTIFFDictionary);
    if (tiff.text(kCGImagePropertyTIFFMake) != "Apple") {
        return 0;
    }
    const Section exif(properties, kCGImagePropertyExifDictionary);
    const Section maker(properties, kCGImagePropertyMakerAppleDictionary);
    const std::int64_t rendering = exif[kCGImagePropertyExifCustomRendered].integerValue();
    const auto* const known = std::ranges::find(kAppleRenderings, rendering, &CustomRendering::code);
    const std::uint64_t hdr = maker[kAppleHDRImageType].integerValue() == kAppleHDRPicture ? kHDR : 0;
    return hdr | (known == std::end(kAppleRenderings) ? 0 : known->subtypes);
}

bool isScreenshot(const Dictionary& properties, std::string_view name) {
    const Section exif(properties, kCGImagePropertyExifDictionary);
    const Section tiff(properties, kCGImagePropertyTIFFDictionary);
    const bool hasCamera = exif.has(kCGImagePropertyExifExposureTime) || tiff.has(kCGImagePropertyTIFFModel);
    return exif.text(kCGImagePropertyExifUserComment) == "Screenshot" ||
           (!hasCamera && isScreenshotName(name));
}

void addPixels(MediaFacts& facts, const Dictionary& properties) {
    facts.pixelWidth = properties.objectForKey(kCGImagePropertyPixelWidth).integerValue();
    facts.pixelHeight = properties.objectForKey(kCGImagePropertyPixelHeight).integerValue();
    facts.orientation = exifFromImageOrientation(
        imageOrientationFromExif(properties.objectForKey(kCGImagePropertyOrientation).integerValue()));
    constexpr int kFirstSideways = 5; // The orientations 5 to 8 lie on their side.
    if (facts.orientation >= kFirstSideways) {
        std::swap(facts.pixelWidth, facts.pixelHeight);
    }
}

/// What only the packet tells: panoramas, depth maps and bursts of other makers' phones.
void addPacket(MediaFacts& facts, const std::vector<XmpProperty>& packet) {
    const auto isOf = [](XmpNamespace space) {
        return [space](const XmpProperty& property) { return property.space == space; };
    };
    if (firstXmpValue(packet, XmpNamespace::GooglePanorama, "ProjectionType") != nullptr) {
        facts.mediaSubtypes |= kPanorama;
    }
    if (std::ranges::any_of(packet, isOf(XmpNamespace::GoogleDepthMap))) {
        facts.mediaSubtypes |= kDepthEffect;
    }
    if (const auto* const burst = firstXmpValue(packet, XmpNamespace::GoogleCamera, "BurstID")) {
        facts.burstIdentifier = *burst;
    }
}

/// Only these kinds of files may move; to count the pictures of others may mean to read all of them.
bool isAnimated(const CGImageSource& source) {
    constexpr std::string_view kKinds[] = {"com.compuserve.gif", "org.webmproject.webp", "public.png"};
    return std::ranges::count(kKinds, CGImageSourceGetType(source)) > 0 && CGImageSourceGetCount(source) > 1;
}

} // namespace

bool isScreenshotName(std::string_view name) {
    return std::ranges::any_of(kScreenshotNames, [name](std::string_view beginning) {
        return isEqualIgnoringCase(name.substr(0, beginning.size()), beginning);
    });
}

void addDescription(MediaFacts& facts, const Dictionary& properties) {
    const Section iptc(properties, kCGImagePropertyIPTCDictionary);
    if (const auto title = iptc.text(kCGImagePropertyIPTCObjectName); !title.empty()) {
        facts.title = title;
    }
    if (const Value& rating = iptc[kCGImagePropertyIPTCStarRating]; rating.isNumber()) {
        facts.rating = rating.integerValue();
    }
}

std::optional<CLLocation> locationFromProperties(const Dictionary& properties) {
    const Section gps(properties, kCGImagePropertyGPSDictionary);
    if (!gps.has(kCGImagePropertyGPSLatitude) || !gps.has(kCGImagePropertyGPSLongitude)) {
        return std::nullopt;
    }
    const bool isSouth = isTextOf(gps, kCGImagePropertyGPSLatitudeRef, "S", "s");
    const bool isWest = isTextOf(gps, kCGImagePropertyGPSLongitudeRef, "W", "w");
    const double latitude = gps[kCGImagePropertyGPSLatitude].doubleValue();
    const double longitude = gps[kCGImagePropertyGPSLongitude].doubleValue();
    CLLocation location{.coordinate = {isSouth ? -latitude : latitude, isWest ? -longitude : longitude},
        .horizontalAccuracy = gps[kCGImagePropertyGPSHPositioningError].doubleValue()};
    if (!CLLocationCoordinate2DIsValid(location.coordinate)) {
        return std::nullopt;
    }
    if (gps.has(kCGImagePropertyGPSAltitude)) {
        const bool isBelowSea = gps[kCGImagePropertyGPSAltitudeRef].integerValue() == 1;
        const double altitude = gps[kCGImagePropertyGPSAltitude].doubleValue();
        location.altitude = isBelowSea ? -altitude : altitude;
        location.verticalAccuracy = 0;
    }
    if (gps.has(kCGImagePropertyGPSSpeed)) {
        const auto* const unit =
            std::ranges::find(kSpeedUnits, gps.text(kCGImagePropertyGPSSpeedRef), &SpeedUnit::reference);
        location.speed = gps[kCGImagePropertyGPSSpeed].doubleValue() *
                         (unit == std::end(kSpeedUnits) ? kSpeedUnits[0] : *unit).metresPerSecond;
    }
    for (const auto key : {kCGImagePropertyGPSImgDirection, kCGImagePropertyGPSTrack}) {
        location.course = gps.has(key) ? gps[key].doubleValue() : location.course;
    }
    return location;
}

std::optional<MediaFacts> factsOfPicture(const Data& file, std::string_view name) {
    const CGImageSourcePtr source = CGImageSourceCreateWithData(file);
    const auto [properties, packet] = CGImageSourceCopyLibraryMetadata(*source);
    if (!properties) {
        return std::nullopt;
    }
    MediaFacts facts;
    facts.typeIdentifier = CGImageSourceGetType(*source);
    facts.isAnimated = isAnimated(*source);
    facts.captureDate = dateFromProperties(*properties);
    facts.location = locationFromProperties(*properties);
    facts.mediaSubtypes = appleSubtypes(*properties) |
                          (isScreenshot(*properties, name) ? kPHAssetMediaSubtypePhotoScreenshot : 0);
    addPixels(facts, *properties);
    addDescription(facts, *properties);
    const Section maker(*properties, kCGImagePropertyMakerAppleDictionary);
    facts.contentIdentifier = maker.text(kAppleContentIdentifier);
    facts.burstIdentifier = maker.text(kAppleBurst);
    addPacket(facts, packet);
    facts.embeddedVideo = embeddedVideo(file, packet);
    return facts;
}

} // namespace exifcard

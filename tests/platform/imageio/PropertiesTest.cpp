#include "platform/foundation/Array.h"
#include "platform/imageio/CGImageSource.h"
#include "platform/imageio/ImageProperties.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace exifcard {
namespace {

DictionaryPtr propertiesOf(std::string_view sample) {
    const auto path = std::string(EXIFCARD_TEST_DATA "/").append(sample);
    const auto source = CGImageSourceCreateWithURL(URL::fileURLWithPath(path));
    return source ? CGImageSourceCopyPropertiesAtIndex(*source, 0) : nullptr;
}

/// The value under `key` of a sub-dictionary, or of the top level for an empty name.
Value valueIn(const DictionaryPtr& properties, std::string_view dictionary, std::string_view key) {
    if (!properties || dictionary.empty()) {
        return properties ? properties->objectForKey(key) : Value();
    }
    const auto inner = properties->objectForKey(dictionary).dictionary();
    return inner ? inner->objectForKey(key) : Value();
}

TEST(PropertiesTest, ReadsCamerasPhotos) {
    struct Case {
        std::string_view sample;
        std::string_view dictionary;
        std::string_view key;
        Value value;
    };
    const Case cases[] = {
        {"canon-6d-elephants.jpg", "", kCGImagePropertyPixelWidth, 497},
        {"canon-6d-elephants.jpg", "", kCGImagePropertyPixelHeight, 331},
        {"canon-6d-elephants.jpg", "", kCGImagePropertyDepth, 8},
        {"canon-6d-elephants.jpg", "", kCGImagePropertyProfileName, "Adobe RGB (1998)"},
        {"canon-6d-elephants.jpg", "", kCGImagePropertyDPIWidth, 300.0},
        {"canon-6d-elephants.jpg", "{JFIF}", kCGImagePropertyJFIFIsProgressive, true},
        {"canon-6d-elephants.jpg", "{Exif}", kCGImagePropertyExifISOSpeedRatings, Array::make({200})},
        {"canon-6d-elephants.jpg", "{Exif}", kCGImagePropertyExifExposureTime, 1.0 / 640},
        {"canon-6d-elephants.jpg", "{Exif}", kCGImagePropertyExifVersion, Array::make({2, 3})},
        {"canon-6d-elephants.jpg", "{Exif}", kCGImagePropertyExifSubsecTimeOriginal, "00"},
        {"canon-6d-elephants.jpg", "{GPS}", kCGImagePropertyGPSLatitudeRef, "S"},
        {"canon-6d-elephants.jpg", "{GPS}", kCGImagePropertyGPSTimeStamp, "13:53:46"},
        {"apple-iphone7-makernote.jpg", "{MakerApple}", "20", 5},
        {"canon-1dmk3.jpg", "{ExifAux}", kCGImagePropertyExifAuxLensModel, "EF16-35mm f/2.8L II USM"},
        {"canon-1dmk3.jpg", "{ExifAux}", kCGImagePropertyExifAuxSerialNumber, "500292"},
        {"canon-1dmk3.jpg", "{ExifAux}", kCGImagePropertyExifAuxLensInfo,
            Array::make({16.0, 35.0, 0.0, 0.0})},
        {"canon-1dmk3.jpg", "{MakerCanon}", "Firmware", "Firmware Version 5.3.1"},
        {"nikon-d70-makernote.jpg", "{ExifAux}", kCGImagePropertyExifAuxLensModel, "18.0-70.0 mm f/3.5-4.5"},
        {"nikon-d70-makernote.jpg", "{ExifAux}", kCGImagePropertyExifAuxLensID, 127},
        {"nikon-d70-makernote.jpg", "{ExifAux}", kCGImagePropertyExifAuxImageNumber, 526},
        {"nikon-d70-makernote.jpg", "{ExifAux}", kCGImagePropertyExifAuxSerialNumber, "20025585"},
        {"nikon-d70-makernote.jpg", "{MakerNikon}", "Quality", "FINE"},
        {"olympus-em5m3.jpg", "{ExifAux}", kCGImagePropertyExifAuxLensModel, "OLYMPUS M.17mm F1.2"},
        {"olympus-em5m3.jpg", "{ExifAux}", kCGImagePropertyExifAuxFirmware, "1.001"},
        {"pentax-k10d.jpg", "{ExifAux}", kCGImagePropertyExifAuxLensModel, "Sigma AF 10-20mm F4-5.6 EX DC"},
        {"pentax-k10d.jpg", "{ExifAux}", kCGImagePropertyExifAuxImageNumber, 1648},
        {"fuji-x100t-film-d.jpg", "{PictureStyle}", "FilmSimulation",
            Array::make({"Classic Chrome", 0x600, 0x600})},
        {"fuji-x100t-mono-h.jpg", "{PictureStyle}", "FilmSimulation", Value()},
        {"fuji-x100t-mono-h.jpg", "{PictureStyle}", "Saturation",
            Array::make({"Monochrome + R", 0x301, 0x301})},
        {"mwg.jpg", "", kCGImagePropertyOrientation, 6},
        {"mwg.jpg", "{TIFF}", kCGImagePropertyTIFFImageDescription, "RIGHT-EXIF-Description"},
        {"mwg.jpg", "{IPTC}", kCGImagePropertyIPTCCity, "RIGHT-XMP-City"},
        {"mwg.jpg", "{IPTC}", kCGImagePropertyIPTCProvinceState, "RIGHT-IPTC-State"},
        {"mwg.jpg", "{IPTC}", kCGImagePropertyIPTCStarRating, 3},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.sample).append(" ").append(c.dictionary).append(c.key));
        const Value value = valueIn(propertiesOf(c.sample), c.dictionary, c.key);
        EXPECT_EQ(value, c.value) << value.description();
    }
}

} // namespace
} // namespace exifcard

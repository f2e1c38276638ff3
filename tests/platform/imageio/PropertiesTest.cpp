#include "platform/foundation/Array.h"
#include "platform/foundation/Log.h"
#include "platform/imageio/CGImageSource.h"
#include "platform/imageio/ImageProperties.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace exifcard {
namespace {

CGImageSourcePtr sourceOf(std::string_view sample) {
    return CGImageSourceCreateWithURL(
        URL::fileURLWithPath(std::string(EXIFCARD_TEST_DATA "/").append(sample)));
}

DictionaryPtr propertiesOf(std::string_view sample) {
    const auto source = sourceOf(sample);
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
        {"apple-iphone15pro-subsec-header.heic", "", kCGImagePropertyOrientation, 6},
        {"apple-iphone15pro-subsec-header.heic", "", kCGImagePropertyPixelWidth, 4032},
        {"apple-iphone15pro-subsec-header.heic", "", kCGImagePropertyProfileName, "Display P3"},
        {"apple-iphone15pro-subsec-header.heic", "{MakerApple}", "17",
            "6F98E4E3-F5B9-42EE-A8B0-7B968B72C4F1"},
        {"nikon-d5300.heic", "{GPS}", kCGImagePropertyGPSLongitudeRef, "W"},
        {"pentax-k3ii.avif", "{IPTC}", kCGImagePropertyIPTCStarRating, 4},
        {"canon-m50.cr3", "", kCGImagePropertyPixelWidth, 6000},
        {"canon-m50.cr3", "", kCGImagePropertyDepth, 14},
        {"canon-m50.cr3", "{Exif}", kCGImagePropertyExifLensModel, "EF-M15-45mm f/3.5-6.3 IS STM"},
        {"canon-m50.cr3", "{ExifAux}", kCGImagePropertyExifAuxLensID, 4153},
        {"canon-s40-exif.png", "{GPS}", kCGImagePropertyGPSLatitudeRef, "N"},
        {"canon-s40-exif.png", "", kCGImagePropertyDPIWidth, 180.0},
        {"canon-s40-exif.png", "{ExifAux}", kCGImagePropertyExifAuxImageNumber, 1171771},
        {"canon-rebel-iptc.tif", "{TIFF}", kCGImagePropertyTIFFModel, "Canon EOS DIGITAL REBEL"},
        {"animated.webp", "", kCGImagePropertyHasAlpha, true},
        {"animated.webp", "{WebP}", kCGImagePropertyWebPCanvasPixelWidth, 200},
        {"animated-bad-xmp.gif", "{GIF}", kCGImagePropertyGIFLoopCount, 0},
        {"animated-bad-xmp.gif", "", kCGImagePropertyPixelHeight, 22},
        {"minolta-a2.mrw", "", kCGImagePropertyPixelWidth, 3264},
        {"minolta-a2.mrw", "{TIFF}", kCGImagePropertyTIFFModel, "DiMAGE A2"},
        {"canon-rebel.crw", "", kCGImagePropertyPixelWidth, 3072},
        {"canon-rebel.crw", "{Exif}", kCGImagePropertyExifExposureTime, 1.0 / 64},
        {"canon-rebel.crw", "{MakerCanon}", "OwnerName", "Phil Harvey"},
        {"panasonic-lx3.rw2", "", kCGImagePropertyPixelHeight, 2736},
        {"panasonic-lx3.rw2", "{Exif}", kCGImagePropertyExifFocalLenIn35mmFilm, 24},
        {"fuji-s5pro.raf", "", kCGImagePropertyPixelWidth, 4256},
        {"fuji-s5pro.raf", "{PictureStyle}", "FilmSimulation", Array::make({"Provia / Standard", 0, 0})},
        {"nikon-d1.nef", "", kCGImagePropertyPixelWidth, 2012},
        {"om-1.orf", "{ExifAux}", kCGImagePropertyExifAuxLensModel, "OLYMPUS M.12-100mm F4.0"},
        {"hostile-circular-ifds.jpg", "", kCGImagePropertyOrientation, 6},
        {"hostile-null-coordinates.jpg", "{GPS}", kCGImagePropertyGPSLatitude, Value()},
        {"hostile-null-coordinates.jpg", "{TIFF}", kCGImagePropertyTIFFMake, "NIKON"},
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

TEST(PropertiesTest, TellsKindAndNumberOfImagesByTheContent) {
    struct Case {
        std::string_view sample;
        std::string type;
        std::size_t count;
    };
    const Case cases[] = {
        {"mwg.jpg", "public.jpeg", 1},
        {"canon-s40-exif.png", "public.png", 1},
        {"animated-bad-xmp.gif", "com.compuserve.gif", 23},
        {"animated.webp", "org.webmproject.webp", 6},
        {"canon-rebel-iptc.tif", "public.tiff", 1},
        {"nikon-d5300.heic", "public.heic", 1},
        {"pentax-k3ii.avif", "public.avif", 1},
        {"canon-m50.cr3", "com.canon.cr3-raw-image", 1},
        {"canon-rebel.crw", "com.canon.crw-raw-image", 1},
        {"minolta-a2.mrw", "com.konicaminolta.raw-image", 1},
        {"panasonic-lx3.rw2", "com.panasonic.rw2-raw-image", 1},
        {"fuji-s5pro.raf", "com.fuji.raw-image", 1},
        {"nikon-d1.nef", "com.nikon.raw-image", 1},
        {"om-1.orf", "com.olympus.raw-image", 1},
        {"hostile-page-loop.tiff", "public.tiff", 1},
        {"README.md", "", 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.sample);
        const auto source = sourceOf(c.sample);
        ASSERT_TRUE(source);
        EXPECT_EQ(CGImageSourceGetType(*source), c.type);
        EXPECT_EQ(CGImageSourceGetCount(*source), c.count);
        EXPECT_FALSE(CGImageSourceCopyPropertiesAtIndex(*source, c.count));
    }
}

TEST(PropertiesTest, RefusesWhatCannotBeReadWithOneLineOfLog) {
    constexpr std::string_view samples[] = {"hostile-header.jpg", "hostile-recursion.tif", "hostile-png.png",
        "hostile-webp.webp", "hostile-raf.raf", "hostile-huge-box.heic", "hostile-negative-size-header.heif",
        "README.md"};
    for (const std::string_view sample : samples) {
        SCOPED_TRACE(sample);
        std::vector<std::string> lines;
        captureLog([&lines](std::string_view line) { lines.emplace_back(line); });
        EXPECT_FALSE(propertiesOf(sample));
        captureLog({});
        ASSERT_EQ(lines.size(), 1U);
        EXPECT_THAT(lines.front(), testing::HasSubstr(std::string(sample)));
    }
    EXPECT_FALSE(sourceOf("no-such-file.jpg"));
    EXPECT_FALSE(CGImageSourceCopyPropertiesAtIndex(*CGImageSourceCreateWithData(Data()), 0));
}

} // namespace
} // namespace exifcard

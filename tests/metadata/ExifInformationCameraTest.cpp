#include "metadata/Records.h"

#include <gtest/gtest.h>

namespace exifcard {
namespace {

struct StoredCase {
    Formatter formatter;
    std::string_view dictionary;
    std::string_view key;
    std::string_view whenAbsent; ///< "Not available" where the rule applies.
};

// Every row that shows a stored text, with the place it reads.
constexpr StoredCase kStored[] = {
    {&ExifInformation::Make, "{TIFF}", "Make", "(unset)"},
    {&ExifInformation::Model, "{TIFF}", "Model", "(unset)"},
    {&ExifInformation::Software, "{TIFF}", "Software", "(unset)"},
    {&ExifInformation::Artist, "{TIFF}", "Artist", "(unset)"},
    {&ExifInformation::Copyright, "{TIFF}", "Copyright", "(unset)"},
    {&ExifInformation::MakerNote, "{Exif}", "MakerNote", "(unset)"},
    {&ExifInformation::LensMake, "{Exif}", "LensMake", "Not available"},
    {&ExifInformation::LensModel, "{Exif}", "LensModel", "Not available"},
    {&ExifInformation::LensModel, "{ExifAux}", "LensModel", "Not available"},
    {&ExifInformation::LensSerialNumber, "{Exif}", "LensSerialNumber", "Not available"},
    {&ExifInformation::LensSerialNumber, "{ExifAux}", "LensSerialNumber", "Not available"},
    {&ExifInformation::CameraSerialNumber, "{Exif}", "BodySerialNumber", "Not available"},
    {&ExifInformation::CameraSerialNumber, "{ExifAux}", "SerialNumber", "Not available"},
    {&ExifInformation::shutterCount, "{ExifAux}", "ImageNumber", "Not available"},
    {&ExifInformation::UserComment, "{Exif}", "UserComment", "Not available"},
    {&ExifInformation::Headline, "{IPTC}", "Headline", "(unset)"},
    {&ExifInformation::Title, "{IPTC}", "ObjectName", "(unset)"},
    {&ExifInformation::Caption, "{IPTC}", "Caption/Abstract", "(unset)"},
    {&ExifInformation::Caption, "{TIFF}", "ImageDescription", "(unset)"},
    {&ExifInformation::CaptionAbstract, "{IPTC}", "Caption/Abstract", "(unset)"},
};

TEST(ExifInformationCameraTest, ShowsStoredTexts) {
    for (const StoredCase& c : kStored) {
        SCOPED_TRACE(testing::Message() << c.dictionary << c.key);
        const auto record = recordWith(c.dictionary, {{std::string(c.key), "as stored "}});
        EXPECT_EQ(textOf((*record.*c.formatter)()), "as stored ");
        EXPECT_EQ(textOf((*recordWith({}).*c.formatter)()), c.whenAbsent);
    }
}

TEST(ExifInformationCameraTest, FallsBackOnlyFromAnEmptyText) {
    const auto lensOf = [](const Value& exif, const Value& auxiliary) {
        return textOf(recordWith({{"{Exif}", Dictionary::make({{"LensModel", exif}, {"FNumber", 2}})},
                                     {"{ExifAux}", Dictionary::make({{"LensModel", auxiliary}})}})
                          ->LensModel());
    };
    EXPECT_EQ(lensOf("own", "auxiliary"), "own");
    EXPECT_EQ(lensOf("", "auxiliary"), "auxiliary");
    EXPECT_EQ(lensOf("", {}), "(unset)");
}

TEST(ExifInformationCameraTest, ShowsADeviceUnderTheNameItIsSoldUnder) {
    const auto record = recordWith(kCGImagePropertyTIFFDictionary, {{"Model", "iPad1,1"}});
    EXPECT_EQ(textOf(record->Model()), "iPad");
    EXPECT_EQ(record->cameraModel, "iPad");
}

TEST(ExifInformationCameraTest, WritesNumbersThatAreShownAsObjects) {
    const auto record = recordWith(kCGImagePropertyExifAuxDictionary, {{"ImageNumber", 8458}});
    EXPECT_EQ(textOf(record->shutterCount()), "8458");
    const auto version = recordWithExif(kCGImagePropertyExifFlashPixVersion, Array::make({1, 0}));
    EXPECT_EQ(textOf(version->FlashPixVersion()), "1.0");
    EXPECT_EQ(textOf(recordWith({})->FlashPixVersion()), "(null)");
}

TEST(ExifInformationCameraTest, NamesFileSources) {
    const auto textOfSource = [](int code) {
        return textOf(recordWithExif(kCGImagePropertyExifFileSource, code)->FileSource());
    };
    EXPECT_EQ(textOfSource(0), "Not available");
    EXPECT_EQ(textOfSource(1), "Film Scanner");
    EXPECT_EQ(textOfSource(3), "Digital Camera");
    EXPECT_EQ(textOfSource(4), "Not available");
}

TEST(ExifInformationCameraTest, TheStarsAreAlsoAPlainNumber) {
    const auto row = recordWith(kCGImagePropertyIPTCDictionary, {{"StarRating", 4}})->StarRating();
    EXPECT_EQ(textOf(row), "4");
    EXPECT_EQ(row.exifRAWValue, "4");
    EXPECT_EQ(recordWith({})->StarRating().exifRAWValue, "0");
}

TEST(ExifInformationCameraTest, JoinsKeywordsWithoutSpaces) {
    const auto record =
        recordWith(kCGImagePropertyIPTCDictionary, {{"Keywords", Array::make({"sea", "deep blue"})}});
    EXPECT_EQ(textOf(record->Keywords()), "sea,deep blue");
}

} // namespace
} // namespace exifcard

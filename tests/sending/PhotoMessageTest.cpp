#include "sending/PhotoMessage.h"

#include "metadata/ExifInformation.h"
#include "platform/foundation/Array.h"
#include "platform/foundation/Dictionary.h"

#include <gtest/gtest.h>

namespace exifcard {
namespace {

std::shared_ptr<ExifInformation> recordOfExif(const DictionaryPtr& exif) {
    return ExifInformation::exifInformationFromMetaDataDictionary(
        Dictionary::make({{"{Exif}", exif}, {"{TIFF}", Dictionary::make({{"Model", "Camera 6"}})}}));
}

std::shared_ptr<ExifInformation> recordOfPhoto() {
    return recordOfExif(Dictionary::make({{"FNumber", 1.8}, {"ExposureTime", 1.0 / 120},
        {"ISOSpeedRatings", Array::make({32})}, {"FocalLength", 4.9}}));
}

TEST(PhotoMessageTest, JoinsTheKnownPartsOfAPlaceWithoutSpaces) {
    struct Case {
        std::optional<std::string> subLocality;
        std::optional<std::string> locality;
        std::optional<std::string> country;
        std::string name;
    };
    const Case cases[] = {
        {"Old Town", "Springfield", "Freedonia", "Old Town,Springfield,Freedonia"},
        {std::nullopt, "Springfield", "Freedonia", "Springfield,Freedonia"},
        {"Old Town", std::nullopt, "Freedonia", "Old Town,Freedonia"},
        {std::nullopt, std::nullopt, "Freedonia", "Freedonia"},
        {"Old Town", "Springfield", std::nullopt, "Old Town,Springfield,"},
        {std::nullopt, std::nullopt, std::nullopt, ""},
        {"100%@", "%d", "%", "100%@,%d,%"},
    };
    for (const Case& c : cases) {
        CLPlacemark placemark;
        placemark.subLocality = c.subLocality;
        placemark.locality = c.locality;
        placemark.country = c.country;
        EXPECT_EQ(placeNameFromPlacemark(placemark), c.name);
    }
}

TEST(PhotoMessageTest, SetsTheShootingValuesApartByTheShapeOfThePhoto) {
    const std::string wide = "f/1.8        1/120 seconds        ISO 32        4mm";
    const std::string narrow = "f/1.8   1/120 seconds   ISO 32   4mm";
    EXPECT_EQ(captionOfPhoto(*recordOfPhoto(), {4032, 3024}), wide);
    EXPECT_EQ(captionOfPhoto(*recordOfPhoto(), {3025, 3024}), wide);
    EXPECT_EQ(captionOfPhoto(*recordOfPhoto(), {3024, 3024}), narrow);
    EXPECT_EQ(captionOfPhoto(*recordOfPhoto(), {3024, 4032}), narrow);
    EXPECT_EQ(captionOfPhoto(*recordOfPhoto(), {}), narrow);
}

TEST(PhotoMessageTest, ShowsMissingShootingValuesAsZero) {
    const auto record = ExifInformation::init();
    EXPECT_EQ(captionOfPhoto(*record, {1, 1}), "f/0.0   " + record->shutterSpeedString() + "   ISO 0   0mm");
}

TEST(PhotoMessageTest, SetsNoMoreTextsThanThereAre) {
    const auto record = recordOfPhoto();
    const MSMessage unnamed = messageOfPhoto(*record, nullptr, {});
    EXPECT_EQ(unnamed.layout.imageTitle, std::nullopt);
    EXPECT_EQ(unnamed.layout.subcaption, "Camera 6");
    EXPECT_EQ(unnamed.layout.imageSubtitle, std::nullopt);
    EXPECT_EQ(unnamed.layout.trailingCaption, std::nullopt);
    EXPECT_EQ(unnamed.layout.trailingSubcaption, std::nullopt);
    EXPECT_EQ(unnamed.url.absoluteString(), "https://exifcard.example/");
    record->locationName = "";
    EXPECT_EQ(messageOfPhoto(*record, nullptr, {}).layout.imageTitle, std::nullopt);
    record->locationName = "Springfield";
    EXPECT_EQ(messageOfPhoto(*record, nullptr, {}).layout.imageTitle, "Springfield");
}

} // namespace
} // namespace exifcard

#include "library/ExifManager.h"
#include "metadata/ExifInformation.h"
#include "platform/foundation/DateFormatter.h"
#include "platform/foundation/Dictionary.h"
#include "platform/foundation/Log.h"
#include "platform/uivalues/Bitmap.h"
#include "platform/uivalues/UIImage.h"
#include "support/TemporaryHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace exifcard {
namespace {

const std::string kData = EXIFCARD_TEST_DATA "/";

URL fileURL(const std::string& name) {
    return URL::fileURLWithPath(kData + name);
}

std::optional<CLLocation> locationOfGPS(const Value& gps) {
    return ExifManager::exifInformationWithMetadataDict(Dictionary::make({{"{GPS}", gps}}))->location;
}

TEST(ExifManagerReadingTest, TakesASignFromTheReferenceLettersAlone) {
    struct Case {
        Value latitudeReference;
        Value longitudeReference;
        CLLocationCoordinate2D coordinate;
    };
    const Case cases[] = {
        {"N", "E", {48.5, 2.25}},
        {"S", "W", {-48.5, -2.25}},
        {"s", "w", {-48.5, -2.25}},
        {"South", "West", {48.5, 2.25}},
        {"W", "S", {48.5, 2.25}},
        {Value(), 5, {48.5, 2.25}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.latitudeReference.description());
        const auto location = locationOfGPS(Dictionary::make({{"Latitude", 48.5}, {"Longitude", 2.25},
            {"LatitudeRef", c.latitudeReference}, {"LongitudeRef", c.longitudeReference}}));
        ASSERT_TRUE(location);
        EXPECT_EQ(location->coordinate, c.coordinate);
    }
}

TEST(ExifManagerReadingTest, TakesTheOtherNumbersOfAPlaceAsTheyStand) {
    const auto location = locationOfGPS(Dictionary::make({{"Latitude", "48.5"}, {"LatitudeRef", "N"},
        {"Altitude", 12.0}, {"AltitudeRef", 1}, {"ImgDirection", 213.5}, {"Track", 7.0}, {"Speed", 60.0},
        {"SpeedRef", "M"}, {"TimeStamp", "2020:01:02 03:04:05"}}));
    const CLLocation expected = {.coordinate = {48.5, 0},
        .altitude = 12,
        .horizontalAccuracy = 0,
        .verticalAccuracy = 0,
        .course = 213.5,
        .speed = 60,
        .timestamp = std::nullopt};
    EXPECT_EQ(location, expected);
}

TEST(ExifManagerReadingTest, TellsNoPlaceFromAnEmptyOne) {
    const auto empty = locationOfGPS(Dictionary::make());
    ASSERT_TRUE(empty);
    EXPECT_EQ(empty->coordinate, (CLLocationCoordinate2D{0, 0}));
    EXPECT_FALSE(locationOfGPS("48.5 2.25"));
    EXPECT_FALSE(locationOfGPS(Value()));
    EXPECT_FALSE(ExifManager::exifInformationWithMetadataDict(nullptr)->location);
}

TEST(ExifManagerReadingTest, ReadsPhotosOfCameras) {
    struct Case {
        const char* file;
        std::int64_t fileSize;
        CGSize dimensions;
        std::int64_t iso;
        CLLocationCoordinate2D coordinate;
        double altitude;
        CGSize thumbnail; // Upright, at most 512.
    };
    // The numbers are ExifTool's. The beach lies below the sea, as its altitude reference says.
    constexpr Case cases[] = {
        {"apple-iphone4s-lens.jpg", 22'493, {205, 102}, 50, {59.3325472222222, 18.0649416666667}, 29,
            {102, 205}},
        {"apple-iphonese-southeast.jpg", 23'209, {240, 180}, 25, {-34.0213583333333, 23.899375}, 2.809326425,
            {240, 180}},
        {"synthetic-southwest.jpg", 62'860, {900, 600}, 80, {-22.951916, -43.210487}, 812.4, {512, 341}},
        {"nikon-d5300.heic", 18'241, {300, 200}, 200, {51.1782805555556, -1.82663888888889}, 97, {300, 200}},
        {"canon-40d-northwest-rating5.jpg", 16'482, {100, 68}, 400, {12.54321, -54.1234}, 0, {100, 68}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.file);
        const auto record = ExifManager::exifinformationFromNSURL(fileURL(c.file));
        EXPECT_TRUE(record->exifInfoAvailable);
        EXPECT_FALSE(record->imageResultIsInCloud);
        EXPECT_EQ(record->imageFilePathURL, fileURL(c.file));
        EXPECT_EQ(record->fileSizeInBytes, c.fileSize);
        EXPECT_EQ(record->dimensions, c.dimensions);
        EXPECT_EQ(record->iSOSpeed.integerValue(), c.iso);
        ASSERT_TRUE(record->location);
        EXPECT_NEAR(record->location->coordinate.latitude, c.coordinate.latitude, 1e-6);
        EXPECT_NEAR(record->location->coordinate.longitude, c.coordinate.longitude, 1e-6);
        EXPECT_NEAR(record->location->altitude, c.altitude, 1e-6);
        ASSERT_TRUE(record->thumbNailImage);
        EXPECT_EQ(record->thumbNailImage->size(), c.thumbnail);
        EXPECT_TRUE(record->thumbNailImage->bitmap());
    }
}

TEST(ExifManagerReadingTest, ReadsTheSameFromDataFileAndPath) {
    for (const std::string name : {"apple-iphone4s-lens.jpg", "nikon-d5300.heic", "mwg.jpg", "README.md"}) {
        SCOPED_TRACE(name);
        const auto data = Data::mappedFile(kData + name);
        const auto fromFile = ExifManager::exifinformationFromNSURL(fileURL(name));
        const auto fromData = ExifManager::exifInformationFromNSData(data);
        const auto fromPath = ExifManager::exifInformationForImageFileAtPath(kData + name);
        EXPECT_EQ(Value(fromData->metaDataDictionary), Value(fromFile->metaDataDictionary));
        EXPECT_EQ(Value(fromPath->metaDataDictionary), Value(fromFile->metaDataDictionary));
        EXPECT_EQ(fromData->location, fromFile->location);
        EXPECT_EQ(fromData->fileSizeInBytes, fromFile->fileSizeInBytes);
        EXPECT_EQ(fromData->imageData, data);
        EXPECT_EQ(fromData->thumbNailImage == nullptr, fromFile->thumbNailImage == nullptr);
        EXPECT_TRUE(fromData->imageResultIsInCloud);
        // What is read by path lacks the place and the size.
        EXPECT_FALSE(fromPath->location);
        EXPECT_EQ(fromPath->fileSizeInBytes, 0);
        EXPECT_EQ(fromPath->imageFilePath, kData + name);
        EXPECT_EQ(fromPath->imageFilePathURL.absoluteString(), kData + name);
    }
}

TEST(ExifManagerReadingTest, MakesARecordWithoutMetadataOfWhatIsNoImage) {
    const TemporaryHome home;
    const std::string text = home.path() / "text.jpg";
    std::ofstream(text) << "no image";
    struct Case {
        URL url;
        std::int64_t fileSize;
    };
    const Case cases[] = {
        {URL::fileURLWithPath(text), 8},
        {URL::fileURLWithPath(home.path().string()), 0},
        {URL::fileURLWithPath(text + ".missing"), 0},
        {URL::withString("https://exifcard.example/photo.jpg"), 0},
        {URL(), 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.url.absoluteString());
        EXPECT_EQ(ExifManager::metadataFromImageURL(c.url), nullptr);
        const auto record = ExifManager::exifinformationFromNSURL(c.url);
        EXPECT_FALSE(record->exifORTiffInfoAvailable);
        EXPECT_FALSE(record->location);
        EXPECT_EQ(record->thumbNailImage, nullptr);
        EXPECT_EQ(record->fileSizeInBytes, c.fileSize);
        EXPECT_EQ(record->imageFilePathURL, c.url);
    }
    EXPECT_EQ(ExifManager::metadataFromImageSource(nullptr), nullptr);
    EXPECT_EQ(ExifManager::metadataFromImageData(std::nullopt), nullptr);
    EXPECT_EQ(ExifManager::exifInformationFromNSData(std::nullopt)->imageData, std::nullopt);
}

TEST(ExifManagerReadingTest, ReadsOfAPictureInMemoryWhatItsPixelsTell) {
    const auto image = UIImage::imageWithBitmap(std::make_shared<Bitmap>(Bitmap{.width = 3,
        .height = 2,
        .channels = 4,
        .pixels = std::vector<std::uint8_t>(24, 128),
        .iccProfile = {}}));
    const auto record = ExifManager::exifInformationFromImage(image);
    ASSERT_TRUE(record->metaDataDictionary);
    EXPECT_EQ(record->dimensions, (CGSize{3, 2}));
    EXPECT_EQ(record->metaDataDictionary->objectForKey("ColorModel"), Value("RGB"));
    EXPECT_EQ(record->metaDataDictionary->objectForKey("HasAlpha"), Value(true));
    EXPECT_FALSE(record->exifInfoAvailable);
    EXPECT_FALSE(record->imageResultIsInCloud);
    EXPECT_EQ(record->thumbNailImage, image);
    EXPECT_EQ(ExifManager::exifInformationFromImage(nullptr)->thumbNailImage, nullptr);
}

TEST(ExifManagerReadingTest, TellsItsStepsInTheDebugLog) {
    std::vector<std::string> lines;
    captureLog([&lines](std::string_view line) { lines.emplace_back(line); });
    ExifManager::exifinformationFromNSURL(fileURL("mwg.jpg"));
    captureLog({});
    EXPECT_THAT(lines, testing::ElementsAre("exifinformationFromNSURL " + fileURL("mwg.jpg").absoluteString(),
                           "ImageSource Count 1"));
}

TEST(ExifManagerReadingTest, ReadsDatesAsMetadataWritesThem) {
    const auto& formatter = ExifManager::sharedInstance().dateFormatter();
    EXPECT_EQ(formatter.dateFormat(), "yyyy:MM:dd HH:mm:ss");
    EXPECT_TRUE(formatter.dateFromString("2014:09:01 15:03:47"));
    EXPECT_FALSE(formatter.dateFromString("2014-09-01 15:03:47"));
}

} // namespace
} // namespace exifcard

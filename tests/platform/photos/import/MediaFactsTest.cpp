#include "platform/photos/import/AssetReading.h"
#include "platform/photos/import/PictureFacts.h"
#include "platform/photos/import/SidecarFacts.h"
#include "platform/photos/import/VideoFacts.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>

namespace exifcard {
namespace {

namespace fs = std::filesystem;

const std::string kData = EXIFCARD_TEST_DATA "/";

MediaFacts factsOf(const std::string& name, std::string_view asName = "IMG_1.JPG") {
    const auto file = Data::mappedFile(kData + name);
    return factsOfPicture(file.value_or(Data()), asName).value_or(MediaFacts());
}

class MediaFactsTest : public testing::Test {
protected:
    void SetUp() override {
        setenv("TZ", "UTC", 1);
        tzset();
    }
};

TEST_F(MediaFactsTest, ReadsWhatCamerasTell) {
    struct Case {
        std::string name; // Values as exiftool reads them.
        std::int64_t width;
        std::int64_t height;
        double created;
        CLLocationCoordinate2D place;
        std::uint64_t subtypes;
    };
    const Case cases[] = {
        {"canon-6d-elephants.jpg", 497, 331, 1385481235, {-33.45347, 25.764645}, 0},
        {"apple-iphone4s-lens.jpg", 102, 205, 1409583827.88, {59.3325472, 18.0649417}, 1}, // On its side.
        {"canon-40d-northwest-rating5.jpg", 100, 68, 1249981785.49, {12.54321, -54.1234}, 0},
        {"apple-iphone15pro-subsec-header.heic", 3024, 4032, 1761657622.164, {}, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const MediaFacts facts = factsOf(c.name);
        EXPECT_EQ(facts.pixelWidth, c.width);
        EXPECT_EQ(facts.pixelHeight, c.height);
        ASSERT_TRUE(facts.captureDate.has_value());
        EXPECT_NEAR(facts.captureDate->secondsSince1970, c.created, 1e-3);
        EXPECT_EQ(facts.location.has_value(), c.place.latitude != 0);
        if (facts.location) {
            EXPECT_NEAR(facts.location->coordinate.latitude, c.place.latitude, 1e-6);
            EXPECT_NEAR(facts.location->coordinate.longitude, c.place.longitude, 1e-6);
        }
        EXPECT_EQ(facts.mediaSubtypes, c.subtypes);
    }
    EXPECT_EQ(factsOf("canon-40d-northwest-rating5.jpg").rating, 5);
    EXPECT_EQ(factsOf("apple-iphone15pro-subsec-header.heic").contentIdentifier,
        "6F98E4E3-F5B9-42EE-A8B0-7B968B72C4F1");
    EXPECT_NEAR(factsOf("apple-iphonese-southeast.jpg").location->altitude, -2.8093, 1e-4); // Below the sea.
    EXPECT_TRUE(factsOf("animated.webp").isAnimated);
}

TEST_F(MediaFactsTest, KnowsAScreenshotByItsNameUnlessACameraTookIt) {
    EXPECT_EQ(factsOf("pixels/corners-grey.jpg", "Screenshot_2024.png").mediaSubtypes, 4U);
    EXPECT_EQ(factsOf("pixels/corners-grey.jpg", "IMG_1.png").mediaSubtypes, 0U);
    EXPECT_EQ(factsOf("canon-6d-elephants.jpg", "Screenshot.jpg").mediaSubtypes, 0U);
}

TEST_F(MediaFactsTest, ASidecarTellsOnlyWhatTheFileDoesNot) {
    const Data sidecar = Data::fromText(
        "<x:xmpmeta xmlns:x='adobe:ns:meta/'><rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>"
        "<rdf:Description xmlns:exif='http://ns.adobe.com/exif/1.0/' xmlns:xmp='http://ns.adobe.com/xap/1.0/'"
        " xmlns:dc='http://purl.org/dc/elements/1.1/' xmp:Rating='3'"
        " exif:DateTimeOriginal='2020-01-02T03:04:05+01:00'"
        " exif:GPSLatitude='48,51.504N' exif:GPSLongitude='2,17.67W'>"
        "<dc:title><rdf:Alt><rdf:li xml:lang='x-default'>Tower</rdf:li></rdf:Alt></dc:title>"
        "</rdf:Description></rdf:RDF></x:xmpmeta>");
    MediaFacts bare;
    addSidecar(bare, sidecar);
    EXPECT_EQ(bare.captureDate, Date{1577930645});
    ASSERT_TRUE(bare.location.has_value());
    EXPECT_NEAR(bare.location->coordinate.latitude, 48.8584, 1e-6);
    EXPECT_NEAR(bare.location->coordinate.longitude, -2.2945, 1e-6);
    EXPECT_EQ(bare.title, "Tower");
    EXPECT_EQ(bare.rating, 3);

    MediaFacts told = factsOf("canon-40d-northwest-rating5.jpg");
    const MediaFacts before = told;
    addSidecar(told, sidecar);
    EXPECT_EQ(told.captureDate, before.captureDate);
    EXPECT_EQ(told.location, before.location);
    EXPECT_EQ(told.rating, 5);
}

TEST_F(MediaFactsTest, EachFileThatCannotBeReadIsToldAndTheRestIsRead) {
    const TemporaryHome home;
    const std::string folder = home.path();
    fs::copy_file(kData + "canon-6d-elephants.jpg", folder + "/a.jpg");
    std::ofstream(folder + "/a.mov") << "no video";
    std::ofstream(folder + "/a.dng");
    FileGroup group;
    for (const char* const name : {"a.dng", "a.jpg", "a.mov"}) {
        group.files.push_back(
            {name, fileKindOfName(name), stampOfFile(folder + "/" + name).value_or(FileStamp())});
    }
    const ReadGroup read = readGroup(folder, group);
    ASSERT_EQ(read.assets.size(), 1U);
    EXPECT_EQ(read.assets[0].primary.file.name, "a.jpg");
    EXPECT_FALSE(read.assets[0].raw || read.assets[0].video);
    ASSERT_EQ(read.problems.size(), 2U);
    EXPECT_EQ(read.problems[0].path + " " + read.problems[0].cause, folder + "/a.dng is empty");
    EXPECT_EQ(
        read.problems[1].path + " " + read.problems[1].cause, folder + "/a.mov is no video, or is damaged");
}

} // namespace
} // namespace exifcard

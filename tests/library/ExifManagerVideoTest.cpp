#include "library/ExifManager.h"
#include "metadata/ExifInformation.h"
#include "platform/foundation/Dictionary.h"
#include "platform/foundation/Log.h"
#include "platform/uivalues/Bitmap.h"
#include "platform/uivalues/UIImage.h"
#include "platform/uivalues/UIScreen.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include <unistd.h>

namespace exifcard {
namespace {

const std::string kVideos = EXIFCARD_TEST_DATA "/videos/";

class ExifManagerVideoTest : public testing::Test {
protected:
    ExifManagerVideoTest() {
        setDebugLogTarget(LogTarget::StandardError);
        captureLog([this](std::string_view line) { lines.emplace_back(line); });
    }
    ~ExifManagerVideoTest() override {
        captureLog({});
        setDebugLogTarget(LogTarget::Nowhere);
        std::filesystem::remove(changedPath);
    }

    /// The movie with another text of the same length in place of its place.
    URL videoWithPlace(const std::string& place) {
        std::ifstream file(kVideos + "corners-turned-right.mov", std::ios::binary);
        std::string bytes((std::istreambuf_iterator<char>(file)), {});
        const std::string whole = "+48.8583+002.2945/";
        bytes.replace(
            bytes.find(whole), whole.size(), place + std::string(whole.size() - place.size(), '\0'));
        std::ofstream(changedPath, std::ios::binary) << bytes;
        return URL::fileURLWithPath(changedPath);
    }

    const std::string changedPath =
        (std::filesystem::temp_directory_path() / ("place" + std::to_string(::getpid()) + ".mov")).string();
    std::vector<std::string> lines;
};

TEST_F(ExifManagerVideoTest, TellsWhatAVideosMetadataHolds) {
    const auto url = URL::fileURLWithPath(kVideos + "synthetic-keys.mov");
    const auto record = ExifManager::exifInformationFromVideoURL(url);
    EXPECT_EQ(record->mediaType(), 2);
    EXPECT_FALSE(record->imageResultIsInCloud);
    EXPECT_EQ(record->imageFilePathURL, url);
    EXPECT_EQ(record->fileNameCached.load(), "synthetic-keys.mov");
    EXPECT_TRUE(record->exifInfoAvailable);
    EXPECT_TRUE(record->exifORTiffInfoAvailable);
    EXPECT_EQ(record->cameraModel, "iPhone 12 mini");
    EXPECT_EQ(
        *record->tifDic, Dictionary({{"Make", "Apple"}, {"Model", "iPhone 12 mini"}, {"Software", "15.4"}}));
    EXPECT_EQ(record->duration, 2);
    EXPECT_EQ(record->dimensions, (CGSize{320, 240}));
    EXPECT_EQ(record->framesPerSecondValue, 15);
    EXPECT_EQ(record->fileSizeInBytes, 53'938);
    ASSERT_TRUE(record->dateTaken); // Of the file, not the one in the metadata.
    EXPECT_GT(record->dateTaken->secondsSince1970, 1'700'000'000);
    ASSERT_TRUE(record->location);
    EXPECT_EQ(record->location->coordinate, (CLLocationCoordinate2D{-22.9519, -43.2105}));
    EXPECT_EQ(record->location->altitude, 0);
}

TEST_F(ExifManagerVideoTest, SplitsAPlaceByWidth) {
    struct Case {
        const char* text;
        std::optional<CLLocationCoordinate2D> coordinate;
    };
    const Case cases[] = {
        {"+48.8583", std::nullopt}, {"+48.8583+", {{48.8583, 0}}},
        {"+48.8583+002.2945/", {{48.8583, 2.2945}}}, {"-22.9519-043.2105x", {{-22.9519, -43.2105}}},
        {"+48.85830+02.29450", {{48.8583, 0}}}, // Intended: "0+02.2945" begins with another number.
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        const auto record = ExifManager::exifInformationFromVideoURL(videoWithPlace(c.text));
        ASSERT_EQ(record->location.has_value(), c.coordinate.has_value());
        if (c.coordinate) {
            EXPECT_EQ(record->location->coordinate, *c.coordinate);
        }
    }
}

TEST_F(ExifManagerVideoTest, TakesAnUprightFrameForThumbnail) {
    UIScreen::setMainScreen({{30, 32}, 2});
    const auto record =
        ExifManager::exifInformationFromVideoURL(URL::fileURLWithPath(kVideos + "corners-turned-right.mov"));
    UIScreen::setMainScreen(UIScreen());
    ASSERT_TRUE(record->thumbNailImage);
    EXPECT_EQ(record->thumbNailImage, record->cachedThumbNailImage);
    EXPECT_EQ(record->thumbNailImage->size(), (CGSize{24, 32}));
    EXPECT_TRUE(record->thumbNailImage->bitmap());
    EXPECT_EQ(record->dimensions, (CGSize{64, 48})); // As stored.
}

TEST_F(ExifManagerVideoTest, GivesARecordOfWhatHasNoFrame) {
    const std::pair<const char*, std::int64_t> cases[] = {
        {"hostile-mp4.mp4", 80}, {"sony-a7-xavc.mp4", 2745}, {"missing.mov", 0}};
    for (const auto& [name, size] : cases) {
        SCOPED_TRACE(name);
        lines.clear();
        const auto record = ExifManager::exifInformationFromVideoURL(URL::fileURLWithPath(kVideos + name));
        EXPECT_EQ(record->mediaType(), 2);
        EXPECT_FALSE(record->thumbNailImage);
        EXPECT_FALSE(record->exifInfoAvailable);
        EXPECT_EQ(record->fileSizeInBytes, size);
        EXPECT_EQ(std::ranges::count_if(lines,
                      [](const std::string& line) {
                          return line.starts_with("couldn't generate thumbnail, error:");
                      }),
            1);
    }
}

} // namespace
} // namespace exifcard

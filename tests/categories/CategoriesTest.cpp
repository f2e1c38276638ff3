#include "categories/MemoryManager.h"
#include "categories/NSData+URL.h"
#include "categories/PHAssetResource+Extension.h"
#include "categories/UIImage+Resize.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/Log.h"
#include "platform/imageio/Corners.h"
#include "platform/uivalues/UIScreen.h"
#include "support/TemporaryHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <mutex>
#include <string>
#include <vector>

namespace exifcard {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::StartsWith;

/// A temporary folder of its own, and what the log tells.
class CategoriesTest : public testing::Test {
protected:
    CategoriesTest() {
        std::filesystem::create_directories(folder);
        setenv("TMPDIR", folder.c_str(), 1);
        setDebugLogTarget(LogTarget::StandardError);
        captureLog([this](std::string_view line) {
            const std::lock_guard lock(_mutex);
            _lines.emplace_back(line);
        });
    }
    ~CategoriesTest() override {
        captureLog({});
        setDebugLogTarget(LogTarget::Nowhere);
        UIScreen::setMainScreen(UIScreen());
        unsetenv("TMPDIR");
    }

    std::vector<std::string> lines() const {
        const std::lock_guard lock(_mutex);
        return _lines;
    }
    static std::shared_ptr<UIImage> corners(int width, int height) {
        return UIImage::imageWithBitmap(std::make_shared<const Bitmap>(cornersBitmap(width, height)));
    }
    std::size_t filesInFolder() const {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
    }

    TemporaryHome home;
    const std::filesystem::path folder = home.path() / "temporary";

private:
    mutable std::mutex _mutex;
    std::vector<std::string> _lines; // Guarded by _mutex.
};

TEST_F(CategoriesTest, RelabelsPixelsWithoutTurningThem) {
    const auto stored = corners(64, 48);
    const auto turned =
        std::make_shared<UIImage>(stored->pixelSource(), 64, 48, UIImageOrientation::Right, 2);
    const auto relabelled = rotateUIImage(turned, UIImageOrientation::Down);
    ASSERT_TRUE(relabelled);
    EXPECT_EQ(relabelled->orientation(), UIImageOrientation::Up);
    EXPECT_EQ(relabelled->size(), (CGSize{64, 48}));
    EXPECT_EQ(relabelled->scale(), 1);
    EXPECT_EQ(relabelled->pixelSource(), stored->pixelSource());
    EXPECT_THAT(lines(), ElementsAre("Degree Of rotation -270.000000"));
    EXPECT_FALSE(rotateUIImage(nullptr, UIImageOrientation::Up));
}

TEST_F(CategoriesTest, TurnsByAnyAngle) {
    struct Case {
        float degrees;
        const char* corners; ///< Of a square.
    };
    const Case cases[] = {{0, "RGBW"}, {90, "BRWG"}, {-90, "GWRB"}, {180, "WBGR"}, {450, "BRWG"}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.degrees);
        const auto turned = rotateImage(corners(64, 64), c.degrees);
        ASSERT_TRUE(turned);
        EXPECT_EQ(turned->size(), (CGSize{64, 64}));
        EXPECT_EQ(cornersOf(*turned->bitmap()), c.corners);
    }
    const auto tilted = rotateImage(corners(64, 64), 45);
    ASSERT_TRUE(tilted);
    EXPECT_EQ(cornersOf(*tilted->bitmap()), "...."); // The corners of the canvas stay empty.
    EXPECT_EQ(colorAt(*tilted->bitmap(), 32, 8), 'R');
    EXPECT_EQ(colorAt(*tilted->bitmap(), 56, 32), 'G');
    const auto wide = rotateImage(corners(64, 32), 0); // Begins half its own height above the middle.
    ASSERT_TRUE(wide);
    EXPECT_EQ(wide->size(), (CGSize{64, 64}));
    EXPECT_EQ(colorAt(*wide->bitmap(), 8, 8), '.');
    EXPECT_EQ(colorAt(*wide->bitmap(), 8, 20), 'R');
    EXPECT_EQ(colorAt(*wide->bitmap(), 8, 60), 'B');
}

TEST_F(CategoriesTest, RoundsCornersAtTheScalesScreen) {
    UIScreen::setMainScreen({{390, 844}, 2});
    const auto rounded = imageWithRoundedCornersRadius(corners(40, 30), 10);
    ASSERT_TRUE(rounded);
    EXPECT_EQ(rounded->size(), (CGSize{40, 30}));
    EXPECT_EQ(rounded->scale(), 2);
    const auto bitmap = rounded->bitmap();
    ASSERT_EQ(bitmap->width, 80);
    // On the diagonal of a corner of radius 20 the edge lies 20 - 20/√2 = 5.9 pixels in.
    EXPECT_EQ(colorAt(*bitmap, 4, 4), '.');
    EXPECT_EQ(colorAt(*bitmap, 7, 7), 'R');
    EXPECT_EQ(colorAt(*bitmap, 75, 55), '.');
    EXPECT_EQ(colorAt(*bitmap, 21, 0), 'R');
    EXPECT_EQ(colorAt(*bitmap, 0, 39), 'B');
    const auto circle = imageWithRoundedCornersRadius(corners(30, 30), 1000);
    EXPECT_EQ(colorAt(*circle->bitmap(), 30, 0), 'G'); // The radius is at most half the side.
}

TEST_F(CategoriesTest, DecodesSmallPicturesAtOnceAndLargeOnesLater) {
    UIScreen::setMainScreen({{390, 844}, 2});
    const auto small = imageFromRAWData(cornersFile("corners-p3.jpg"));
    ASSERT_TRUE(small);
    EXPECT_EQ(small->scale(), 2);
    EXPECT_EQ(small->size(), (CGSize{32, 24}));
    EXPECT_EQ(small->bitmap(), small->bitmap()); // Decoded once.
    const auto turned = imageFromRAWData(cornersFile("corners-thumbnail.jpg"));
    ASSERT_TRUE(turned);
    EXPECT_EQ(turned->orientation(), UIImageOrientation::Right);
    const auto deep = imageFromRAWData(cornersFile("corners-16bit-alpha.png"));
    ASSERT_TRUE(deep);
    EXPECT_NE(deep->bitmap(), deep->bitmap()); // Left alone, and decoded each time.
    const auto animated = imageFromRAWData(cornersFile("corners-animated.gif"));
    ASSERT_TRUE(animated);
    EXPECT_NE(animated->bitmap(), animated->bitmap());
    EXPECT_FALSE(imageFromRAWData(std::nullopt));
    EXPECT_FALSE(imageFromRAWData(Data()));
    EXPECT_FALSE(imageFromRAWData(Data::fromText("no picture")));
    EXPECT_FALSE(imageFromDNGImageNSData(cornersFile("corners.jpg")));
}

TEST_F(CategoriesTest, WritesTemporaryFilesBesideAFolderOfTheirName) {
    const auto bytes = cornersFile("corners.jpg");
    const auto url = temporaryURLForImageNSData(bytes, "IMG_1.jpg");
    ASSERT_TRUE(url);
    EXPECT_EQ(url->path(), (folder / "IMG_1.jpg").string());
    EXPECT_EQ(Data::mappedFile(url->path()), bytes);
    EXPECT_TRUE(std::filesystem::is_directory(folder / "IMG_1"));
    EXPECT_THAT(
        lines(), ElementsAre("FOLDER " + (folder / "IMG_1").string(), "FOLDER " + url->absoluteString()));
    deleteTemporaryFileAtURL(*url);
    EXPECT_TRUE(std::filesystem::exists(url->path()));
    EXPECT_EQ(temporaryURLForImageNSData(bytes)->path(), (folder / "tempImage.").string());
    EXPECT_EQ(
        temporaryURLForImageNSData(bytes, "../../outside.jpg")->path(), (folder / "outside.jpg").string());
    EXPECT_FALSE(temporaryURLForImageNSData(std::nullopt));
}

TEST_F(CategoriesTest, TellsWhyATemporaryFileIsNotWritten) {
    std::filesystem::create_directories(folder / "taken.jpg");
    EXPECT_FALSE(temporaryURLForImageNSData(cornersFile("corners.jpg"), "taken.jpg"));
    EXPECT_THAT(lines(), Contains(StartsWith("ERROR ")));
    EXPECT_THAT(lines(), Contains(StartsWith("Error ")));
    setenv("TMPDIR", (folder / "missing").c_str(), 1);
    EXPECT_FALSE(temporaryURLForImageNSData(cornersFile("corners.jpg"), "a.jpg"));
    EXPECT_EQ(lines().back(), "Else " + (folder / "missing/a").string());
}

TEST_F(CategoriesTest, HandsALargeImageOverOnTheMainQueueAlone) {
    const auto complete = [](const std::optional<Data>& data) {
        std::shared_ptr<UIImage> image;
        DispatchSemaphore isDone(0);
        imageWithVeryLargeNSData(data, [&](const std::shared_ptr<UIImage>& result) {
            image = result;
            isDone.signal();
        });
        isDone.wait();
        return image;
    };
    EXPECT_FALSE(complete(cornersFile("corners.jpg"))); // The main queue has not run.
    EXPECT_TRUE(std::filesystem::exists(folder / "largeImage.temp.jpg"));
    EXPECT_TRUE(std::filesystem::is_directory(folder / "largeImage"));
    EXPECT_THAT(lines(), Contains(StartsWith("imageFetchCompletionHandler ")));
    EXPECT_THAT(lines(), Contains(StartsWith("Image Path " + (folder / "largeImage.temp.jpg").string())));
    EXPECT_THAT(lines(), Contains("ERROR (null)"));
    MainRunLoop::drain();
    const auto fileCount = filesInFolder();
    EXPECT_FALSE(complete(std::nullopt));
    EXPECT_EQ(filesInFolder(), fileCount);
}

TEST_F(CategoriesTest, CountsMemoryIn32Bits) {
    struct Case {
        MemoryPages pages;
        std::uint32_t used, free, total;
    };
    const Case cases[] = {
        {{.active = 256, .inactive = 256, .wired = 512, .free = 256}, 4, 1, 5},
        {{.active = 0x80000, .inactive = 0, .wired = 0, .free = 0x80000}, 2048, 2048, 0},
        {{.active = 0x100000, .inactive = 256, .wired = 0, .free = 0}, 1, 0, 1},
    };
    for (const Case& c : cases) {
        const auto report = MemoryManager::reportOf(c.pages, 4096);
        EXPECT_EQ(report.used, c.used);
        EXPECT_EQ(report.free, c.free);
        EXPECT_EQ(report.total, c.total);
    }
    MemoryManager::report_memory();
    EXPECT_THAT(lines(), ElementsAre(testing::MatchesRegex("used: [0-9]+ free: [0-9]+ total: [0-9]+")));
}

TEST_F(CategoriesTest, FindsNoResourceOfNoAsset) {
    EXPECT_FALSE(assetResourcesForAsset(nullptr, PHAssetResourceType::Photo));
}

} // namespace
} // namespace exifcard

#include "categories/UIImage+Resize.h"
#include "platform/imageio/Corners.h"
#include "platform/imageio/ImageDrawing.h"
#include "platform/uivalues/UIScreen.h"

#include <gtest/gtest.h>

#include <utility>

namespace exifcard {
namespace {

class ImageResizeTest : public testing::Test {
protected:
    void TearDown() override { UIScreen::setMainScreen(UIScreen()); }

    static void setScreenScale(double scale) { UIScreen::setMainScreen({{390, 844}, scale}); }
    /// The pixels behind it are fewer: the rules ask only for its size.
    static std::shared_ptr<UIImage> image(int width, int height) {
        const auto pixels =
            UIImage::imageWithBitmap(std::make_shared<const Bitmap>(cornersBitmap()))->pixelSource();
        return std::make_shared<UIImage>(pixels, width, height);
    }
};

TEST_F(ImageResizeTest, FitsIntoThePixelsOfTheScreen) {
    struct Case {
        CGSize image;
        CGSize limits;
        double screenScale = 1;
        CGSize result;
    };
    const Case cases[] = {
        {{4000, 3000}, {100, 100}, 2, {200, 150}},
        {{400, 100}, {100, 100}, 3, {300, 75}},
        {{100, 400}, {100, 100}, 1, {25, 100}},
        {{100, 300}, {100, 100}, 2, {67, 200}}, // Rounded up to whole pixels.
        {{200, 200}, {100, 100}, 2, {200, 200}},
        {{100, 200}, {100, 100}, 2, {100, 200}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.image.width << " x " << c.image.height);
        setScreenScale(c.screenScale);
        const auto original = image(static_cast<int>(c.image.width), static_cast<int>(c.image.height));
        const auto fitted = imageWithImageScaledToFitToSize(original, c.limits);
        ASSERT_TRUE(fitted);
        EXPECT_NE(fitted, original);
        EXPECT_EQ(fitted->size(), c.result);
        EXPECT_EQ(fitted->scale(), 1);
        EXPECT_EQ(cornersOf(*fitted->bitmap()), "RGBW");
    }
}

TEST_F(ImageResizeTest, LeavesWhatIsSmallerBothWays) {
    setScreenScale(2);
    const auto small = image(100, 100);
    EXPECT_EQ(imageWithImageScaledToFitToSize(small, {200, 200}), small);
    EXPECT_EQ(imageWithImageScaledToFillToSize(small, {101, 101}), small);
    EXPECT_NE(imageWithImageScaledToFillToSize(small, {101, 100}), small);
}

TEST_F(ImageResizeTest, FillsWithTheMiddleWhateverTheScreen) {
    setScreenScale(3);
    const auto wide = imageWithImageScaledToFillToSize(image(400, 200), {100, 100});
    ASSERT_TRUE(wide);
    EXPECT_EQ(wide->size(), (CGSize{100, 100}));
    EXPECT_EQ(colorAt(*wide->bitmap(), 48, 20), 'R'); // The edge between red and green is in the middle.
    EXPECT_EQ(colorAt(*wide->bitmap(), 51, 20), 'G');
    const auto tall = imageWithImageScaledToFillToSize(image(200, 400), {100, 100});
    ASSERT_TRUE(tall);
    EXPECT_EQ(colorAt(*tall->bitmap(), 20, 48), 'R');
    EXPECT_EQ(colorAt(*tall->bitmap(), 20, 51), 'B');
}

TEST_F(ImageResizeTest, TellsTheAngleOfAnOrientation) {
    const std::pair<UIImageOrientation, float> cases[] = {{UIImageOrientation::Up, 0.0F},
        {UIImageOrientation::Down, 180.0F}, {UIImageOrientation::Left, 90.0F},
        {UIImageOrientation::Right, -90.0F}, {UIImageOrientation::UpMirrored, 0.0F},
        {UIImageOrientation::RightMirrored, 0.0F}};
    for (const auto& [orientation, degrees] : cases) {
        EXPECT_EQ(degreeOfOrientation(orientation), degrees) << static_cast<int>(orientation);
    }
}

TEST_F(ImageResizeTest, MakesThumbnailsWithoutEnlarging) {
    const auto thumbnailOf = [](const Data& file) {
        return thumbNailImageFromImageSource(CGImageSourceCreateWithData(file));
    };
    const auto small = thumbnailOf(cornersFile("corners.jpg"));
    ASSERT_TRUE(small);
    EXPECT_EQ(small->size(), (CGSize{64, 48}));
    const auto wide = UIImage::imageWithBitmap(std::make_shared<const Bitmap>(cornersBitmap(1000, 500)));
    const UIImage turned(wide->pixelSource(), 1000, 500, UIImageOrientation::Right);
    const auto thumbnail = thumbnailOf(UIImageJPEGRepresentation(turned, 0.5));
    ASSERT_TRUE(thumbnail);
    EXPECT_EQ(thumbnail->size(), (CGSize{256, 512}));
    EXPECT_EQ(cornersOf(*thumbnail->bitmap()), "BRWG");
    EXPECT_FALSE(thumbnailOf(Data()));
    EXPECT_FALSE(thumbNailImageFromImageSource(nullptr));
}

TEST_F(ImageResizeTest, AnswersNothingForNoImage) {
    EXPECT_FALSE(imageWithImageScaledToFitToSize(nullptr, {10, 10}));
    EXPECT_FALSE(imageWithImageScaledToFillToSize(nullptr, {10, 10}));
    EXPECT_FALSE(imageWithImageScaledToSizeInRect(nullptr, {10, 10}, {}));
    EXPECT_FALSE(imageWithImageScaledToFitToSize(image(100, 100), {0, 0}));
}

} // namespace
} // namespace exifcard

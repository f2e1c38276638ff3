#include "platform/imageio/ImageDrawing.h"

#include "platform/imageio/CGImageSource.h"
#include "platform/imageio/Corners.h"
#include "platform/imageio/ImageProperties.h"
#include "platform/imageio/PixelModules.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>

namespace exifcard {
namespace {

/// Stored pixels that nothing decodes.
class StoredPixels : public PixelSource {
public:
    explicit StoredPixels(Bitmap bitmap) : _bitmap(std::make_shared<const Bitmap>(std::move(bitmap))) {}
    std::shared_ptr<const Bitmap> decode(std::optional<CGSize> /*smallest*/) const override {
        return _bitmap;
    }

private:
    std::shared_ptr<const Bitmap> _bitmap;
};

UIImage imageOf(const Bitmap& bitmap, int exifOrientation = 1) {
    return {std::make_shared<StoredPixels>(bitmap), bitmap.width, bitmap.height,
        imageOrientationFromExif(exifOrientation)};
}

Bitmap pixelsOf(const std::shared_ptr<UIImage>& image) {
    const auto bitmap = image ? image->bitmap() : nullptr;
    return bitmap ? *bitmap : Bitmap();
}

// How each EXIF code shows the stored corners "RGBW".
constexpr std::pair<int, const char*> kUprightCorners[] = {
    {1, "RGBW"}, {2, "GRWB"}, {3, "WBGR"}, {4, "BWRG"}, {5, "RBGW"}, {6, "BRWG"}, {7, "WGBR"}, {8, "GWRB"}};

TEST(ImageDrawingTest, DrawsEveryOrientationUprightAtEverySize) {
    for (const auto& [orientation, corners] : kUprightCorners) {
        SCOPED_TRACE(orientation);
        const UIImage image = imageOf(cornersBitmap(), orientation);
        const CGSize size = image.size();
        EXPECT_EQ(size.width, orientation >= 5 ? 48 : 64);
        for (const double scale : {0.25, 1.0, 1.7}) {
            const auto drawn = drawnImage(image, size, {{}, size}, scale);
            ASSERT_TRUE(drawn);
            EXPECT_EQ(cornersOf(pixelsOf(drawn)), corners);
            EXPECT_EQ(drawn->orientation(), UIImageOrientation::Up);
            EXPECT_EQ(drawn->scale(), scale);
        }
    }
}

TEST(ImageDrawingTest, DrawsThePartThatTheCanvasShows) {
    for (const auto& [orientation, corners] : kUprightCorners) {
        SCOPED_TRACE(orientation);
        const UIImage image = imageOf(cornersBitmap(), orientation);
        const CGSize size = image.size();
        const std::string whole = corners;
        // The right half alone, at the same size and twice as large.
        for (const double scale : {1.0, 2.0}) {
            const auto right =
                drawnImage(image, {size.width / 2, size.height}, {{-size.width / 2, 0}, size}, scale);
            EXPECT_EQ(cornersOf(pixelsOf(right)), std::string({whole[1], whole[1], whole[3], whole[3]}));
        }
    }
}

TEST(ImageDrawingTest, LeavesTheRestOfTheCanvasTransparent) {
    const auto drawn = drawnImage(imageOf(cornersBitmap()), {80, 80}, {{40, 40}, {40, 40}}, 1);
    const Bitmap pixels = pixelsOf(drawn);
    ASSERT_EQ(pixels.channels, 4);
    EXPECT_EQ(cornersOf(pixels), "...W");
    EXPECT_EQ(colorAt(pixels, 40, 40), 'R');
    EXPECT_EQ(colorAt(pixels, 39, 40), '.');
    EXPECT_EQ(cornersOf(pixelsOf(drawnImage(imageOf(cornersBitmap()), {8, 8}, {{9, 9}, {5, 5}}, 1))), "....");
}

TEST(ImageDrawingTest, RoundsTheCanvasUpToWholePixels) {
    const auto widthOf = [](double points, double scale) {
        return pixelsOf(drawnImage(imageOf(cornersBitmap()), {points, 10}, {{}, {points, 10}}, scale)).width;
    };
    EXPECT_EQ(widthOf(66.67, 2), 134);
    EXPECT_EQ(widthOf(4032 * (2700.0 / 4032), 1), 2700);
    EXPECT_EQ(widthOf(0.2, 1), 1);
    EXPECT_EQ(widthOf(1e-5, 1), 1); // A line of a very long picture.
    // The edges of the picture go along: no half-transparent border.
    EXPECT_EQ(pixelsOf(drawnImage(imageOf(cornersBitmap()), {66.67, 50}, {{}, {66.67, 50}}, 1)).channels, 3);
}

TEST(ImageDrawingTest, DrawsFarBeyondTheCanvasWithoutMemoryForIt) {
    const UIImage image = imageOf(cornersBitmap());
    const auto drawn = drawnImage(image, {30, 30}, {{-1e9, -1e9}, {4e9, 4e9}}, 3);
    EXPECT_EQ(cornersOf(pixelsOf(drawn)), "RRRR");
}

TEST(ImageDrawingTest, RefusesACanvasWithoutAreaOrOutOfReason) {
    const UIImage image = imageOf(cornersBitmap());
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    const std::pair<CGSize, double> cases[] = {
        {{0, 10}, 1}, {{10, -1}, 1}, {{10, 10}, 0}, {{kNaN, 10}, 1}, {{kInfinity, 10}, 1}, {{1e6, 1e6}, 1}};
    for (const auto& [canvas, scale] : cases) {
        SCOPED_TRACE(canvas.width);
        EXPECT_FALSE(drawnImage(image, canvas, {{}, {10, 10}}, scale));
    }
    EXPECT_EQ(cornersOf(pixelsOf(drawnImage(image, {10, 10}, {{kNaN, 0}, {10, 10}}, 1))), "....");
}

TEST(ImageDrawingTest, AnImageOfBytesKnowsItsSizeAndDecodesWhenDrawn) {
    const auto image = imageWithData(cornersFile("corners-p3.jpg"));
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), (CGSize{64, 48}));
    EXPECT_EQ(image->orientation(), UIImageOrientation::Up);
    const Bitmap drawn = pixelsOf(drawnImage(*image, {20, 15}, {{}, {20, 15}}, 1));
    EXPECT_EQ(drawn.width, 20);
    EXPECT_EQ(cornersOf(drawn), "RGBW");
    EXPECT_FALSE(drawn.iccProfile.empty());
    EXPECT_FALSE(imageWithData(Data()));
    EXPECT_FALSE(imageWithData(Data::fromText("no picture")));
}

DictionaryPtr propertiesOf(const Data& file) {
    return CGImageSourceCopyPropertiesAtIndex(*CGImageSourceCreateWithData(file), 0);
}

TEST(ImageDrawingTest, AJpegKeepsTheStoredPixelsAndTheOrientationAsATag) {
    for (const auto& [orientation, corners] : kUprightCorners) {
        SCOPED_TRACE(orientation);
        const Data jpeg = UIImageJPEGRepresentation(imageOf(cornersBitmap(), orientation), 0.9);
        const auto properties = propertiesOf(jpeg);
        ASSERT_TRUE(properties);
        EXPECT_EQ(properties->objectForKey(kCGImagePropertyOrientation).integerValue(),
            orientation == 1 ? 0 : orientation);
        const auto image = imageWithData(jpeg);
        ASSERT_TRUE(image);
        EXPECT_EQ(cornersOf(*image->bitmap()), "RGBW");
        EXPECT_EQ(cornersOf(pixelsOf(drawnImage(*image, image->size(), {{}, image->size()}, 1))), corners);
    }
}

TEST(ImageDrawingTest, AJpegHasTheProfileAndWhiteForWhatIsTransparent) {
    const Data original = cornersFile("corners-p3.jpg");
    const auto image = imageWithData(original);
    ASSERT_TRUE(image);
    const auto copy = imageWithData(UIImageJPEGRepresentation(*image, 1));
    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->bitmap()->iccProfile, image->bitmap()->iccProfile);

    const auto half = drawnImage(imageOf(cornersBitmap()), {64, 48}, {{32, 0}, {32, 48}}, 1);
    const auto shown = imageWithData(UIImageJPEGRepresentation(*half, 0.9));
    ASSERT_TRUE(shown);
    EXPECT_EQ(cornersOf(*shown->bitmap()), "WGWW");
}

TEST(ImageDrawingTest, AJpegGrowsWithItsQuality) {
    const UIImage image = imageOf(cornersBitmap());
    std::size_t previous = 0;
    for (const double quality : {0.0, 0.5, 1.0}) {
        const std::size_t size = UIImageJPEGRepresentation(image, quality).size();
        EXPECT_GT(size, previous);
        previous = size;
    }
    EXPECT_EQ(UIImageJPEGRepresentation(image, 7), UIImageJPEGRepresentation(image, 1));
    EXPECT_EQ(UIImageJPEGRepresentation(image, std::numeric_limits<double>::quiet_NaN()),
        UIImageJPEGRepresentation(image, 0));
}

TEST(ImageDrawingTest, APngIsUprightAndKeepsAlpha) {
    const auto canvas = drawnImage(imageOf(cornersBitmap()), {64, 48}, {{0, 0}, {32, 48}}, 1);
    ASSERT_TRUE(canvas);
    const UIImage turned(canvas->pixelSource(), 64, 48, UIImageOrientation::Right);
    const auto png = decodedBitmap(UIImagePNGRepresentation(turned).bytes(), "public.png", std::nullopt);
    ASSERT_TRUE(png);
    EXPECT_EQ(png->width, 48);
    EXPECT_EQ(cornersOf(*png), "BR..");
}

TEST(ImageDrawingTest, AnImageThatDoesNotDecodeIsDrawnAndEncodedAsNothing) {
    const Data whole = cornersFile("corners.jpg");
    std::string bytes(whole.text());
    const auto scan = bytes.find("\xFF\xDA");
    ASSERT_NE(scan, std::string::npos);
    const auto image = imageWithData(Data::fromText(bytes.substr(0, scan)));
    ASSERT_TRUE(image);
    EXPECT_FALSE(drawnImage(*image, {10, 10}, {{}, {10, 10}}, 1));
    EXPECT_TRUE(UIImageJPEGRepresentation(*image, 1).empty());
    EXPECT_TRUE(UIImagePNGRepresentation(*image).empty());
}

} // namespace
} // namespace exifcard

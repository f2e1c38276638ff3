#include "platform/coreimage/CIFilter.h"

#include "platform/imageio/CGImageThumbnail.h"
#include "platform/imageio/Corners.h"
#include "platform/imageio/ImageDrawing.h"
#include "platform/imageio/RawPixels.h"
#include "platform/uivalues/UIImage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace exifcard {
namespace {

// The mosaic's corners are "RGBW", those of the preview of 32 x 24 pixels "GRWB"; both are to be turned
// right.
const std::string kDeveloped = "BRWG";
const std::string kPreview = "WGBR";

Data rawFile(const std::string& name = "raw/corners-turned-right.dng") {
    return Data::mappedFile(EXIFCARD_TEST_DATA "/" + name).value_or(Data());
}

std::string drawnCorners(const UIImage& image, double longerSide) {
    const CGSize own = image.size();
    const double factor = longerSide / std::max(own.width, own.height);
    const CGSize size = {own.width * factor, own.height * factor};
    const auto drawn = drawnImage(image, size, {{}, size}, 1);
    return drawn ? cornersOf(*drawn->bitmap()) : "nothing";
}

TEST(CIFilterTest, TellsTheUprightSizeAndDevelopsWhenDrawn) {
    const auto filter = CIFilter::filterWithImageData(rawFile(), kAdobeRawImageType);
    ASSERT_TRUE(filter);
    const auto image = filter->outputImage();
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), (CGSize{96, 128}));
    EXPECT_EQ(image->orientation(), UIImageOrientation::Up);
    EXPECT_EQ(image->scale(), 1);
    EXPECT_EQ(cornersOf(*image->bitmap()), kDeveloped);
}

TEST(CIFilterTest, TakesThePreviewWhereItIsLargeEnough) {
    const auto filtered = CIFilter::filterWithImageData(rawFile(), "com.nikon.raw-image")->outputImage();
    const auto loaded = imageWithData(rawFile());
    ASSERT_TRUE(filtered && loaded);
    EXPECT_EQ(loaded->orientation(), UIImageOrientation::Right);
    for (const auto& image : {filtered, loaded}) {
        EXPECT_EQ(drawnCorners(*image, 16), kPreview);
        EXPECT_EQ(drawnCorners(*image, 32), kPreview);
        EXPECT_EQ(drawnCorners(*image, 33), kDeveloped); // At half the size.
        EXPECT_EQ(drawnCorners(*image, 65), kDeveloped);
    }
}

TEST(CIFilterTest, DevelopsHalfTheSizeWhereThatWillDo) {
    const auto stored = rawPixels(rawFile(), {128, 96});
    EXPECT_EQ(stored->decode(CGSize{64, 48})->width, 64);
    EXPECT_EQ(stored->decode(CGSize{65, 48})->width, 128);
    EXPECT_EQ(stored->decode(std::nullopt)->width, 128);
}

TEST(CIFilterTest, AnswersNothingForWhatIsNoRawPicture) {
    EXPECT_FALSE(CIFilter::filterWithImageData(rawFile(), "public.jpeg"));
    for (const char* const name : {"hostile-raf.raf", "pixels/corners.jpg", "missing"}) {
        SCOPED_TRACE(name);
        EXPECT_FALSE(CIFilter::filterWithImageData(rawFile(name), kAdobeRawImageType)->outputImage());
    }
}

TEST(CIFilterTest, DrawsNothingWithoutTheSensorsPixels) {
    // Each is a real camera's file without what it was made of.
    for (const char* const name :
        {"canon-m50.cr3", "panasonic-lx3.rw2", "minolta-a2.mrw", "canon-rebel.crw"}) {
        SCOPED_TRACE(name);
        const auto image = imageWithData(rawFile(name));
        ASSERT_TRUE(image);
        EXPECT_GT(image->size().width, 3000);
        EXPECT_EQ(drawnCorners(*image, 512), "nothing");
    }
}

TEST(CIFilterTest, StaysWithinTheFileWhereverItIsCutOrDamaged) {
    const Data whole = rawFile();
    for (std::size_t length = 1; length < whole.size(); length += 997) {
        const auto image = imageWithData(whole.slice(0, length));
        if (image) {
            static_cast<void>(drawnCorners(*image, 100));
        }
    }
    constexpr std::size_t kHead = 1400; // Directories and the preview's first bytes.
    for (std::size_t position = 4; position < kHead; position += 7) {
        std::vector<std::uint8_t> damaged(whole.bytes().begin(), whole.bytes().end());
        damaged[position] ^= 0xffU;
        const auto bitmap = rawPixels(Data::fromBytes(std::move(damaged)), {128, 96})->decode(CGSize{40, 30});
        if (bitmap) {
            EXPECT_EQ(bitmap->pixels.size(),
                std::size_t(bitmap->width) * std::size_t(bitmap->height) * std::size_t(bitmap->channels));
        }
    }
}

TEST(CGImageThumbnailTest, TakesAThumbnailFromTheFileWhereItMay) {
    const Data file = Data::mappedFile(EXIFCARD_TEST_DATA "/pixels/corners-thumbnail.jpg").value_or(Data());
    const auto source = CGImageSourceCreateWithData(file);
    const auto properties = CGImageSourceCopyPropertiesAtIndex(*source, 0);
    const auto corners = [&](const CGImageThumbnailOptions& options) {
        const auto thumbnail = CGImageSourceCreateThumbnail(*source, properties, options);
        return cornersOf(*thumbnail->bitmap());
    };
    // The thumbnail's own corners are "GRWB".
    EXPECT_EQ(corners({.maximumPixelSize = 32}), "GRWB");
    EXPECT_EQ(corners({.maximumPixelSize = 33}), "RGBW");
    EXPECT_EQ(corners({.maximumPixelSize = 32, .createFromImageAlways = true}), "RGBW");
    EXPECT_EQ(corners({.maximumPixelSize = 32, .createWithTransform = true}), "WGBR");
    EXPECT_FALSE(CGImageSourceCreateThumbnail(*source, nullptr, {}));
}

} // namespace
} // namespace exifcard

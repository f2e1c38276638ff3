#include "platform/uivalues/UIImage.h"

#include "platform/uivalues/Bitmap.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace exifcard {
namespace {

using Orientation = UIImageOrientation;

/// Remembers what it was asked for and decodes nothing.
class AskedSource : public PixelSource {
public:
    std::shared_ptr<const Bitmap> decode(std::optional<CGSize> smallest) const override {
        asked = smallest;
        return nullptr;
    }

    mutable std::optional<CGSize> asked = CGSize{-1, -1};
};

std::shared_ptr<const Bitmap> bitmapOfSize(int width, int height) {
    auto bitmap = std::make_shared<Bitmap>();
    bitmap->width = width;
    bitmap->height = height;
    bitmap->pixels.resize(static_cast<std::size_t>(width * height * 3));
    return bitmap;
}

TEST(UIImageTest, NamesTheTurnOfEachExifCodeAndBack) {
    struct Case {
        int exif;
        Orientation orientation;
        bool swapsSides;
    };
    const Case cases[] = {
        {1, Orientation::Up, false},
        {2, Orientation::UpMirrored, false},
        {3, Orientation::Down, false},
        {4, Orientation::DownMirrored, false},
        {5, Orientation::LeftMirrored, true},
        {6, Orientation::Right, true},
        {7, Orientation::RightMirrored, true},
        {8, Orientation::Left, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.exif);
        EXPECT_EQ(imageOrientationFromExif(c.exif), c.orientation);
        EXPECT_EQ(exifFromImageOrientation(c.orientation), c.exif);
        const UIImage image(std::make_shared<AskedSource>(), 300, 200, c.orientation, 2);
        EXPECT_EQ(image.size(), (c.swapsSides ? CGSize{100, 150} : CGSize{150, 100}));
        EXPECT_EQ(image.storedWidth(), 300);
    }
    for (const std::int64_t code : {std::int64_t(0), std::int64_t(9), std::int64_t(-1),
             (std::int64_t(1) << 32) + 6, std::numeric_limits<std::int64_t>::min()}) {
        SCOPED_TRACE(code);
        EXPECT_EQ(imageOrientationFromExif(code), Orientation::Up);
    }
}

TEST(UIImageTest, AsksItsSourceForTheSizeThatIsWanted) {
    const auto source = std::make_shared<AskedSource>();
    const UIImage image(source, 300, 200);
    EXPECT_EQ(source->asked, (CGSize{-1, -1})) << "nothing is decoded before it is wanted";
    EXPECT_EQ(image.bitmap(CGSize{30, 20}), nullptr);
    EXPECT_EQ(source->asked, (CGSize{30, 20}));
    static_cast<void>(image.bitmap());
    EXPECT_EQ(source->asked, std::nullopt);
    EXPECT_FALSE(source->isDecoded());
}

TEST(UIImageTest, HoldsPixelsWithoutCopyingThem) {
    const auto bitmap = bitmapOfSize(6, 4);
    const auto image = UIImage::imageWithBitmap(bitmap, 2);
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->size(), (CGSize{3, 2}));
    EXPECT_EQ(image->bitmap(CGSize{1, 1}), bitmap);
    EXPECT_TRUE(image->pixelSource()->isDecoded());
    EXPECT_EQ(UIImage::imageWithBitmap(nullptr), nullptr);
    EXPECT_EQ(UIImage::imageWithBitmap(bitmapOfSize(0, 4)), nullptr);
}

} // namespace
} // namespace exifcard

#include "platform/uivalues/RoundedCorners.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <numbers>

namespace exifcard {
namespace {

Bitmap filled(int width, int height, int channels, std::uint8_t value) {
    Bitmap bitmap;
    bitmap.width = width;
    bitmap.height = height;
    bitmap.channels = channels;
    bitmap.pixels.assign(static_cast<std::size_t>(width * height * channels), value);
    return bitmap;
}

int alphaAt(const Bitmap& bitmap, int x, int y) {
    return bitmap.pixels.at(static_cast<std::size_t>((y * bitmap.width + x) * 4 + 3));
}

/// The area that shows, in pixels.
double shownArea(const Bitmap& bitmap) {
    double area = 0;
    for (int y = 0; y < bitmap.height; ++y) {
        for (int x = 0; x < bitmap.width; ++x) {
            area += alphaAt(bitmap, x, y) / 255.0;
        }
    }
    return area;
}

TEST(RoundedCornersTest, TakesAwayWhatFourQuarterDiscsLeaveOfTheirSquares) {
    struct Case {
        int width;
        int height;
        double radius;
        double counted; // What of the radius counts.
    };
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const Case cases[] = {
        {60, 40, 0, 0},
        {60, 40, -5, 0},
        {60, 40, 8, 8},
        {60, 40, 20, 20},
        {60, 40, 21, 20}, // Half the shorter side at most.
        {40, 60, 1000, 20},
        {41, 41, kInfinity, 20.5},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.width << " x " << c.height << ", radius " << c.radius);
        const double expected = c.width * c.height - (4 - std::numbers::pi) * c.counted * c.counted;
        const double shown = shownArea(withRoundedCorners(filled(c.width, c.height, 3, 90), c.radius));
        EXPECT_NEAR(shown, expected, 2);
    }
}

TEST(RoundedCornersTest, IsTheSameAtEveryCornerAndSmoothAtTheEdge) {
    const Bitmap rounded = withRoundedCorners(filled(30, 20, 4, 255), 9.5);
    bool hasSmoothEdge = false;
    for (int y = 0; y < 20; ++y) {
        for (int x = 0; x < 30; ++x) {
            const int alpha = alphaAt(rounded, x, y);
            EXPECT_EQ(alpha, alphaAt(rounded, 29 - x, y));
            EXPECT_EQ(alpha, alphaAt(rounded, x, 19 - y));
            hasSmoothEdge = hasSmoothEdge || (alpha > 60 && alpha < 200);
        }
    }
    EXPECT_EQ(alphaAt(rounded, 0, 0), 0);
    EXPECT_EQ(alphaAt(rounded, 15, 0), 255);
    EXPECT_EQ(alphaAt(rounded, 0, 10), 255);
    EXPECT_TRUE(hasSmoothEdge);
}

TEST(RoundedCornersTest, KeepsTheColoursAndWhatWasTransparentBefore) {
    const Bitmap rounded = withRoundedCorners(filled(10, 10, 4, 100), 4);
    EXPECT_EQ(alphaAt(rounded, 5, 5), 100);
    EXPECT_EQ(alphaAt(rounded, 0, 0), 0);
    EXPECT_EQ(rounded.pixels[0], 100) << "only the opacity changes";
    EXPECT_EQ(withRoundedCorners(filled(10, 10, 1, 100), 4).channels, 4);
    EXPECT_TRUE(withRoundedCorners(Bitmap(), 4).isEmpty());
}

} // namespace
} // namespace exifcard

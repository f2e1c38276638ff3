#include "platform/uivalues/BitmapGeometry.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <string>
#include <string_view>

namespace exifcard {
namespace {

constexpr int kNoOrientations[] = {0, -1, 9, INT_MIN, INT_MAX};

/// Rows of letters as a bitmap; further channels hold the letter's neighbours in the alphabet.
Bitmap bitmapOf(const std::vector<std::string>& rows, int channels) {
    Bitmap bitmap;
    bitmap.width = static_cast<int>(rows.front().size());
    bitmap.height = static_cast<int>(rows.size());
    bitmap.channels = channels;
    for (const std::string& row : rows) {
        for (const char letter : row) {
            for (int channel = 0; channel < channels; ++channel) {
                bitmap.pixels.push_back(static_cast<std::uint8_t>(letter + channel));
            }
        }
    }
    return bitmap;
}

bool isEqual(const Bitmap& one, const Bitmap& other) {
    return one.width == other.width && one.height == other.height && one.channels == other.channels &&
           one.pixels == other.pixels && one.iccProfile == other.iccProfile;
}

/// No two pixels that are near each other look the same.
Bitmap patterned(int width, int height) {
    Bitmap bitmap;
    bitmap.width = width;
    bitmap.height = height;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            bitmap.pixels.push_back(static_cast<std::uint8_t>(x));
            bitmap.pixels.push_back(static_cast<std::uint8_t>(y));
            bitmap.pixels.push_back(static_cast<std::uint8_t>(x / 256 + y / 256));
        }
    }
    return bitmap;
}

TEST(BitmapGeometryTest, TurnsTheStoredPixelsAsEachCodeSays) {
    struct Case {
        int orientation;
        std::vector<std::string> upright;
    };
    // Stored as ABC / DEF; the code names the sides of the scene that the first row and column show.
    const Case cases[] = {
        {1, {"ABC", "DEF"}},
        {2, {"CBA", "FED"}},
        {3, {"FED", "CBA"}},
        {4, {"DEF", "ABC"}},
        {5, {"AD", "BE", "CF"}},
        {6, {"DA", "EB", "FC"}},
        {7, {"FC", "EB", "DA"}},
        {8, {"CF", "BE", "AD"}},
    };
    for (const Case& c : cases) {
        for (const int channels : {1, 3, 4}) {
            SCOPED_TRACE(testing::Message() << "code " << c.orientation << ", " << channels << " channels");
            const Bitmap turned = turnedBitmap(bitmapOf({"ABC", "DEF"}, channels), c.orientation);
            EXPECT_TRUE(isEqual(turned, bitmapOf(c.upright, channels)));
            EXPECT_EQ(isQuarterTurn(c.orientation), c.upright.size() == 3);
        }
    }
}

TEST(BitmapGeometryTest, TurnsNothingForACodeThatIsNone) {
    const Bitmap stored = bitmapOf({"ABC", "DEF"}, 3);
    for (const int orientation : kNoOrientations) {
        SCOPED_TRACE(orientation);
        EXPECT_TRUE(isEqual(turnedBitmap(stored, orientation), stored));
        EXPECT_FALSE(isQuarterTurn(orientation));
        EXPECT_TRUE(isEqual(turnedBitmap(stored, inverseOrientation(orientation)), stored));
    }
}

TEST(BitmapGeometryTest, AnInverseTurnGivesTheStoredPixelsBack) {
    struct Size {
        int width;
        int height;
    };
    for (const auto& [width, height] : {Size{1, 1}, {1, 70}, {70, 1}, {32, 33}, {65, 31}, {300, 3}}) {
        Bitmap stored = patterned(width, height);
        stored.iccProfile = {1, 2, 3};
        for (int orientation = 1; orientation <= 8; ++orientation) {
            SCOPED_TRACE(testing::Message() << width << " x " << height << ", code " << orientation);
            const Bitmap turned = turnedBitmap(stored, orientation);
            EXPECT_TRUE(isEqual(turnedBitmap(turned, inverseOrientation(orientation)), stored));
        }
    }
}

TEST(BitmapGeometryTest, APartOfTheUprightPictureIsWhereItsPixelsAreStored) {
    const Bitmap stored = patterned(8, 16);
    for (int orientation = 1; orientation <= 8; ++orientation) {
        SCOPED_TRACE(orientation);
        const Bitmap upright = turnedBitmap(stored, orientation);
        const double width = upright.width;
        const double height = upright.height;
        const CGRect part = storedPart({{1 / width, 2 / height}, {3 / width, 4 / height}}, orientation);
        const auto pixels = [](double fraction, int side) { return static_cast<int>(fraction * side); };
        const Bitmap cut = croppedBitmap(stored, pixels(part.origin.x, 8), pixels(part.origin.y, 16),
            pixels(part.size.width, 8), pixels(part.size.height, 16));
        EXPECT_TRUE(isEqual(turnedBitmap(cut, orientation), croppedBitmap(upright, 1, 2, 3, 4)));
    }
}

TEST(BitmapGeometryTest, CutsWholePixelsUpToTheEdges) {
    Bitmap bitmap = bitmapOf({"ABC", "DEF", "GHI"}, 3);
    bitmap.iccProfile = {7};
    Bitmap corner = bitmapOf({"EF", "HI"}, 3);
    corner.iccProfile = {7};
    EXPECT_TRUE(isEqual(croppedBitmap(bitmap, 1, 1, 2, 2), corner));
    EXPECT_TRUE(isEqual(croppedBitmap(bitmap, 0, 0, 3, 3), bitmap));
    EXPECT_TRUE(croppedBitmap(bitmap, 3, 3, 0, 0).isEmpty());
}

TEST(BitmapGeometryTest, ACanvasIsTransparentBesideThePictureWhateverItsChannels) {
    struct Case {
        int channels;
        std::string_view pixel; // Of an 'A' on the canvas.
        bool keepsProfile;
    };
    const Case cases[] = {
        {1, "AAA\xff", false}, // A profile for grey does not fit colours.
        {3, "ABC\xff", true},
        {4, "ABCD", true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.channels);
        Bitmap letter = bitmapOf({"A"}, c.channels);
        letter.iccProfile = {9};
        const Bitmap canvas = bitmapOnCanvas(letter, 2, 1, 3, 2);
        ASSERT_EQ(canvas.pixels.size(), std::size_t(3 * 2 * 4));
        const std::string pixels(canvas.pixels.begin(), canvas.pixels.end());
        EXPECT_EQ(pixels.substr(0, 20), std::string(20, '\0'));
        EXPECT_EQ(pixels.substr(20), c.pixel);
        EXPECT_EQ(!canvas.iccProfile.empty(), c.keepsProfile);
    }
}

} // namespace
} // namespace exifcard

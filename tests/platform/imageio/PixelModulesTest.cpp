#include "platform/imageio/PixelModules.h"

#include "platform/imageio/Corners.h"
#include "platform/imageio/EncodedPixels.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace exifcard {
namespace {

constexpr const char* kJpeg = "public.jpeg";
constexpr const char* kPng = "public.png";

TEST(PixelModulesTest, DecodesEveryKindOfPicture) {
    struct Case {
        std::string file;
        std::string type;
        int channels;
        std::string corners;
    };
    const Case cases[] = {
        {"corners.jpg", kJpeg, 3, "RGBW"},
        {"corners-p3.jpg", kJpeg, 3, "RGBW"},
        {"corners-grey.jpg", kJpeg, 1, "KWKW"},
        {"corners-cmyk.jpg", kJpeg, 3, "RGKW"}, // Printed blue is dark.
        {"corners-alpha.png", kPng, 4, "RGB."},
        {"corners-16bit-alpha.png", kPng, 4, "RGB."},
        {"corners-grey-alpha.png", kPng, 4, "KKW."},
        {"corners.tif", "public.tiff", 3, "RGBW"},
        {"corners-animated.gif", "com.compuserve.gif", 4, "RGBW"},
        {"corners-animated.webp", "org.webmproject.webp", 3, "RGBW"},
        {"corners.bmp", "com.microsoft.bmp", 3, "RGBW"},
        {"corners.heic", "public.heic", 3, "RGBW"},
        {"corners-turned-right.heic", "public.heic", 3, "BRWG"},
        {"corners-turned-and-mirrored.avif", "public.avif", 3, "RBGW"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.file);
        const Data file = cornersFile(c.file);
        const auto bitmap = decodedBitmap(file.bytes(), c.type, std::nullopt);
        ASSERT_TRUE(bitmap);
        EXPECT_EQ(bitmap->width * bitmap->height, 64 * 48);
        EXPECT_EQ(bitmap->channels, c.channels);
        EXPECT_EQ(cornersOf(*bitmap), c.corners);
        EXPECT_EQ(bitmap->iccProfile.empty(), c.file != "corners-p3.jpg");
    }
}

TEST(PixelModulesTest, GivesTheStoredPixelsOfATurnedHeif) {
    const std::pair<const char*, const char*> files[] = {{"corners.heic", "public.heic"},
        {"corners-turned-right.heic", "public.heic"}, {"corners-turned-and-mirrored.avif", "public.avif"}};
    for (const auto& [name, type] : files) {
        SCOPED_TRACE(name);
        const auto pixels = encodedPixels(cornersFile(name), type);
        const auto whole = pixels->decode(std::nullopt);
        const auto reduced = pixels->decode(CGSize{32, 24});
        ASSERT_TRUE(whole && reduced);
        EXPECT_EQ(whole->width, 64);
        EXPECT_EQ(reduced->width, 32);
        EXPECT_EQ(cornersOf(*whole), "RGBW");
        EXPECT_EQ(cornersOf(*reduced), "RGBW");
    }
}

TEST(PixelModulesTest, KeepsStraightAlphaOf8And16Bits) {
    for (const char* const name : {"corners-alpha.png", "corners-16bit-alpha.png"}) {
        SCOPED_TRACE(name);
        for (const auto wanted : {std::optional<PixelSize>(), std::optional(PixelSize{32, 24})}) {
            const auto bitmap = decodedBitmap(cornersFile(name).bytes(), kPng, wanted);
            ASSERT_TRUE(bitmap);
            const auto half = static_cast<std::size_t>(bitmap->width - 2) * 4; // In the green corner.
            EXPECT_NEAR(bitmap->pixels[half + 1], 255, 2);
            EXPECT_NEAR(bitmap->pixels[half + 3], 128, 1);
        }
    }
}

TEST(PixelModulesTest, DecodesToTheSizeThatIsWanted) {
    const std::pair<PixelSize, PixelSize> cases[] = {
        {{32, 24}, {32, 24}},
        {{16, 12}, {16, 12}},
        {{40, 30}, {40, 30}},
        {{41, 30}, {41, 30}}, // Its shape to within a pixel.
        {{20, 20}, {27, 20}},
        {{8, 1}, {8, 6}},
        {{64, 48}, {64, 48}},
        {{65, 10}, {64, 48}},
        {{1000, 1000}, {64, 48}},
    };
    const std::pair<const char*, const char*> files[] = {{"corners.jpg", kJpeg}, {"corners-grey.jpg", kJpeg},
        {"corners-cmyk.jpg", kJpeg}, {"corners-alpha.png", kPng}, {"corners.heic", "public.heic"}};
    for (const auto& [name, type] : files) {
        const Data file = cornersFile(name);
        const std::string corners =
            cornersOf(decodedBitmap(file.bytes(), type, std::nullopt).value_or(Bitmap()));
        for (const auto& [wanted, expected] : cases) {
            SCOPED_TRACE(testing::Message() << name << ' ' << wanted.width << " x " << wanted.height);
            const auto bitmap = decodedBitmap(file.bytes(), type, wanted);
            ASSERT_TRUE(bitmap);
            EXPECT_EQ(bitmap->width, expected.width);
            EXPECT_EQ(bitmap->height, expected.height);
            EXPECT_EQ(cornersOf(*bitmap), corners);
        }
    }
}

TEST(PixelModulesTest, ShowsWhatThereIsOfAJpegCutShort) {
    const Data whole = cornersFile("corners.jpg");
    const auto bitmap = decodedBitmap(whole.slice(0, whole.size() - 60).bytes(), kJpeg, std::nullopt);
    ASSERT_TRUE(bitmap);
    EXPECT_EQ(cornersOf(*bitmap).substr(0, 2), "RG");
    EXPECT_FALSE(decodedBitmap(whole.slice(0, 300).bytes(), kJpeg, std::nullopt));
}

TEST(PixelModulesTest, RefusesWhatItCannotDecode) {
    EXPECT_FALSE(decodedBitmap({}, kJpeg, std::nullopt));
    EXPECT_FALSE(
        decodedBitmap(Data::fromText("GIF89a and so on").bytes(), "com.compuserve.gif", std::nullopt));
    EXPECT_FALSE(decodedBitmap(cornersFile("corners.jpg").bytes(), kPng, std::nullopt));
    EXPECT_FALSE(decodedBitmap(cornersFile("corners.tif").bytes(), "com.nikon.raw-image", std::nullopt));
    EXPECT_FALSE(canDecode("com.nikon.raw-image"));
    EXPECT_FALSE(canDecode(""));
}

TEST(PixelModulesTest, RefusesDimensionsOutOfReason) {
    EXPECT_FALSE(decodedBitmap(cornersFile("huge-dimensions.png").bytes(), kPng, PixelSize{10, 10}));
    std::string jpeg(cornersFile("corners.jpg").text());
    const auto frame = jpeg.find("\xFF\xC0");
    ASSERT_NE(frame, std::string::npos);
    jpeg.replace(frame + 5, 4, "\xFF\xDC\xFF\xDC"); // 65,500 pixels high and wide.
    EXPECT_FALSE(decodedBitmap(Data::fromText(jpeg).bytes(), kJpeg, PixelSize{10, 10}));
}

TEST(PixelModulesTest, ScalesAPartOfABitmap) {
    const Bitmap corners = cornersBitmap();
    const auto grown = scaledBitmap(corners, {{32, 0}, {32, 48}}, {100, 300});
    ASSERT_TRUE(grown);
    EXPECT_EQ(cornersOf(*grown), "GGWW");
    const auto shrunk = scaledBitmap(corners, {{0.5, 0.5}, {63, 47}}, {8, 8});
    ASSERT_TRUE(shrunk);
    EXPECT_EQ(cornersOf(*shrunk), "RGBW");
    EXPECT_FALSE(scaledBitmap(corners, {{0, 0}, {64, 48}}, {100'000, 100'000}));
    EXPECT_FALSE(scaledBitmap(corners, {{0, 0}, {64, 48}}, {0, 1}));
}

TEST(PixelModulesTest, WhatIsTransparentHasNoSayInTheColoursAroundIt) {
    Bitmap bitmap;
    bitmap.width = 8;
    bitmap.height = 1;
    bitmap.channels = 4;
    for (int x = 0; x < bitmap.width; ++x) {
        const bool isSeen = x < 3;
        bitmap.pixels.insert(
            bitmap.pixels.end(), {std::uint8_t(isSeen ? 200 : 0), 0, std::uint8_t(isSeen ? 0 : 200),
                                     std::uint8_t(isSeen ? 255 : 0)});
    }
    const auto half = scaledBitmap(bitmap, {{0, 0}, {8, 1}}, {4, 1});
    ASSERT_TRUE(half);
    EXPECT_NEAR(half->pixels[4], 200, 2); // The second pixel is half red, half transparent.
    EXPECT_LT(half->pixels[6], 3);
    EXPECT_NEAR(half->pixels[7], 128, 24);
}

} // namespace
} // namespace exifcard

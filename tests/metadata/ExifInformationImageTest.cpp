#include "metadata/Records.h"
#include "platform/photos/PHAsset.h"

#include <gtest/gtest.h>

#include <limits>

namespace exifcard {
namespace {

struct SizeCase {
    double width;
    double height;
    std::string aspectRatio;
    std::string resolution;
};

const SizeCase kSizes[] = {
    {4032, 3024, "4/3", "12.2 MegaPixels"},
    {6000, 4000, "3/2", "24 MegaPixels"},
    {1920, 1080, "16/9", "2.1 MegaPixels"},
    {1700, 100, "17/1 (17.000000)", ".2 MegaPixels"},
    {2000, 1100, "20/11 (1.818182)", "2.3 MegaPixels"}, // In single precision they are a little over 2.2.
    {1000, 333, "1000/333 (3.003003)", ".4 MegaPixels"},
    {333, 1000, "333/1000 (0.333000)", ".4 MegaPixels"},
    {4000, 1, "4000/1 (4000.000000)", ".1 MegaPixels"},
    {9, 16, "9/16", ".1 MegaPixels"},
    {500, 0, "1/0", "0 MegaPixels"},
    {0, 500, "0/1", "0 MegaPixels"},
    {0, 0, "Not available", "0 MegaPixels"},
};

TEST(ExifInformationImageTest, TellsAspectRatioAndResolution) {
    const auto record = ExifInformation::init();
    for (const SizeCase& c : kSizes) {
        SCOPED_TRACE(testing::Message() << c.width << "x" << c.height);
        record->dimensions = {c.width, c.height};
        EXPECT_EQ(textOf(record->AspectRatioFraction()), c.aspectRatio);
        EXPECT_EQ(textOf(record->ResolutionInMegaPixel()), c.resolution);
    }
}

TEST(ExifInformationImageTest, TakesSidesThatAreNoNumbersOfPixels) {
    const auto record = ExifInformation::init();
    constexpr double kSides[] = {-1, std::numeric_limits<double>::infinity(),
        -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()};
    for (const double width : kSides) {
        for (const double height : kSides) {
            record->dimensions = {width, height};
            EXPECT_FALSE(textOf(record->AspectRatioFraction()).empty());
            EXPECT_FALSE(textOf(record->ResolutionInMegaPixel()).empty());
        }
    }
}

TEST(ExifInformationImageTest, NamesColourSpaces) {
    constexpr std::pair<int, const char*> kSpaces[] = {{1, "sRGB"}, {2, "Adobe RGB"},
        {65533, "Wide Gamut RGB"}, {65535, "ICC Profile"}, {0, "Uncalibrated"}, {3, "Uncalibrated"}};
    for (const auto& [code, text] : kSpaces) {
        EXPECT_EQ(textOf(recordWithExif(kCGImagePropertyExifColorSpace, code)->ColorSpace()), text);
    }
    EXPECT_EQ(textOf(recordWithExif(kCGImagePropertyExifFNumber, 8)->ColorSpace()), "Uncalibrated");
}

TEST(ExifInformationImageTest, ReadsTheTopLevelOfTheProperties) {
    const auto record = recordWith({{"ProfileName", "Display P3"}, {"ColorModel", "RGB"}, {"Depth", 8},
        {"DPIHeight", 72}, {"DPIWidth", 72.009}, {"Orientation", 6}});
    EXPECT_EQ(textOf(record->ColorProfile()), "Display P3");
    EXPECT_EQ(textOf(record->ColorModel()), "RGB");
    EXPECT_EQ(textOf(record->Depth()), "8");
    EXPECT_EQ(textOf(record->DPIHeight()), "72.000000");
    EXPECT_EQ(textOf(record->DPIWidth()), "72.009000");
    EXPECT_EQ(textOf(record->Orientation()), "6");

    const auto bare = recordWith({{"ProfileName", ""}});
    EXPECT_EQ(textOf(bare->ColorProfile()), "Unknown");
    EXPECT_EQ(textOf(bare->ColorModel()), "(unset)"); // Without EXIF too: no rule fills it.
    EXPECT_EQ(textOf(bare->Orientation()), "0");
}

TEST(ExifInformationImageTest, DropsTheFractionOfTheCompression) {
    const auto record = recordWithExif(kCGImagePropertyExifCompressedBitsPerPixel, 3.9);
    EXPECT_EQ(textOf(record->CompressedBitsPerPixel()), "3");
}

struct FileSizeCase {
    std::uint64_t mediaSubtypes;
    std::int64_t imageBytes;
    std::int64_t videoBytes;
    std::string text;
};

const FileSizeCase kFileSizes[] = {
    {0, 2'500'000, 0, "2.50 MB (2,500,000 bytes)"}, {0, 2'500'000, 2'000'000, "2.50 MB (2,500,000 bytes)"},
    {8, 3'000'000, 2'000'000, "3 MB & Video size 2 MB"}, {8, 3'000'000, 0, "3.00 MB (3,000,000 bytes)"},
    {8 | 2, 3'000'000, 2'000'000, "3.00 MB (3,000,000 bytes)"}, // Live and something else besides.
};

TEST(ExifInformationImageTest, TellsTheVideoSizeOfLivePhotosAlone) {
    const auto record = ExifInformation::init();
    for (const FileSizeCase& c : kFileSizes) {
        SCOPED_TRACE(testing::Message() << c.mediaSubtypes << ", " << c.videoBytes);
        record->phAsset = std::make_shared<PHAsset>(PHAsset{.mediaSubtypes = c.mediaSubtypes});
        record->fileSizeInBytes = c.imageBytes;
        record->liveVideoFileSizeInBytes = c.videoBytes;
        EXPECT_EQ(textOf(record->FileSize()), c.text);
    }
    record->phAsset = nullptr;
    EXPECT_EQ(textOf(record->FileSize()), "3.00 MB (3,000,000 bytes)");
}

TEST(ExifInformationImageTest, WritesDurationsAndFrameRates) {
    const auto record = ExifInformation::init();
    EXPECT_EQ(textOf(record->Duration()), "00:00:00");
    EXPECT_EQ(textOf(record->FramesPerSecond()), "0.0 FPS");
    record->duration = 3725.9;
    record->framesPerSecondValue = 29.97F;
    EXPECT_EQ(textOf(record->Duration()), "01:02:05");
    EXPECT_EQ(textOf(record->FramesPerSecond()), "30.0 FPS");
    record->duration = 360'000;
    EXPECT_EQ(textOf(record->Duration()), "100:00:00");
}

struct FilmCase {
    Value simulation;
    Value saturation;
    std::string text;
};

const FilmCase kFilms[] = {
    {Array::make({"F0/Standard", 0, 0}), {}, "PROVIA / Standard"},
    {Array::make({"name", 0x100, 0x100}), {}, "Studio Portrait "}, // The spaces are part of the names.
    {Array::make({"name", 1, 0x501}), {}, "Pro Neg. Hi"}, {Array::make({0x600}), {}, "Classic Chrome"},
    {Array::make({"Eterna", 0x700, 0x700}), {}, "Unknown 0x700"},
    {Array::make({"name", 0, 0x300}), Array::make({0x310}), "Studio Portrait Ex "}, // The simulation decides.
    {Array::make(), Array::make({0x300}), "Monochrome"}, {{}, Array::make({"name", 5, 0x310}), "B&W Sepia"},
    {{}, Array::make({0x300, 0x310}), "Monochrome"}, {{}, Array::make({"name", 0x310, 0}), "B&W Sepia"},
    {{}, Array::make({"name", 0x500, 0x500}), "Unknown "},        // Its code is not told.
    {{}, Array::make(), "Unknown "}, {"text", 0x300, "Unknown "}, // No lists.
};

TEST(ExifInformationImageTest, NamesFilmModes) {
    for (const FilmCase& c : kFilms) {
        SCOPED_TRACE(testing::Message() << c.simulation.description() << c.saturation.description());
        const auto record = recordWith(
            kPictureStyleDictionary, {{"FilmSimulation", c.simulation}, {"Saturation", c.saturation}});
        EXPECT_EQ(textOf(record->FilmMode()), c.text);
    }
    EXPECT_EQ(textOf(ExifInformation::init()->FilmMode()), "Unknown ");
}

} // namespace
} // namespace exifcard

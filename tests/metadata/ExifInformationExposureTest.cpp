#include "metadata/Records.h"

#include <gtest/gtest.h>

#include <limits>

namespace exifcard {
namespace {

struct ExposureCase {
    Value seconds;
    std::string text;
};

const ExposureCase kExposures[] = {
    {0.008, "1/125 seconds"},
    {0.0166667, "1/60 seconds"},
    {0.25, "1/4 seconds"},
    {0.333, "1/3 seconds"},      // 3.003 is within the tolerance,
    {0.3322, "0.33220 seconds"}, // 3.0102 is not;
    {0.3345, "0.33450 seconds"}, // nor is 2.9895.
    {0.3, "0.30000 seconds"},
    {0.999, "1/1 seconds"},
    {1.0, "1 second"},
    {1.9, "1 seconds"},
    {2.5, "2 seconds"},
    {30, "30 seconds"},
    {0, "0 seconds"},
    {nothing(), "0 seconds"},
    {1e-45F, "0.00000 seconds"}, // Its reciprocal is infinite.
    {std::numeric_limits<double>::quiet_NaN(), "0 seconds"},
};

TEST(ExifInformationExposureTest, TellsShutterSpeedsAsFractionsWhereTheyAreSome) {
    for (const ExposureCase& c : kExposures) {
        SCOPED_TRACE(c.text);
        const auto record = recordWithExif(kCGImagePropertyExifExposureTime, c.seconds);
        EXPECT_EQ(record->shutterSpeedString(), c.text);
    }
}

struct RowCase {
    Formatter formatter;
    std::string_view key;
    Value value;
    std::string text;
};

const RowCase kRows[] = {
    {&ExifInformation::ApertureValue, kCGImagePropertyExifFNumber, 1.8, "f/1.8"},
    {&ExifInformation::ApertureValue, kCGImagePropertyExifFNumber, 16, "f/16.0"},
    {&ExifInformation::ExposureTime, kCGImagePropertyExifExposureTime, 0.008, "0.008000 - ( 1/125 seconds )"},
    {&ExifInformation::ShutterSpeedStringValue, kCGImagePropertyExifExposureTime, 0.008, "1/125 seconds"},
    {&ExifInformation::ExposureBiasValue, kCGImagePropertyExifExposureBiasValue, -1.0 / 3, "-0.33"},
    {&ExifInformation::DigitalZoomRatio, kCGImagePropertyExifDigitalZoomRatio, 1.5, "1.500000"},
    {&ExifInformation::ApertureMax, kCGImagePropertyExifMaxApertureValue, 2.97, "2.8 (APEX = 2.97)"},
    {&ExifInformation::ApertureMax, kCGImagePropertyExifMaxApertureValue, 4.0, "4 (APEX = 4)"},
    {&ExifInformation::FocalLength, kCGImagePropertyExifFocalLength, 4.25, "4 mm"},
    {&ExifInformation::FocalLenIn35mmFilm, kCGImagePropertyExifFocalLenIn35mmFilm, 26, "26 mm"},
    {&ExifInformation::ISOSpeedRatings, kCGImagePropertyExifISOSpeedRatings, Array::make({64, 80}), "ISO 64"},
    {&ExifInformation::ISOSpeedValue, kCGImagePropertyExifISOSpeedRatings, Array::make({64, 80}), "64"},
    {&ExifInformation::ISOSpeedRatings, kCGImagePropertyExifISOSpeed, 200, "ISO 200"},
    {&ExifInformation::ISOSpeedValue, kCGImagePropertyExifISOSpeed, 200, "200"},
};

TEST(ExifInformationExposureTest, WritesNumbersInTheirFormats) {
    for (const RowCase& c : kRows) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(textOf((*recordWithExif(c.key, c.value).*c.formatter)()), c.text);
    }
}

TEST(ExifInformationExposureTest, ReadsWhatIsAbsentAsZeroOrAsNoObject) {
    const auto record = recordWithExif(kCGImagePropertyExifColorSpace, 1);
    EXPECT_EQ(textOf(record->ApertureValue()), "f/0.0");
    EXPECT_EQ(textOf(record->ISOSpeedRatings()), "ISO (null)");
    EXPECT_EQ(textOf(record->ISOSpeedValue()), "(null)");
    EXPECT_EQ(textOf(record->FocalLength()), "0 mm");
    EXPECT_EQ(textOf(record->ApertureMax()), "Not available");
    EXPECT_EQ(textOf(recordWithExif(kCGImagePropertyExifFNumber, 8)->ApertureMax()), "");
}

TEST(ExifInformationExposureTest, AnEmptyListOfRatingsIsSensitivityZero) {
    const auto record = recordWith(
        kCGImagePropertyExifDictionary, {{std::string(kCGImagePropertyExifISOSpeedRatings), Array::make()},
                                            {std::string(kCGImagePropertyExifISOSpeed), 400}});
    EXPECT_EQ(textOf(record->ISOSpeedRatings()), "ISO 0");
    EXPECT_EQ(record->iSOSpeed, Value(0));
}

TEST(ExifInformationExposureTest, OnlyFocalLengthsHaveAPlainNumber) {
    const auto record = recordWithExif(kCGImagePropertyExifFocalLength, 4.25);
    EXPECT_EQ(record->FocalLength().exifRAWValue, "4");
    EXPECT_EQ(record->FocalLenIn35mmFilm().exifRAWValue, "0");
    EXPECT_EQ(record->ApertureValue().exifRAWValue, std::nullopt);
}

} // namespace
} // namespace exifcard

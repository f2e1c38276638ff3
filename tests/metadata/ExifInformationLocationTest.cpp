#include "metadata/Records.h"
#include "settings/PersistanceManager.h"

#include <gtest/gtest.h>

#include <limits>

namespace exifcard {
namespace {

std::shared_ptr<ExifInformation> recordAt(const CLLocation& location) {
    auto record = ExifInformation::init();
    record->location = location;
    return record;
}

struct CoordinateCase {
    CLLocationCoordinate2D coordinate;
    std::string sexagesimal;
    std::string decimal;
};

const CoordinateCase kCoordinates[] = {
    {{48.8584, 2.2945}, "48°51'30\"N 2°17'40\"E", "48.858400° 2.294500°"},
    {{-33.8568, 151.2153}, "33°51'24\"S 151°12'55\"E", "-33.856800° 151.215300°"},
    {{0, 0}, "0°0'0\"N 0°0'0\"E", "0.000000° 0.000000°"},
    {{-0.0001, -0.0003}, "0°0'0\"S 0°0'1\"W", "-0.000100° -0.000300°"},
    {{59.999999, -179.999999}, "59°59'59\"N 179°59'59\"W", "59.999999° -179.999999°"}, // Never rounded up.
    {{90, -180}, "90°0'0\"N 180°0'0\"W", "90.000000° -180.000000°"},
};

TEST(ExifInformationLocationTest, WritesCoordinatesAsTheUserChose) {
    auto& settings = PersistanceManager::sharedInstance();
    for (const CoordinateCase& c : kCoordinates) {
        SCOPED_TRACE(c.decimal);
        const auto record = recordAt({.coordinate = c.coordinate});
        settings.setShouldShowGPSInDecimalValues(false);
        EXPECT_EQ(textOf(record->GPS()), c.sexagesimal);
        settings.setShouldShowGPSInDecimalValues(true);
        EXPECT_EQ(textOf(record->GPS()), c.decimal);
    }
}

TEST(ExifInformationLocationTest, TakesCoordinatesThatAreNoPlace) {
    PersistanceManager::sharedInstance().setShouldShowGPSInDecimalValues(false);
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(
        ExifInformation::coordinateInReadableFormat({std::numeric_limits<double>::quiet_NaN(), -kInfinity}),
        "0°0'0\"S 596523°14'8\"W");
    PersistanceManager::sharedInstance().setShouldShowGPSInDecimalValues(true);
}

TEST(ExifInformationLocationTest, ConvertsAltitudeAndSpeed) {
    auto& settings = PersistanceManager::sharedInstance();
    const auto record = recordAt({.altitude = 100, .verticalAccuracy = 2, .speed = 10});
    settings.setIsUsingMetricUnits(false);
    EXPECT_EQ(textOf(record->GPSAltitude()), "328.084000 feet above sea level (+/- 6.56)");
    EXPECT_EQ(textOf(record->GPSSpeed()), "22.37 Miles per hour");
    EXPECT_EQ(record->GPSSpeed().exifKeyWithUnitTypeReadableFormat, "Speed (Miles per hour)");
    settings.setIsUsingMetricUnits(true);
    EXPECT_EQ(textOf(record->GPSAltitude()), "100.000000 meters above sea level (+/- 2.00)");
    EXPECT_EQ(textOf(record->GPSSpeed()), "36.00 Kilometer per hour");
    EXPECT_EQ(record->GPSSpeed().exifKeyWithUnitTypeReadableFormat, "Speed (Kilometer per hour)");

    const auto unsure = recordAt({.altitude = -3.5});
    EXPECT_EQ(textOf(unsure->GPSAltitude()), "-3.500000 meters above sea level (+/- -1.00)");
    EXPECT_EQ(textOf(unsure->GPSSpeed()), "-3.60 Kilometer per hour");
}

TEST(ExifInformationLocationTest, TellsWhereTheCameraLooked) {
    struct Case {
        Value direction;
        Value reference;
        std::string text;
    };
    const Case cases[] = {
        {269.5, "T", "269.5 True North"},
        {90.0, "t", "90 True North"},
        {90.0, "M", "90 M"}, // Never in words.
        {90.0, {}, "90 (null)"},
        {{}, "T", "(null) True North"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        const auto record = recordWith(
            kCGImagePropertyGPSDictionary, {{"ImgDirection", c.direction}, {"ImgDirectionRef", c.reference}});
        EXPECT_EQ(textOf(record->GPSDirection()), "GPS Data not available");
        record->location = CLLocation();
        EXPECT_EQ(textOf(record->GPSDirection()), c.text);
    }
}

TEST(ExifInformationLocationTest, SaysSoWithoutALocation) {
    PersistanceManager::sharedInstance().setIsUsingMetricUnits(true);
    const auto record = recordWithExif(kCGImagePropertyExifFNumber, 8);
    for (const Formatter formatter :
        {&ExifInformation::GPS, &ExifInformation::GPSAltitude, &ExifInformation::GPSSpeed}) {
        EXPECT_EQ(textOf((*record.*formatter)()), "GPS Data not available");
    }
    EXPECT_EQ(record->GPSSpeed().exifKeyWithUnitTypeReadableFormat, "Speed (Kilometer per hour)");
}

TEST(ExifInformationLocationTest, LeavesPlaceNameAndMapToTheCard) {
    const auto record = ExifInformation::init();
    record->locationName = "Paris";
    EXPECT_EQ(record->LocationName().exifValueReadableFormat, std::nullopt);
    EXPECT_EQ(record->MapView().exifValueReadableFormat, "");
    EXPECT_EQ(record->Map(), record->MapView());
}

} // namespace
} // namespace exifcard

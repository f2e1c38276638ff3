#include "platform/corelocation/CLGeocoder.h"

#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/LocalizedString.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <optional>
#include <string_view>

namespace exifcard {
namespace {

class CLGeocoderTest : public testing::Test {
protected:
    void SetUp() override {
        setenv("LC_ALL", "en_US.UTF-8", 1);
        unsetenv("LANGUAGE");
        resetLocalization();
    }
};

TEST_F(CLGeocoderTest, NamesPlacesAsThoseWhoLiveThereDo) {
    struct Case {
        std::string_view spot;
        CLLocationCoordinate2D coordinate;
        std::optional<std::string> locality;
        std::string country;
    };
    const Case cases[] = {
        {"Eiffel tower, nearer to suburbs' edges than to the middle of the city", {48.8584, 2.2945}, "Paris",
            "France"},
        {"Versailles, a town beside the city", {48.8049, 2.1204}, "Versailles", "France"},
        {"Big Ben", {51.5007, -0.1246}, "London", "United Kingdom"},
        {"Sydney opera house", {-33.8568, 151.2153}, "Sydney", "Australia"},
        {"Santa Monica pier", {34.0100, -118.4960}, "Santa Monica", "United States"},
        {"Forbidden City", {39.9163, 116.3972}, "Beijing", "China"},
        {"Ushuaia, at the end of a continent", {-54.8019, -68.3030}, "Ushuaia", "Argentina"},
        {"Burano, an island of the lagoon", {45.4855, 12.4167}, "Burano", "Italy"},
        {"Mykonos", {37.4467, 25.3289}, "Mykonos", "Greece"},
        {"Easter island", {-27.1127, -109.3497}, "Hanga Roa", "Chile"},
        {"Malé, an island too small for most maps", {4.1755, 73.5093}, "Male", "Maldives"},
        {"Windsor, across the river from a greater city", {42.3149, -83.0364}, "Windsor", "Canada"},
        {"Detroit", {42.3314, -83.0458}, "Detroit", "United States"},
        {"Konstanz, which grew together with its neighbour", {47.6603, 9.1758}, "Konstanz", "Germany"},
        {"Kreuzlingen", {47.6505, 9.1780}, "Kreuzlingen", "Switzerland"},
        {"Saint Peter's square, a country within a city", {41.9022, 12.4539}, "Vatican City", "Vatican City"},
        {"Strasbourg", {48.5734, 7.7521}, "Strasbourg", "France"},
        {"Kehl, on the other bank", {48.5730, 7.8150}, "Kehl", "Germany"},
        {"Gibraltar", {36.1408, -5.3536}, "Gibraltar", "Gibraltar"},
        {"Gateway of India, on the tip of a peninsula", {18.9220, 72.8347}, "Mumbai", "India"},
        {"Suva", {-18.1416, 178.4415}, "Suva", "Fiji"},
        {"Anadyr, near the antimeridian", {64.7333, 177.5167}, "Anadyr", "Russia"},
        {"Manacor's fields, seen past a vertex in the middle of half a degree", {39.6370, 3.2136}, "Manacor",
            "Spain"},
        {"Taveuni, on the antimeridian", {-16.85, 179.99}, std::nullopt, "Fiji"},
        {"Greenland's ice", {71.0, -40.0}, std::nullopt, "Greenland"},
        {"Libyan desert, nearer to the towns of another country", {24.0, 25.0}, std::nullopt, "Egypt"},
        {"South pole", {-90, 0}, std::nullopt, "Antarctica"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.spot);
        const auto answer = placeAtCoordinate(c.coordinate);
        ASSERT_TRUE(answer.placemark.has_value());
        EXPECT_FALSE(answer.error);
        EXPECT_EQ(answer.placemark->locality, c.locality);
        EXPECT_EQ(answer.placemark->country, c.country);
    }
}

TEST_F(CLGeocoderTest, NamesTheSectionOfACityBesideTheCity) {
    struct Case {
        std::string section;
        CLLocationCoordinate2D coordinate;
        std::string city;
    };
    const Case cases[] = {
        {"Spandau", {52.5397, 13.2050}, "Berlin"},
        {"Pasing", {48.1414, 11.4600}, "Munich"},
        {"Hollywood", {34.1016, -118.3267}, "Los Angeles"},
        {"Venice", {33.9850, -118.4695}, "Los Angeles"}, // Another city is nearer.
        {"Bondi Beach", {-33.8908, 151.2743}, "Sydney"},
        {"Hietzing", {48.1845, 16.3122}, "Vienna"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.section);
        const auto answer = placeAtCoordinate(c.coordinate);
        ASSERT_TRUE(answer.placemark.has_value());
        EXPECT_EQ(answer.placemark->subLocality, c.section);
        EXPECT_EQ(answer.placemark->locality, c.city);
    }
    const auto middle = placeAtCoordinate({48.1374, 11.5755});
    ASSERT_TRUE(middle.placemark.has_value());
    EXPECT_EQ(middle.placemark->subLocality, std::nullopt) << "the middle of Munich";
}

TEST_F(CLGeocoderTest, NamesNothingAtSeaOrOffTheEarth) {
    constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
    const CLLocationCoordinate2D coordinates[] = {{0, 0}, {90, 0}, {30, -40}, {0, 180}, {0, -180},
        {43.5, 7.4}, {50.9, 1.4}, {-180, -180}, {91, 0}, {0, 180.1}, {kNotANumber, 0}, {0, kNotANumber}};
    for (const auto& coordinate : coordinates) {
        const auto answer = placeAtCoordinate(coordinate);
        SCOPED_TRACE(testing::Message() << coordinate.latitude << " " << coordinate.longitude);
        EXPECT_FALSE(answer.placemark);
        EXPECT_EQ(answer.error, CLError::NoResult);
    }
}

TEST_F(CLGeocoderTest, AnswersTheSameFromEitherSideOfTheAntimeridian) {
    for (double latitude = -90; latitude <= 90; latitude += 0.25) {
        const auto east = placeAtCoordinate({latitude, 180});
        const auto west = placeAtCoordinate({latitude, -180});
        SCOPED_TRACE(latitude);
        EXPECT_EQ(east.error, west.error);
        EXPECT_EQ(
            east.placemark.value_or(CLPlacemark()).locality, west.placemark.value_or(CLPlacemark()).locality);
        EXPECT_EQ(
            east.placemark.value_or(CLPlacemark()).country, west.placemark.value_or(CLPlacemark()).country);
    }
}

TEST_F(CLGeocoderTest, NamesTheCountryInTheUsersLanguage) {
    setenv("LC_ALL", "de_DE.UTF-8", 1);
    resetLocalization();
    EXPECT_EQ(placeAtCoordinate({48.8584, 2.2945}).placemark.value().country, "Frankreich");
    setenv("LC_ALL", "fr_FR.UTF-8", 1);
    resetLocalization();
    EXPECT_EQ(placeAtCoordinate({52.5163, 13.3777}).placemark.value().country, "Allemagne");
}

CLLocation locationAt(double latitude, double longitude) {
    CLLocation location;
    location.coordinate = {latitude, longitude};
    return location;
}

TEST_F(CLGeocoderTest, HandsOverOneAnswerOnTheMainQueue) {
    struct Case {
        std::optional<CLLocation> location;
        std::optional<CLError> error;
        std::size_t placemarks;
    };
    const Case cases[] = {
        {locationAt(48.8584, 2.2945), std::nullopt, 1},
        {locationAt(0, 0), CLError::NoResult, 0},
        {std::nullopt, CLError::NoResult, 0},
    };
    for (const Case& c : cases) {
        int calls = 0;
        {
            CLGeocoder geocoder; // May go before the answer comes.
            geocoder.reverseGeocodeLocation(c.location, [&](const auto& placemarks, auto error) {
                ++calls;
                EXPECT_EQ(placemarks.size(), c.placemarks);
                EXPECT_EQ(error, c.error);
                MainRunLoop::stop();
            });
        }
        EXPECT_EQ(calls, 0) << "before the main queue ran";
        MainRunLoop::runUntilStopped();
        MainRunLoop::drain();
        EXPECT_EQ(calls, 1);
    }
}

} // namespace
} // namespace exifcard

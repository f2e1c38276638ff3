#include "platform/corelocation/Gazetteer.h"

#include "platform/corelocation/GazetteerFormat.h"
#include "platform/corelocation/MapGrid.h"
#include "platform/foundation/FilePaths.h"
#include "platform/foundation/UTF8.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <optional>
#include <random>
#include <vector>

namespace exifcard {
namespace {

std::vector<std::uint8_t> bundledBytes() {
    const auto file = Data::mappedFile(resourcePath("gazetteer.bin"));
    return file ? std::vector<std::uint8_t>(file->bytes().begin(), file->bytes().end())
                : std::vector<std::uint8_t>();
}

std::vector<CLLocationCoordinate2D> coordinatesAround(std::mt19937& random, std::size_t count) {
    std::uniform_real_distribution<double> latitude(-90, 90);
    std::uniform_real_distribution<double> longitude(-180, 180);
    std::vector<CLLocationCoordinate2D> coordinates = {
        {48.8584, 2.2945}, {52.5397, 13.2050}, {47.6603, 9.1758}};
    while (coordinates.size() < count) {
        coordinates.push_back({latitude(random), longitude(random)});
    }
    return coordinates;
}

void expectLawfulAnswers(const Gazetteer& gazetteer, const std::vector<CLLocationCoordinate2D>& coordinates) {
    for (const auto& coordinate : coordinates) {
        const auto answer = gazetteer.placeAt(coordinate);
        EXPECT_EQ(answer.isoCountryCode.size(), answer.error ? 0U : 2U);
        EXPECT_TRUE(!answer.error || answer.error == CLError::NoResult || answer.error == CLError::Network);
        for (const auto text : {answer.subLocality, answer.locality, answer.isoCountryCode}) {
            EXPECT_TRUE(isValidUTF8(text));
        }
    }
}

TEST(GazetteerTest, OpensNothingThatIsCutOrOfAnotherVersion) {
    const auto whole = bundledBytes();
    ASSERT_FALSE(whole.empty());
    EXPECT_TRUE(Gazetteer::open(Data::fromBytes(whole)));
    for (const std::size_t size : {std::size_t{0}, std::size_t{7}, sizeof(gazetteer::Header) - 1,
             sizeof(gazetteer::Header), whole.size() / 2, whole.size() - 1}) {
        SCOPED_TRACE(size);
        EXPECT_FALSE(Gazetteer::open(
            Data::fromBytes({whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)})));
    }
    auto other = whole;
    other[offsetof(gazetteer::Header, version)] ^= 1;
    EXPECT_FALSE(Gazetteer::open(Data::fromBytes(other)));
}

TEST(GazetteerTest, StaysWithinTheFileWhicheverByteOfTheHeaderIsDamaged) {
    std::mt19937 random(1);
    const auto coordinates = coordinatesAround(random, 20);
    const auto whole = bundledBytes();
    for (std::size_t position = 0; position < sizeof(gazetteer::Header); ++position) {
        auto damaged = whole;
        damaged[position] = static_cast<std::uint8_t>(random());
        if (const auto gazetteer = Gazetteer::open(Data::fromBytes(std::move(damaged)))) {
            SCOPED_TRACE(position);
            expectLawfulAnswers(*gazetteer, coordinates);
        }
    }
}

TEST(GazetteerTest, StaysWithinTheFileWhereverItIsDamaged) {
    std::mt19937 random(2);
    const auto coordinates = coordinatesAround(random, 300);
    auto damaged = bundledBytes();
    ASSERT_FALSE(damaged.empty());
    // Every sixteenth byte at random, so that no array is spared.
    for (std::size_t position = sizeof(gazetteer::Header); position < damaged.size(); position += 16) {
        const auto chance = random();
        damaged[position + chance % std::min<std::size_t>(16, damaged.size() - position)] =
            static_cast<std::uint8_t>(chance >> 8);
    }
    const auto gazetteer = Gazetteer::open(Data::fromBytes(std::move(damaged)));
    ASSERT_TRUE(gazetteer);
    expectLawfulAnswers(*gazetteer, coordinates);
}

class PlaceTreeTest : public testing::Test {
protected:
    void SetUp() override {
        _arrays = arraysOfGazetteerFile(_bytes).value();
        _tree = PlaceTree::make(_arrays.nodes, _arrays.leaves, _arrays.patches, _arrays.candidates);
        ASSERT_TRUE(_tree);
    }

    std::vector<CLLocationCoordinate2D> coordinatesAroundPlaces(std::size_t count) const {
        std::mt19937 random(3);
        std::uniform_int_distribution<std::size_t> candidate(0, _arrays.candidates.size() - 1);
        std::normal_distribution<double> degrees(0, 0.2);
        std::vector<CLLocationCoordinate2D> coordinates;
        while (coordinates.size() < count) {
            const auto& point = _arrays.candidates[candidate(random)].point;
            const double latitude = std::asin(double{point.z} / gazetteer::kEarthRadius);
            const CLLocationCoordinate2D coordinate = {
                .latitude = latitude / gazetteer::kRadiansPerDegree + degrees(random),
                .longitude = std::atan2(point.y, point.x) / gazetteer::kRadiansPerDegree + degrees(random)};
            if (CLLocationCoordinate2DIsValid(coordinate)) {
                coordinates.push_back(coordinate);
            }
        }
        return coordinates;
    }

    std::vector<std::uint8_t> _bytes = bundledBytes();
    GazetteerArrays _arrays;
    std::optional<PlaceTree> _tree;
};

TEST_F(PlaceTreeTest, ItsLeavesHoldWhatLookingThroughAllPlacesFinds) {
    const PlaceRecords records(_arrays.records);
    for (const auto& coordinate : coordinatesAroundPlaces(40)) {
        SCOPED_TRACE(testing::Message() << coordinate.latitude << " " << coordinate.longitude);
        const auto surroundings = _tree->surroundingsOf(coordinate).value();
        const auto country = surroundings.country;
        const auto anywhere = [](std::uint32_t /*record*/) { return true; };
        const auto atHome = [&](std::uint32_t record) {
            return records.recordAt(record).value().country == country;
        };
        const PlaceSearch search = {.point = pointAtCoordinate(coordinate), .reach = kReachOfPlaces};
        constexpr FoundPlace kNone;
        EXPECT_EQ(bestPlace(search, surroundings.places, anywhere).value_or(kNone).score,
            bestPlace(search, _arrays.candidates, anywhere).value_or(kNone).score);
        EXPECT_EQ(bestPlace(search, surroundings.places, atHome).value_or(kNone).score,
            bestPlace(search, _arrays.candidates, atHome).value_or(kNone).score);
    }
}

TEST_F(PlaceTreeTest, ItsLeavesLieInTheCountriesThatTheMapTells) {
    const auto map =
        CountryMap::make(_arrays.cells, _arrays.runs, _arrays.vertices, _arrays.countriesOfVertices).value();
    std::size_t known = 0;
    const auto coordinates = coordinatesAroundPlaces(5'000);
    for (const auto& coordinate : coordinates) {
        const auto country = _tree->surroundingsOf(coordinate).value().country;
        known += country ? 1 : 0;
        EXPECT_EQ(country.value_or(map.countryAt(coordinate).value()), map.countryAt(coordinate));
    }
    EXPECT_GT(known, coordinates.size() * 3 / 4) << "hardly a leaf spares the look at the map";
}

} // namespace
} // namespace exifcard

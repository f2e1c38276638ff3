#include "platform/corelocation/Gazetteer.h"

#include "platform/corelocation/GazetteerFormat.h"
#include "platform/foundation/FilePaths.h"
#include "platform/foundation/UTF8.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
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

TEST(GazetteerTest, TheTreeFindsWhatLookingThroughAllPlacesFinds) {
    const auto bytes = bundledBytes();
    const auto arrays = arraysOfGazetteerFile(bytes);
    ASSERT_TRUE(arrays);
    const auto& points = arrays->points;
    const auto tree = PlaceTree::make(points, arrays->nodes);
    ASSERT_TRUE(tree);
    constexpr float kReach = 50;
    std::mt19937 random(3);
    std::uniform_int_distribution<std::size_t> town(0, points.size() - 1);
    std::normal_distribution<float> kilometres(0, 20);
    for (int question = 0; question < 30; ++question) {
        auto spot = points[town(random)];
        spot.x += kilometres(random);
        spot.y += kilometres(random);
        float least = std::numeric_limits<float>::infinity();
        for (const auto& point : points) {
            const float distance = std::hypot(point.x - spot.x, point.y - spot.y, point.z - spot.z);
            least = distance <= kReach ? std::min(least, placeScore(distance, point.radius)) : least;
        }
        const auto found = tree->find({.point = spot, .reach = kReach}, [](std::uint32_t) { return true; });
        EXPECT_EQ(found.has_value(), std::isfinite(least));
        EXPECT_NEAR(found.value_or(PlaceTree::Found{.score = least}).score, least, 0.01);
    }
}

} // namespace
} // namespace exifcard

#include "platform/corelocation/tools/PlaceContest.h"

#include "platform/corelocation/PlaceScore.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>
#include <unordered_map>

namespace exifcard {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

} // namespace

/// What a place can reach in a box.
struct PlaceContest::Chance {
    std::size_t place = 0;
    MapBox::Distances distances = {};
    double leastScore = 0;
    double greatestScore = 0;
};

PlaceContest::PlaceContest(const std::vector<TreePlace>& places) : _places(places) {
    for (const auto& place : places) {
        _points.emplace_back(place.coordinate);
    }
}

PlaceContest::Chance PlaceContest::chanceOf(std::size_t place, const MapBox& box) const {
    const auto distances = box.distancesFrom(_points[place]);
    const double radius = _places[place].radius;
    return {.place = place,
        .distances = distances,
        .leastScore = placeScore(distances.least, radius),
        .greatestScore = placeScore(distances.greatest, radius)};
}

std::vector<std::size_t> PlaceContest::placesThatMayWin(
    const MapBox& box, const CountrySet& countries, const std::vector<std::size_t>& places) const {
    std::vector<Chance> chances;
    double toBeat = kInfinity;
    std::array<double, CountrySet().size()> toBeatAtHome = {};
    toBeatAtHome.fill(kInfinity);
    for (const std::size_t number : places) {
        const auto chance = chanceOf(number, box);
        if (chance.distances.least >= double{kReachOfPlaces}) {
            continue;
        }
        chances.push_back(chance);
        if (chance.distances.greatest < double{kReachOfPlaces}) {
            toBeat = std::min(toBeat, chance.greatestScore);
            for (const auto country : {_places[number].country, _places[number].countryOnMap}) {
                toBeatAtHome[country] = std::min(toBeatAtHome[country], chance.greatestScore);
            }
        }
    }
    std::erase_if(chances, [&](const Chance& chance) {
        const auto& place = _places[chance.place];
        const auto mayWinIn = [&](std::uint8_t country) {
            return countries[country] && chance.leastScore <= toBeatAtHome[country];
        };
        return chance.leastScore > toBeat && !mayWinIn(place.country) && !mayWinIn(place.countryOnMap);
    });
    std::ranges::stable_sort(chances, {}, &Chance::greatestScore);
    std::vector<std::size_t> result;
    std::ranges::transform(chances, std::back_inserter(result), &Chance::place);
    return result;
}

std::vector<std::size_t> PlaceContest::quartersThatMayWin(const MapBox& box,
    const std::vector<std::size_t>& towns,
    const std::vector<std::size_t>& quarters) const {
    if (quarters.empty()) {
        return {};
    }
    struct Town {
        MapBox::Distances distances;
        double toBeat = double{kBesideQuarter};
    };
    std::unordered_map<std::size_t, Town> contests;
    for (const std::size_t town : towns) {
        contests[town].distances = box.distancesFrom(_points[town]);
    }
    std::vector<Chance> chances;
    for (const std::size_t number : quarters) {
        const auto contest = contests.find(_places[number].town.value());
        if (contest == contests.end()) {
            continue;
        }
        auto& town = contest->second;
        // A quarter must be nearer than the middle of the town.
        const auto chance = chanceOf(number, box);
        if (chance.distances.least < town.distances.greatest) {
            chances.push_back(chance);
        }
        if (chance.distances.greatest < town.distances.least) {
            town.toBeat = std::min(town.toBeat, chance.greatestScore);
        }
    }
    std::erase_if(chances, [&](const Chance& chance) {
        return chance.leastScore > contests[_places[chance.place].town.value()].toBeat;
    });
    std::ranges::stable_sort(chances, {}, &Chance::greatestScore);
    std::vector<std::size_t> result;
    std::ranges::transform(chances, std::back_inserter(result), &Chance::place);
    return result;
}

} // namespace exifcard

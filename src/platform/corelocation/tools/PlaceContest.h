#pragma once

#include "platform/corelocation/tools/MapBox.h"
#include "platform/corelocation/tools/PlaceTreeBuilder.h"

#include <bitset>
#include <cstddef>
#include <vector>

namespace exifcard {

using CountrySet = std::bitset<256>;

/// Tells which places can have the lowest score somewhere in a box: a place that is at its best there still
/// worse than another one at its worst cannot.
class PlaceContest {
public:
    explicit PlaceContest(const std::vector<TreePlace>& places);

    /// Among all places or among those of one of the countries. What is likely to win comes first.
    std::vector<std::size_t> placesThatMayWin(
        const MapBox& box, const CountrySet& countries, const std::vector<std::size_t>& places) const;
    /// Among the quarters of one of the towns.
    std::vector<std::size_t> quartersThatMayWin(const MapBox& box,
        const std::vector<std::size_t>& towns,
        const std::vector<std::size_t>& quarters) const;

private:
    struct Chance;
    Chance chanceOf(std::size_t place, const MapBox& box) const;

    const std::vector<TreePlace>& _places;
    std::vector<MapPoint> _points;
};

} // namespace exifcard

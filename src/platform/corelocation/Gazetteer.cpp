#include "platform/corelocation/Gazetteer.h"

#include "platform/foundation/UTF8.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace exifcard {
namespace {

/// So near to its centre, a place names a point also far from all coasts of the map: some islands are too
/// small for it. Kilometres.
constexpr float kNearPlace = 5;
/// Nearer to a border the map may be wrong: of the towns that lie so near to one, it puts every fourth to
/// twentieth abroad. Kilometres.
constexpr double kUncertainBorder = 1.5;
/// There a place abroad must be nearer than one at home by as much, as a score.
constexpr float kBorderMargin = 0.25;

constexpr Gazetteer::Answer kNoResult = {.error = CLError::NoResult};
constexpr Gazetteer::Answer kDamaged = {.error = CLError::Network};

/// Where the map is wrong, a place lies in both countries.
bool liesIn(const std::optional<gazetteer::Record>& record, std::uint8_t country) {
    return record && (record->country == country || record->countryOnMap == country);
}

} // namespace

std::unique_ptr<const Gazetteer> Gazetteer::open(Data file) {
    const auto arrays = arraysOfGazetteerFile(file.bytes());
    if (!arrays) {
        return nullptr;
    }
    const auto places = PlaceTree::make(arrays->nodes, arrays->leaves, arrays->patches, arrays->candidates);
    const auto map =
        CountryMap::make(arrays->cells, arrays->runs, arrays->vertices, arrays->countriesOfVertices);
    if (!places || !map) {
        return nullptr;
    }
    return std::unique_ptr<const Gazetteer>(new Gazetteer(std::move(file), *arrays, *places, *map));
}

Gazetteer::Gazetteer(Data file, const GazetteerArrays& arrays, PlaceTree places, CountryMap map)
    : _file(std::move(file))
    , _countryCodes(arrays.countryCodes)
    , _records(arrays.records)
    , _places(places)
    , _map(map) {
}

Gazetteer::Answer Gazetteer::placeAt(const CLLocationCoordinate2D& coordinate) const {
    if (!CLLocationCoordinate2DIsValid(coordinate)) {
        return kNoResult;
    }
    const auto answer = answerAtValid(coordinate);
    return _file.wasCutShort() ? kDamaged : answer;
}

Gazetteer::Answer Gazetteer::answerAtValid(const CLLocationCoordinate2D& coordinate) const {
    const auto surroundings = _places.surroundingsOf(coordinate);
    if (!surroundings) {
        return kDamaged;
    }
    const Spot spot = {
        .coordinate = coordinate, .point = pointAtCoordinate(coordinate), .surroundings = *surroundings};
    const auto place = bestPlace(spot, [](std::uint32_t /*record*/) { return true; });
    const auto country = surroundings->country ? surroundings->country : _map.countryAt(coordinate);
    if (!country) {
        return kDamaged;
    }
    return *country == gazetteer::kNoCountry ? answerAtSea(spot, place) : answerOnLand(spot, place, *country);
}

Gazetteer::Answer Gazetteer::answerAtSea(const Spot& spot, const std::optional<FoundPlace>& place) const {
    const auto coast = _map.nearestNeighbour(spot.coordinate, gazetteer::kNoCountry);
    if (place && (coast || place->distance < kNearPlace)) {
        return answerForPlace(spot, *place);
    }
    return coast ? answerForCountry(coast->country) : kNoResult;
}

Gazetteer::Answer Gazetteer::answerOnLand(
    const Spot& spot, const std::optional<FoundPlace>& place, std::uint8_t country) const {
    if (!place) {
        return answerForCountry(country);
    }
    if (liesIn(_records.recordAt(place->record), country)) {
        return answerForPlace(spot, *place);
    }
    const auto domestic =
        bestPlace(spot, [&](std::uint32_t record) { return liesIn(_records.recordAt(record), country); });
    const auto border = _map.nearestNeighbour(spot.coordinate, country);
    const bool mayBeAbroad = border && border->distance < kUncertainBorder;
    if (mayBeAbroad && (!domestic || place->score < domestic->score - kBorderMargin)) {
        return answerForPlace(spot, *place);
    }
    return domestic ? answerForPlace(spot, *domestic) : answerForCountry(country);
}

template<typename IsWanted>
std::optional<FoundPlace> Gazetteer::bestPlace(const Spot& spot, IsWanted isWanted) const {
    const PlaceSearch search = {.point = spot.point, .reach = kReachOfPlaces};
    return exifcard::bestPlace(search, spot.surroundings.places, [&](std::uint32_t record) {
        _records.prefetch(record);
        return isWanted(record);
    });
}

Gazetteer::Answer Gazetteer::answerForPlace(const Spot& spot, const FoundPlace& place) const {
    const auto record = _records.recordAt(place.record);
    if (!record) {
        return kDamaged;
    }
    if (record->town != place.record) {
        return answerForTown(record->town, place.record);
    }
    if (record->hasQuarters == 0) {
        return answerForTown(place.record, std::nullopt);
    }
    // In the middle of a town one is in none of its quarters.
    const PlaceSearch search = {.point = spot.point, .reach = place.distance, .scoreBelow = kBesideQuarter};
    const auto quarter =
        exifcard::bestPlace(search, spot.surroundings.quarters, [&](std::uint32_t candidate) {
            const auto section = _records.recordAt(candidate);
            return section && section->town == place.record;
        });
    return answerForTown(place.record, quarter ? std::optional(quarter->record) : std::nullopt);
}

Gazetteer::Answer Gazetteer::answerForTown(std::uint32_t town, std::optional<std::uint32_t> quarter) const {
    const auto record = _records.recordAt(town);
    const auto locality = _records.nameAt(town);
    const auto subLocality = quarter ? _records.nameAt(*quarter) : std::string_view();
    Answer answer = record ? answerForCountry(record->country) : kDamaged;
    if (!locality || !subLocality || answer.error) {
        return kDamaged;
    }
    answer.locality = *locality;
    answer.subLocality = *subLocality;
    return answer;
}

Gazetteer::Answer Gazetteer::answerForCountry(std::uint8_t country) const {
    if (country == gazetteer::kNoCountry || country >= _countryCodes.size()) {
        return kDamaged;
    }
    const auto& code = _countryCodes[country];
    const std::string_view text(code.data(), code.size());
    return isValidUTF8(text) ? Answer{.isoCountryCode = text} : kDamaged;
}

} // namespace exifcard

#include "platform/corelocation/Gazetteer.h"

#include "platform/foundation/UTF8.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace exifcard {
namespace {

/// Farther away, no place names a point. Kilometres.
constexpr float kReach = 50;
/// So near to its centre, a place names a point also far from all coasts of the map: some islands are too
/// small for it. Kilometres.
constexpr float kNearPlace = 5;
/// A quarter is named as far beyond its edge as this, since quarters are taken for discs but lie close
/// together. Kilometres.
constexpr float kBesideQuarter = 0.5;

/// Nearer to a border the map may be wrong: of the towns that lie so near to one, it puts every fourth to
/// twentieth abroad. Kilometres.
constexpr double kUncertainBorder = 1.5;
/// There a place abroad must be nearer than one at home by as much, as a score.
constexpr float kBorderMargin = 0.25;

constexpr Gazetteer::Answer kNoResult = {.error = CLError::NoResult};
constexpr Gazetteer::Answer kDamaged = {.error = CLError::Network};

/// Where the map is wrong, a place lies in both countries.
bool liesIn(const gazetteer::Record& record, std::uint8_t country) {
    return record.country == country || record.countryOnMap == country;
}

} // namespace

std::unique_ptr<const Gazetteer> Gazetteer::open(Data file) {
    const auto arrays = arraysOfGazetteerFile(file.bytes());
    if (!arrays) {
        return nullptr;
    }
    const auto places = PlaceTree::make(arrays->points, arrays->nodes);
    const auto quarters = PlaceTree::make(arrays->quarterPoints, arrays->quarterNodes);
    const auto map =
        CountryMap::make(arrays->cells, arrays->edges, arrays->vertices, arrays->countriesOfVertices);
    if (!places || !quarters || !map) {
        return nullptr;
    }
    return std::unique_ptr<const Gazetteer>(
        new Gazetteer(std::move(file), *arrays, *places, *quarters, *map));
}

Gazetteer::Gazetteer(
    Data file, const GazetteerArrays& arrays, PlaceTree places, PlaceTree quarters, CountryMap map)
    : _file(std::move(file))
    , _arrays(arrays)
    , _places(places)
    , _quarters(quarters)
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
    const Spot spot = {.coordinate = coordinate, .point = pointAtCoordinate(coordinate)};
    const auto place = bestPlace(spot, std::nullopt);
    if (place) {
        // Its name is on its way while the map is read.
        const std::size_t offset = _arrays.records[place->index].nameOffset;
        __builtin_prefetch(_arrays.names.data() + std::min(offset, _arrays.names.size()));
    }
    const auto country = _map.countryAt(coordinate);
    if (!country) {
        return kDamaged;
    }
    return *country == gazetteer::kNoCountry ? answerAtSea(spot, place) : answerOnLand(spot, place, *country);
}

Gazetteer::Answer Gazetteer::answerAtSea(
    const Spot& spot, const std::optional<PlaceTree::Found>& place) const {
    const auto coast = _map.nearestNeighbour(spot.coordinate, gazetteer::kNoCountry);
    if (place && (coast || place->distance < kNearPlace)) {
        return answerForPlace(spot, *place);
    }
    return coast ? answerForCountry(coast->country) : kNoResult;
}

Gazetteer::Answer Gazetteer::answerOnLand(
    const Spot& spot, const std::optional<PlaceTree::Found>& place, std::uint8_t country) const {
    if (!place) {
        return answerForCountry(country);
    }
    if (liesIn(_arrays.records[place->index], country)) {
        return answerForPlace(spot, *place);
    }
    const auto domestic = bestPlace(spot, country);
    const auto border = _map.nearestNeighbour(spot.coordinate, country);
    const bool mayBeAbroad = border && border->distance < kUncertainBorder;
    if (mayBeAbroad && (!domestic || place->score < domestic->score - kBorderMargin)) {
        return answerForPlace(spot, *place);
    }
    return domestic ? answerForPlace(spot, *domestic) : answerForCountry(country);
}

std::optional<PlaceTree::Found> Gazetteer::bestPlace(
    const Spot& spot, std::optional<std::uint8_t> country) const {
    return _places.find({.point = spot.point, .reach = kReach}, [this, country](std::uint32_t place) {
        __builtin_prefetch(&_arrays.records[place]); // It is wanted soon, and hardly ever in the cache.
        return !country || liesIn(_arrays.records[place], *country);
    });
}

Gazetteer::Answer Gazetteer::answerForPlace(const Spot& spot, const PlaceTree::Found& place) const {
    const auto& record = _arrays.records[place.index];
    if (record.town != place.index) {
        return answerForTown(record.town, place.index);
    }
    if (record.hasQuarters == 0) {
        return answerForTown(place.index, std::nullopt);
    }
    // In the middle of a town one is in none of its quarters.
    const PlaceTree::Search search = {
        .point = spot.point, .reach = place.distance, .scoreBelow = kBesideQuarter};
    const auto quarter = _quarters.find(search, [this, town = place.index](std::uint32_t candidate) {
        const auto position = _arrays.quarters[candidate];
        return position < _arrays.records.size() && _arrays.records[position].town == town;
    });
    return answerForTown(
        place.index, quarter ? std::optional(_arrays.quarters[quarter->index]) : std::nullopt);
}

Gazetteer::Answer Gazetteer::answerForTown(std::uint32_t town, std::optional<std::uint32_t> quarter) const {
    if (town >= _arrays.records.size()) {
        return kDamaged;
    }
    const auto& record = _arrays.records[town];
    const auto locality = nameOf(record);
    const auto subLocality = quarter ? nameOf(_arrays.records[*quarter]) : std::string_view();
    Answer answer = answerForCountry(record.country);
    if (!locality || !subLocality || answer.error) {
        return kDamaged;
    }
    answer.locality = *locality;
    answer.subLocality = *subLocality;
    return answer;
}

Gazetteer::Answer Gazetteer::answerForCountry(std::uint8_t country) const {
    if (country == gazetteer::kNoCountry || country >= _arrays.countryCodes.size()) {
        return kDamaged;
    }
    const auto& code = _arrays.countryCodes[country];
    const std::string_view text(code.data(), code.size());
    return isValidUTF8(text) ? Answer{.isoCountryCode = text} : kDamaged;
}

std::optional<std::string_view> Gazetteer::nameOf(const gazetteer::Record& record) const {
    const std::string_view names(_arrays.names.data(), _arrays.names.size());
    if (record.nameOffset > names.size() || record.nameLength > names.size() - record.nameOffset) {
        return std::nullopt;
    }
    const auto name = names.substr(record.nameOffset, record.nameLength);
    return isValidUTF8(name) ? std::optional(name) : std::nullopt;
}

} // namespace exifcard

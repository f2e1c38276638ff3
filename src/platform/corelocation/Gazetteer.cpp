#include "platform/corelocation/Gazetteer.h"

#include "platform/foundation/UTF8.h"

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
    const auto towns = PlaceTree::make(arrays->towns.points, arrays->towns.nodes);
    const auto quarters = PlaceTree::make(arrays->quarters.points, arrays->quarters.nodes);
    const auto map =
        CountryMap::make(arrays->cells, arrays->edges, arrays->vertices, arrays->countriesOfVertices);
    if (!towns || !quarters || !map) {
        return nullptr;
    }
    return std::unique_ptr<const Gazetteer>(new Gazetteer(std::move(file), *arrays, *towns, *quarters, *map));
}

Gazetteer::Gazetteer(
    Data file, const GazetteerArrays& arrays, PlaceTree towns, PlaceTree quarters, CountryMap map)
    : _file(std::move(file))
    , _arrays(arrays)
    , _towns(towns)
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
    const auto country = _map.countryAt(coordinate);
    if (!country) {
        return kDamaged;
    }
    return *country == gazetteer::kNoCountry ? answerAtSea(spot) : answerOnLand(spot, *country);
}

Gazetteer::Answer Gazetteer::answerAtSea(const Spot& spot) const {
    const auto place = bestPlace(spot, std::nullopt);
    const auto coast = _map.nearestNeighbour(spot.coordinate, gazetteer::kNoCountry);
    if (place && (coast || place->found.distance < kNearPlace)) {
        return answerForPlace(spot, *place);
    }
    return coast ? answerForCountry(coast->country) : kNoResult;
}

Gazetteer::Answer Gazetteer::answerOnLand(const Spot& spot, std::uint8_t country) const {
    const auto place = bestPlace(spot, std::nullopt);
    if (!place) {
        return answerForCountry(country);
    }
    if (liesIn(recordOf(*place), country)) {
        return answerForPlace(spot, *place);
    }
    const auto domestic = bestPlace(spot, country);
    const auto border = _map.nearestNeighbour(spot.coordinate, country);
    const bool mayBeAbroad = border && border->distance < kUncertainBorder;
    if (mayBeAbroad && (!domestic || place->found.score < domestic->found.score - kBorderMargin)) {
        return answerForPlace(spot, *place);
    }
    return domestic ? answerForPlace(spot, *domestic) : answerForCountry(country);
}

std::optional<Gazetteer::Place> Gazetteer::bestPlace(
    const Spot& spot, std::optional<std::uint8_t> country) const {
    const auto wantedOf = [country](const GazetteerArrays::Layer& layer) {
        return [country, &layer](
                   std::uint32_t index) { return !country || liesIn(layer.records[index], *country); };
    };
    PlaceTree::Search search = {.point = spot.point, .reach = kReach};
    std::optional<Place> best;
    if (const auto town = _towns.find(search, wantedOf(_arrays.towns))) {
        best = Place{.isQuarter = false, .found = *town};
        search.scoreBelow = town->score;
    }
    if (const auto quarter = _quarters.find(search, wantedOf(_arrays.quarters))) {
        best = Place{.isQuarter = true, .found = *quarter};
    }
    return best;
}

const gazetteer::Record& Gazetteer::recordOf(const Place& place) const {
    return (place.isQuarter ? _arrays.quarters : _arrays.towns).records[place.found.index];
}

Gazetteer::Answer Gazetteer::answerForPlace(const Spot& spot, const Place& place) const {
    const auto index = place.found.index;
    if (place.isQuarter) {
        return answerForTown(_arrays.townsOfQuarters[index], index);
    }
    // In the middle of a town one is in none of its quarters.
    const PlaceTree::Search search = {
        .point = spot.point, .reach = place.found.distance, .scoreBelow = kBesideQuarter};
    const auto quarter = _quarters.find(search,
        [this, town = index](std::uint32_t candidate) { return _arrays.townsOfQuarters[candidate] == town; });
    return answerForTown(index, quarter ? std::optional(quarter->index) : std::nullopt);
}

Gazetteer::Answer Gazetteer::answerForTown(std::uint32_t town, std::optional<std::uint32_t> quarter) const {
    if (town >= _arrays.towns.records.size()) {
        return kDamaged;
    }
    const auto& record = _arrays.towns.records[town];
    const auto locality = nameOf(record);
    const auto subLocality = quarter ? nameOf(_arrays.quarters.records[*quarter]) : std::string_view();
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

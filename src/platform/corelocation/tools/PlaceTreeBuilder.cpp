#include "platform/corelocation/tools/PlaceTreeBuilder.h"

#include "platform/corelocation/tools/MapBox.h"
#include "platform/corelocation/tools/PlaceContest.h"

#include <algorithm>
#include <bit>
#include <iterator>
#include <numeric>
#include <set>
#include <stdexcept>
#include <utility>

namespace exifcard {
namespace {

using Numbers = std::vector<std::size_t>;

/// Places for each leaf, at most and without those around it. Fewer make the tree larger than the
/// processor's caches, more the look through them longer; measured.
constexpr std::size_t kPlacesOfALeaf = 16;
/// So often a leaf is halved on trial, to see which places are the best one nowhere in it.
constexpr int kTrials = 6;
/// So few are not worth it.
constexpr std::size_t kFew = 3;

/// A box with what may matter in it.
struct Region {
    MapBox box;
    Numbers places;
    Numbers quarters;
    Numbers edges;
};

class PlaceTreeBuilder {
public:
    PlaceTreeBuilder(
        const std::vector<TreePlace>& places, const std::vector<OutlineEdge>& edges, const CountryMap& map)
        : _places(places)
        , _contest(places)
        , _edges(edges)
        , _map(map) {
        repeatEdgesBeyondAntimeridian();
    }

    BuiltPlaceTree build() {
        Region earth = {.box = MapBox::wholeEarth(), .places = {}, .quarters = {}, .edges = {}};
        for (std::size_t place = 0; place < _places.size(); ++place) {
            earth.places.push_back(place);
            if (_places[place].town) {
                earth.quarters.push_back(place);
            }
        }
        earth.edges.resize(_edges.size());
        std::iota(earth.edges.begin(), earth.edges.end(), std::size_t{0});
        _tree.nodes.resize(std::bit_ceil(_places.size() / kPlacesOfALeaf + 1));
        grow(1, std::move(earth));
        return std::move(_tree);
    }

private:
    /// The boxes end at 180°, the edges do not.
    void repeatEdgesBeyondAntimeridian() {
        const auto shifted = [](OutlineEdge edge, double degrees) {
            edge.begin.longitude += degrees;
            edge.end.longitude += degrees;
            return edge;
        };
        const std::size_t count = _edges.size();
        for (std::size_t number = 0; number < count; ++number) {
            const auto edge = _edges[number];
            if (std::min(edge.begin.longitude, edge.end.longitude) < -179) {
                _edges.push_back(shifted(edge, 360));
            }
            if (std::max(edge.begin.longitude, edge.end.longitude) > 179) {
                _edges.push_back(shifted(edge, -360));
            }
        }
    }

    /// Goes down from left to right, so that the leaves come in their order.
    void grow(std::size_t node, Region region) {
        keepWhatMatters(region);
        if (node >= _tree.nodes.size()) {
            addLeaf(region);
            return;
        }
        const bool isMeridian = isHalvedByMeridian(region);
        const float boundary = boundaryOf(region, isMeridian);
        _tree.nodes[node] = {.boundary = boundary, .isMeridian = isMeridian ? 1U : 0U};
        auto [lower, upper] = halves(region, isMeridian, double{boundary});
        grow(2 * node, std::move(lower));
        grow(2 * node + 1, std::move(upper));
    }

    static bool isHalvedByMeridian(const Region& region) { return region.box.width() > region.box.height(); }

    static std::pair<Region, Region> halves(const Region& region, bool isMeridian, double boundary) {
        const auto boxes =
            isMeridian ? region.box.halvedByMeridian(boundary) : region.box.halvedByParallel(boundary);
        std::pair result(region, region);
        result.first.box = boxes.first;
        result.second.box = boxes.second;
        return result;
    }

    void keepWhatMatters(Region& region) const {
        std::erase_if(region.edges, [&](std::size_t edge) {
            return !region.box.mayBeCrossedBy(_edges[edge].begin, _edges[edge].end);
        });
        region.places = _contest.placesThatMayWin(region.box, countriesIn(region), region.places);
        region.quarters = _contest.quartersThatMayWin(region.box, region.places, region.quarters);
    }

    CountrySet countriesIn(const Region& region) const {
        CountrySet countries;
        for (const std::size_t edge : region.edges) {
            countries.set(_edges[edge].country);
        }
        countries.set(_map.countryAt(region.box.middle()).value());
        return countries.reset(gazetteer::kNoCountry);
    }

    /// With as many places on either side, or in the middle when there are none.
    float boundaryOf(const Region& region, bool isMeridian) const {
        const auto along = [isMeridian](const CLLocationCoordinate2D& coordinate) {
            return static_cast<float>(isMeridian ? coordinate.longitude : coordinate.latitude);
        };
        std::vector<float> values;
        for (const std::size_t place : region.places) {
            if (region.box.contains(_places[place].coordinate)) {
                values.push_back(along(_places[place].coordinate));
            }
        }
        if (values.empty()) {
            return along(region.box.middle());
        }
        const auto median = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
        std::ranges::nth_element(values, median);
        return std::clamp(*median, along(region.box.southWest()), along(region.box.northEast()));
    }

    void addLeaf(const Region& region) {
        std::set<std::size_t> winners;
        addWinners(winners, region, kTrials);
        const std::size_t first = _tree.candidates.size();
        const auto addThose = [&](const Numbers& numbers) {
            std::ranges::copy_if(numbers, std::back_inserter(_tree.candidates),
                [&](std::size_t number) { return winners.contains(number); });
            return _tree.candidates.size();
        };
        const std::size_t placesEnd = addThose(region.places);
        const std::size_t end = addThose(region.quarters);
        if (placesEnd - first > gazetteer::kMostPlacesOfALeaf ||
            end - placesEnd > gazetteer::kMostQuartersOfALeaf) {
            throw std::runtime_error("too many places close together");
        }
        gazetteer::Leaf leaf = {.firstCandidate = static_cast<std::uint32_t>(first)};
        leaf.placeCount = (placesEnd - first) & gazetteer::kMostPlacesOfALeaf;
        leaf.quarterCount = (end - placesEnd) & gazetteer::kMostQuartersOfALeaf;
        leaf.territory = territoryOf(region);
        _tree.leaves.push_back(leaf);
    }

    std::uint16_t territoryOf(const Region& region) {
        if (region.edges.empty()) {
            return _map.countryAt(region.box.middle()).value();
        }
        const std::size_t territory = gazetteer::kFirstPatch + _tree.patches.size();
        if (_tree.patches.size() == gazetteer::kMostPatches) {
            throw std::runtime_error("too many leaves that outlines cross");
        }
        _tree.patches.push_back(patchOf(region));
        return static_cast<std::uint16_t>(territory);
    }

    gazetteer::Patch patchOf(const Region& region) const {
        constexpr std::size_t kSide = gazetteer::Patch::kSide;
        const auto& southWest = region.box.southWest();
        const auto& northEast = region.box.northEast();
        const double height = (northEast.latitude - southWest.latitude) / kSide;
        const double width = (northEast.longitude - southWest.longitude) / kSide;
        gazetteer::Patch patch = {.south = static_cast<float>(southWest.latitude),
            .west = static_cast<float>(southWest.longitude),
            .rowsPerDegree = static_cast<float>(1 / height),
            .columnsPerDegree = static_cast<float>(1 / width)};
        for (std::size_t part = 0; part < patch.countries.size(); ++part) {
            const CLLocationCoordinate2D corner = {
                southWest.latitude + height * static_cast<double>(part / kSide),
                southWest.longitude + width * static_cast<double>(part % kSide)};
            const MapBox box(corner, {corner.latitude + height, corner.longitude + width});
            const bool isCrossed = std::ranges::any_of(region.edges,
                [&](std::size_t edge) { return box.mayBeCrossedBy(_edges[edge].begin, _edges[edge].end); });
            patch.countries[part] =
                isCrossed ? gazetteer::kSeveralCountries : _map.countryAt(box.middle()).value();
        }
        return patch;
    }

    void addWinners(std::set<std::size_t>& winners, const Region& region, int trials) const {
        if (trials == 0 || std::max(region.places.size(), region.quarters.size()) <= kFew) {
            winners.insert(region.places.begin(), region.places.end());
            winners.insert(region.quarters.begin(), region.quarters.end());
            return;
        }
        const bool isMeridian = isHalvedByMeridian(region);
        const auto middle = region.box.middle();
        auto [lower, upper] = halves(region, isMeridian, isMeridian ? middle.longitude : middle.latitude);
        for (auto* const half : {&lower, &upper}) {
            keepWhatMatters(*half);
            addWinners(winners, *half, trials - 1);
        }
    }

    const std::vector<TreePlace>& _places;
    PlaceContest _contest;
    std::vector<OutlineEdge> _edges;
    const CountryMap& _map;
    BuiltPlaceTree _tree;
};

} // namespace

BuiltPlaceTree buildPlaceTree(
    const std::vector<TreePlace>& places, const std::vector<OutlineEdge>& edges, const CountryMap& map) {
    return PlaceTreeBuilder(places, edges, map).build();
}

} // namespace exifcard

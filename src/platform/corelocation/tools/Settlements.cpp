#include "platform/corelocation/tools/Settlements.h"

#include "platform/corelocation/GazetteerFormat.h"
#include "platform/corelocation/PlaceScore.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>
#include <utility>

namespace exifcard {
namespace {

/// What a feature code tells about the size of a place.
struct Rank {
    std::string_view feature;
    double leastPopulation = 0; ///< Assumed where fewer or none are given.
    double extent = 1;          ///< How much farther it extends than a mere place with as many people.
};

constexpr Rank kRanks[] = {
    {"PPLC", 20'000, 1.2},
    {"PPLA", 10'000, 1.1},
    {"PPLA2", 3'000, 1.05},
};
constexpr Rank kOtherRank = {"", 800, 1};

/// Abandoned, destroyed, historical.
constexpr std::string_view kDeserted[] = {"PPLQ", "PPLW", "PPLH", "PPLCH"};
constexpr std::string_view kSectionOfPlace = "PPLX";

/// A quarter lies within so many times the radius of its town.
constexpr double kFarthestQuarter = 3;

const Rank& rankOf(const PlaceRow& row) {
    const auto* const rank = std::ranges::find(kRanks, row.feature, &Rank::feature);
    return rank != std::end(kRanks) ? *rank : kOtherRank;
}

/// A village of a thousand people extends about 600 m from its middle, a city of
/// a million 8 km: larger places are denser, so that the radius grows more slowly
/// than the root.
double extentRadius(const PlaceRow& row) {
    constexpr double kVillage = 1'000;
    constexpr double kRadiusOfVillage = 0.6;
    constexpr double kGrowth = 0.375;
    const auto& rank = rankOf(row);
    const double population = std::max(row.population, rank.leastPopulation);
    return rank.extent * kRadiusOfVillage * std::pow(population / kVillage, kGrowth);
}

double distanceBetween(const gazetteer::Point& a, const gazetteer::Point& b) {
    return std::hypot(a.x - b.x, a.y - b.y, a.z - b.z);
}

/// Looks for the towns of quarters, among the settlements in order of latitude.
class TownFinder {
public:
    explicit TownFinder(const std::vector<Settlement>& settlements) : _settlements(settlements) {
        for (const auto& settlement : settlements) {
            _points.push_back(pointAtCoordinate(settlement.row.coordinate));
        }
    }

    /// The town that draws the quarter most: nearness counts, and population more
    /// than for the extent, as a great city swallows its neighbours' outskirts.
    std::optional<std::size_t> townOfQuarter(std::size_t quarter) const {
        std::optional<std::size_t> town;
        double leastPull = std::numeric_limits<double>::infinity();
        const double latitude = _settlements[quarter].row.coordinate.latitude;
        const auto first = std::ranges::lower_bound(_settlements, latitude - kWindow, {}, latitudeOf);
        const auto last = std::ranges::upper_bound(_settlements, latitude + kWindow, {}, latitudeOf);
        for (auto candidate = first; candidate != last; ++candidate) {
            const auto number = static_cast<std::size_t>(candidate - _settlements.begin());
            const double pull = pullOnQuarter(number, quarter);
            if (pull < leastPull) {
                leastPull = pull;
                town = number;
            }
        }
        return town;
    }

private:
    static constexpr double kWindow = 0.7; // Degrees: no town extends farther.

    static double latitudeOf(const Settlement& settlement) { return settlement.row.coordinate.latitude; }

    /// Low when it draws strongly, infinite when it cannot be the quarter's town.
    double pullOnQuarter(std::size_t candidate, std::size_t quarter) const {
        constexpr double kWeightOfPopulation = 0.45;
        const auto& town = _settlements[candidate];
        const auto& section = _settlements[quarter].row;
        const double distance = distanceBetween(_points[candidate], _points[quarter]);
        if (town.row.feature == kSectionOfPlace || town.row.country != section.country ||
            town.row.population <= section.population || distance > kFarthestQuarter * town.radius) {
            return std::numeric_limits<double>::infinity();
        }
        return distance / std::pow(town.row.population, kWeightOfPopulation);
    }

    const std::vector<Settlement>& _settlements;
    std::vector<gazetteer::Point> _points;
};

} // namespace

std::vector<Settlement> settlementsFromRows(std::vector<PlaceRow> rows) {
    std::erase_if(rows, [](const PlaceRow& row) { return std::ranges::count(kDeserted, row.feature) > 0; });
    std::ranges::stable_sort(rows, {}, [](const PlaceRow& row) { return row.coordinate.latitude; });
    std::vector<Settlement> settlements;
    for (auto& row : rows) {
        const double radius = extentRadius(row);
        settlements.push_back({.row = std::move(row), .radius = radius, .town = std::nullopt});
    }
    const TownFinder finder(settlements);
    for (std::size_t number = 0; number < settlements.size(); ++number) {
        if (settlements[number].row.feature == kSectionOfPlace) {
            settlements[number].town = finder.townOfQuarter(number);
        }
    }
    return settlements;
}

} // namespace exifcard

#include "platform/corelocation/tools/CountryMapBuilder.h"

#include "platform/corelocation/MapGrid.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>

namespace exifcard {
namespace {

using gazetteer::kCellColumns;
using gazetteer::kCellRows;

std::size_t wrappedColumn(std::ptrdiff_t column) {
    constexpr auto kColumns = static_cast<std::ptrdiff_t>(kCellColumns);
    return static_cast<std::size_t>((column % kColumns + kColumns) % kColumns);
}

/// Columns of the grid from 180° west, negative or beyond the last for an unrolled longitude.
double columnsAtLongitude(double longitude) {
    return (longitude + 180) * double{gazetteer::kCellsPerDegree};
}

class CountryMapBuilder {
public:
    BuiltCountryMap build() {
        fillCells();
        addRunsToCells();
        return std::move(_map);
    }

    void addRing(const OutlineRow& outline, std::uint8_t country) {
        for (const auto& point : outline.ring) {
            _map.vertices.push_back(
                {static_cast<float>(point.longitude), static_cast<float>(point.latitude)});
            _map.countriesOfVertices.push_back(country);
        }
        const auto first = _map.vertices.size() - outline.ring.size();
        for (std::size_t point = 0; point + 1 < outline.ring.size(); ++point) {
            const auto& begin = outline.ring[point];
            const auto way = gazetteer::wayBetween(begin, outline.ring[point + 1]);
            addEdge({.vertex = static_cast<std::uint32_t>(first + point),
                .country = country,
                .begin = begin,
                .end = {begin.latitude + way.north, begin.longitude + way.east}});
        }
    }

private:
    struct Crossing {
        double latitude = 0;
        std::uint8_t country = gazetteer::kNoCountry;
    };

    void addEdge(const OutlineEdge& edge) {
        _map.edges.push_back(edge);
        addToCells(edge);
        addToMeridians(edge);
    }

    /// Adds the edge to every cell that it may come as near as `kShore` to.
    void addToCells(const OutlineEdge& edge) {
        constexpr double kNearDegrees = gazetteer::kShore / gazetteer::kKilometresPerDegree;
        const auto [south, north] = std::minmax(edge.begin.latitude, edge.end.latitude);
        const auto [west, east] = std::minmax(edge.begin.longitude, edge.end.longitude);
        const double farthestFromEquator = std::max(std::abs(south), std::abs(north)) + kNearDegrees;
        const double nearLongitude =
            kNearDegrees / std::max(std::cos(farthestFromEquator * gazetteer::kRadiansPerDegree), 0.01);
        const auto firstRow = gazetteer::cellRowAtLatitude(south - kNearDegrees);
        const auto lastRow = gazetteer::cellRowAtLatitude(north + kNearDegrees);
        const auto firstColumn =
            static_cast<std::ptrdiff_t>(std::floor(columnsAtLongitude(west - nearLongitude)));
        const auto lastColumn =
            static_cast<std::ptrdiff_t>(std::floor(columnsAtLongitude(east + nearLongitude)));
        for (auto row = firstRow; row <= lastRow; ++row) {
            for (auto column = firstColumn; column <= lastColumn; ++column) {
                _edgesOfCells[row * kCellColumns + wrappedColumn(column)].push_back(edge.vertex);
            }
        }
    }

    /// Notes where the edge crosses the meridians in the middle of the columns.
    void addToMeridians(const OutlineEdge& edge) {
        const auto [west, east] = std::minmax(edge.begin.longitude, edge.end.longitude);
        // The first middle that is not west of the edge, as far as the last west of its eastern end.
        for (double column = std::ceil(columnsAtLongitude(west) - gazetteer::kMiddleOfCell);
             column + gazetteer::kMiddleOfCell < columnsAtLongitude(east); ++column) {
            const double longitude = (column + gazetteer::kMiddleOfCell) / gazetteer::kCellsPerDegree - 180;
            const double part =
                (longitude - edge.begin.longitude) / (edge.end.longitude - edge.begin.longitude);
            const double latitude = edge.begin.latitude + part * (edge.end.latitude - edge.begin.latitude);
            _crossings[wrappedColumn(static_cast<std::ptrdiff_t>(column))].push_back(
                {latitude, edge.country});
        }
    }

    /// Goes down each meridian from the north pole, which is sea, and tells the country of every cell's
    /// middle.
    void fillCells() {
        _map.cells.resize(kCellRows * kCellColumns);
        for (std::size_t column = 0; column < kCellColumns; ++column) {
            auto& crossings = _crossings[column];
            std::ranges::sort(crossings, std::ranges::greater(), &Crossing::latitude);
            auto next = crossings.begin();
            auto country = gazetteer::kNoCountry;
            for (std::size_t row = kCellRows; row-- > 0;) {
                const double middle = gazetteer::middleOfCell(row, column).latitude;
                for (; next != crossings.end() && next->latitude > middle; ++next) {
                    country ^= next->country; // See CountryMap::countryAt.
                }
                _map.cells[row * kCellColumns + column].country = country;
            }
        }
    }

    void addRunsToCells() {
        for (std::size_t number = 0; number < _map.cells.size(); ++number) {
            const auto& edges = _edgesOfCells[number];
            if (edges.size() > gazetteer::kMostEdgesOfACell) {
                throw std::runtime_error("too many outlines in one cell of the map");
            }
            auto& cell = _map.cells[number];
            cell.firstRun = static_cast<std::uint32_t>(_map.runs.size());
            for (const auto edge : edges) {
                addToRuns(edge, cell.firstRun);
            }
            cell.runCount = static_cast<std::uint16_t>(_map.runs.size() - cell.firstRun);
        }
    }

    /// @param firstRun  Those from there on may be prolonged.
    void addToRuns(std::uint32_t edge, std::size_t firstRun) {
        auto& runs = _map.runs;
        if (runs.size() > firstRun && edge == runs.back().firstVertex + runs.back().edgeCount) {
            ++runs.back().edgeCount;
        } else {
            runs.push_back({.firstVertex = edge, .edgeCount = 1});
        }
    }

    BuiltCountryMap _map;
    std::vector<std::vector<std::uint32_t>> _edgesOfCells{kCellRows * kCellColumns};
    std::vector<std::vector<Crossing>> _crossings{kCellColumns};
};

} // namespace

BuiltCountryMap buildCountryMap(const std::vector<OutlineRow>& outlines,
    const std::function<std::uint8_t(const std::string& code)>& numberOfCountry) {
    CountryMapBuilder builder;
    for (const auto& outline : outlines) {
        builder.addRing(outline, numberOfCountry(outline.country));
    }
    return builder.build();
}

} // namespace exifcard

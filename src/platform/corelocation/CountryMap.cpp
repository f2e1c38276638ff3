#include "platform/corelocation/CountryMap.h"

#include "platform/corelocation/MapGrid.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace exifcard {
namespace {

using gazetteer::MapVector;

struct Edge {
    MapVector begin;
    MapVector end;
};

double cross(const MapVector& left, const MapVector& right) {
    return left.east * right.north - left.north * right.east;
}

double dot(const MapVector& left, const MapVector& right) {
    return left.east * right.east + left.north * right.north;
}

MapVector difference(const MapVector& left, const MapVector& right) {
    return {left.east - right.east, left.north - right.north};
}

/// Whether the edge and the way from the origin to `target` cross. A point on a
/// line counts to its right, so that a way through a vertex crosses just one of its edges.
bool isCrossed(const Edge& edge, const MapVector& target) {
    const auto along = difference(edge.end, edge.begin);
    return (cross(target, edge.begin) > 0) != (cross(target, edge.end) > 0) &&
           (cross(along, difference({}, edge.begin)) > 0) !=
               (cross(along, difference(target, edge.begin)) > 0);
}

/// Between a point and the edge, in kilometres.
double distanceToEdge(const Edge& edge, const MapVector& point, double degreeOfLongitude) {
    const auto inKilometres = [degreeOfLongitude](const MapVector& way) {
        return MapVector{way.east * degreeOfLongitude, way.north * gazetteer::kKilometresPerDegree};
    };
    const auto along = inKilometres(difference(edge.end, edge.begin));
    const auto way = inKilometres(difference(point, edge.begin));
    const double squaredLength = dot(along, along);
    const double part = squaredLength > 0 ? std::clamp(dot(way, along) / squaredLength, 0.0, 1.0) : 0;
    const auto apart = difference(way, {part * along.east, part * along.north});
    return std::sqrt(dot(apart, apart));
}

} // namespace

std::optional<CountryMap> CountryMap::make(std::span<const gazetteer::Cell> cells,
    std::span<const gazetteer::EdgeRun> runs,
    std::span<const gazetteer::Vertex> vertices,
    std::span<const std::uint8_t> countriesOfVertices) {
    if (cells.size() != gazetteer::kCellRows * gazetteer::kCellColumns ||
        vertices.size() != countriesOfVertices.size()) {
        return std::nullopt;
    }
    return CountryMap(cells, runs, vertices, countriesOfVertices);
}

/// A cell of the grid, seen from its middle.
struct CountryMap::Surroundings {
    CLLocationCoordinate2D middle;
    MapVector target; ///< The coordinate that was asked for.
    const gazetteer::Cell* cell = nullptr;
};

CountryMap::Surroundings CountryMap::surroundingsOf(const CLLocationCoordinate2D& coordinate) const {
    const std::size_t row = gazetteer::cellRowAtLatitude(coordinate.latitude);
    const std::size_t column = gazetteer::cellColumnAtLongitude(coordinate.longitude);
    const auto middle = gazetteer::middleOfCell(row, column);
    return {.middle = middle,
        .target = gazetteer::wayBetween(middle, coordinate),
        .cell = &_cells[row * gazetteer::kCellColumns + column]};
}

/// @return False when the cell is damaged.
template<typename Visit>
bool CountryMap::visitEdges(const Surroundings& surroundings, Visit visit) const {
    const auto& cell = *surroundings.cell;
    if (cell.firstRun > _runs.size() || cell.runCount > _runs.size() - cell.firstRun) {
        return false;
    }
    const auto wayToVertex = [this, &surroundings](std::size_t vertex) {
        return gazetteer::wayBetween(
            surroundings.middle, {_vertices[vertex].latitude, _vertices[vertex].longitude});
    };
    std::size_t edgesLeft = gazetteer::kMostEdgesOfACell;
    for (const auto& run : _runs.subspan(cell.firstRun, cell.runCount)) {
        const std::size_t end = std::size_t{run.firstVertex} + run.edgeCount;
        if (run.edgeCount > edgesLeft || end >= _vertices.size()) {
            return false;
        }
        edgesLeft -= run.edgeCount;
        auto begin = wayToVertex(run.firstVertex);
        for (std::size_t vertex = run.firstVertex; vertex < end; ++vertex) {
            const auto next = wayToVertex(vertex + 1);
            visit(Edge{begin, next}, vertex);
            begin = next;
        }
    }
    return true;
}

std::optional<std::uint8_t> CountryMap::countryAt(const CLLocationCoordinate2D& coordinate) const {
    const auto surroundings = surroundingsOf(coordinate);
    auto country = surroundings.cell->country;
    const bool isWhole = visitEdges(surroundings, [&](const Edge& edge, std::size_t vertex) {
        // A border is there once for either country, so that crossing it takes off the one and puts on the
        // other.
        if (isCrossed(edge, surroundings.target)) {
            country ^= _countriesOfVertices[vertex];
        }
    });
    return isWhole ? std::optional(country) : std::nullopt;
}

std::optional<CountryMap::Neighbour> CountryMap::nearestNeighbour(
    const CLLocationCoordinate2D& coordinate, std::uint8_t country) const {
    const auto surroundings = surroundingsOf(coordinate);
    const double degreeOfLongitude =
        gazetteer::kKilometresPerDegree * std::cos(coordinate.latitude * gazetteer::kRadiansPerDegree);
    Neighbour nearest;
    visitEdges(surroundings, [&](const Edge& edge, std::size_t vertex) {
        const auto countryOfEdge = _countriesOfVertices[vertex];
        if (countryOfEdge == country) {
            return;
        }
        const double distance = distanceToEdge(edge, surroundings.target, degreeOfLongitude);
        if (distance < nearest.distance) {
            nearest = {.country = countryOfEdge, .distance = distance};
        }
    });
    return nearest.country != gazetteer::kNoCountry ? std::optional(nearest) : std::nullopt;
}

} // namespace exifcard

#include "platform/corelocation/PlaceTree.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <numbers>

namespace exifcard {
namespace {

constexpr std::size_t kPointsOfALeaf = 8;

std::size_t leafCountForPoints(std::size_t pointCount) {
    return std::bit_ceil(pointCount / kPointsOfALeaf + 1);
}

float square(float value) {
    return value * value;
}

/// 0 within the limits.
float distanceToInterval(float value, float lower, float upper) {
    return std::max({lower - value, value - upper, 0.0F});
}

} // namespace

gazetteer::Point pointAtCoordinate(const CLLocationCoordinate2D& coordinate) {
    constexpr double kRadians = std::numbers::pi / 180;
    const double latitude = coordinate.latitude * kRadians;
    const double longitude = coordinate.longitude * kRadians;
    const double ofAxis = gazetteer::kEarthRadius * std::cos(latitude);
    return {
        .x = static_cast<float>(ofAxis * std::cos(longitude)),
        .y = static_cast<float>(ofAxis * std::sin(longitude)),
        .z = static_cast<float>(gazetteer::kEarthRadius * std::sin(latitude)),
    };
}

std::optional<PlaceTree> PlaceTree::make(
    std::span<const gazetteer::Point> points, std::span<const gazetteer::Node> nodes) {
    if (nodes.size() != nodeCount(points.size())) {
        return std::nullopt;
    }
    return PlaceTree(points, nodes);
}

std::size_t PlaceTree::nodeCount(std::size_t pointCount) {
    return 2 * leafCountForPoints(pointCount) - 1;
}

PlaceTree::Branch PlaceTree::branchAt(std::size_t node, const gazetteer::Point& point) const {
    const gazetteer::Node& box = _nodes[node];
    const float distance = std::sqrt(square(distanceToInterval(point.x, box.lower[0], box.upper[0])) +
                                     square(distanceToInterval(point.y, box.lower[1], box.upper[1])) +
                                     square(distanceToInterval(point.z, box.lower[2], box.upper[2])));
    return {.node = node, .distance = distance, .score = placeScore(distance, box.greatestRadius)};
}

PlaceTree::Found PlaceTree::placeAt(std::size_t index, const gazetteer::Point& point) const {
    const gazetteer::Point& place = _points[index];
    // The chord is shorter than the way along the ground by less than a metre at 50 km.
    const float distance =
        std::sqrt(square(place.x - point.x) + square(place.y - point.y) + square(place.z - point.z));
    return {.index = static_cast<std::uint32_t>(index),
        .distance = distance,
        .score = placeScore(distance, place.radius)};
}

std::optional<PlaceTree::Leaf> PlaceTree::leafAt(std::size_t node) const {
    const std::size_t leafCount = (_nodes.size() + 1) / 2;
    if (node + 1 < leafCount) {
        return std::nullopt;
    }
    const std::size_t leaf = node + 1 - leafCount;
    return Leaf{.begin = _points.size() * leaf / leafCount, .end = _points.size() * (leaf + 1) / leafCount};
}

} // namespace exifcard

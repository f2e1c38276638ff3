#include "platform/corelocation/PlaceTree.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <numbers>

namespace exifcard {
namespace {

/// At most, and half as many at least: fewer make the way down longer, more the look through them; measured.
constexpr std::size_t kPointsOfALeaf = 32;

std::size_t leafCountForPoints(std::size_t pointCount) {
    return std::bit_ceil(pointCount / kPointsOfALeaf + 1);
}

float square(float value) {
    return value * value;
}

/// Along the chord, which at 50 km is shorter than the way on the ground by less than a metre.
float squaredDistance(const gazetteer::Point& point, const gazetteer::Point& place) {
    return square(place.x - point.x) + square(place.y - point.y) + square(place.z - point.z);
}

/// What a place must beat. Squares are compared, so that roots are drawn of good places only.
class Bar {
public:
    explicit Bar(const PlaceTree::Search& search) : _reach(search.reach) { raise(search.scoreBelow); }

    /// Whether something with this radius, so far away, has a low enough score.
    bool isBeatenAt(float squaredDistance, float radius) const {
        return squaredDistance < square(std::min(radius * _factor + _summand, _reach));
    }
    /// `placeScore` turned round.
    void raise(float score) {
        _factor = score < 0 ? score + 1 : 1;
        _summand = score < 0 ? 0 : score;
    }

private:
    float _reach = 0;
    float _factor = 1;
    float _summand = 0;
};

/// A node that is still to be gone into.
struct Branch {
    std::uint32_t node = 1;
    std::array<float, 3> apart = {}; ///< From the point to all its places at least so far along each axis.

    float squaredDistance() const { return square(apart[0]) + square(apart[1]) + square(apart[2]); }
};

/// Goes down a tree for one search.
class Walk {
public:
    Walk(const PlaceTree::Search& search,
        std::span<const gazetteer::Point> points,
        std::span<const gazetteer::Node> nodes)
        : _point(search.point)
        , _points(points)
        , _nodes(nodes)
        , _bar(search) {}

    std::optional<PlaceTree::Found> best(const std::function<bool(std::uint32_t)>& isWanted) {
        putAside({});
        while (_count > 0) {
            Branch branch = _waiting[--_count];
            const std::size_t leafCount = _nodes.size() / 2;
            while (isPromising(branch, branch.node) && branch.node < leafCount) {
                branch = nearerHalf(branch);
            }
            if (isPromising(branch, branch.node)) {
                lookThrough(branch.node - leafCount, isWanted);
            }
        }
        return _best;
    }

private:
    /// @param node  The branch's own, or one above it, whose greatest radius is no smaller.
    bool isPromising(const Branch& branch, std::uint32_t node) const {
        return _bar.isBeatenAt(branch.squaredDistance(), _nodes[node].greatestRadius);
    }

    void putAside(const Branch& branch) { _waiting[_count++] = branch; }

    /// Puts the farther half aside.
    Branch nearerHalf(const Branch& branch) {
        // The grandchildren, which share a line of the cache, are on their way while the children are looked
        // at.
        __builtin_prefetch(_nodes.data() + std::min(4 * std::size_t{branch.node}, _nodes.size()));
        const auto& node = _nodes[branch.node];
        const std::size_t axis = std::min<std::size_t>(node.axis, 2);
        const float value = std::array{_point.x, _point.y, _point.z}[axis];
        const float beyondLower = value - node.lowerEnd;
        const float beforeUpper = node.upperBegin - value;
        const bool isLowerNearer = beyondLower < beforeUpper;
        Branch nearer = branch;
        Branch farther = branch;
        nearer.node = 2 * branch.node + (isLowerNearer ? 0 : 1);
        farther.node = 2 * branch.node + (isLowerNearer ? 1 : 0);
        farther.apart[axis] = isLowerNearer ? beforeUpper : beyondLower;
        if (isPromising(farther, branch.node)) {
            putAside(farther);
        }
        return nearer;
    }

    void lookThrough(std::size_t leaf, const std::function<bool(std::uint32_t)>& isWanted) {
        const std::size_t leafCount = _nodes.size() / 2;
        const std::size_t end = _points.size() * (leaf + 1) / leafCount;
        for (std::size_t index = _points.size() * leaf / leafCount; index < end; ++index) {
            const auto& place = _points[index];
            const float squared = squaredDistance(_point, place);
            const auto number = static_cast<std::uint32_t>(index);
            if (_bar.isBeatenAt(squared, place.radius) && isWanted(number)) {
                const float distance = std::sqrt(squared);
                _best = {.index = number, .distance = distance, .score = placeScore(distance, place.radius)};
                _bar.raise(_best->score);
            }
        }
    }

    gazetteer::Point _point;
    std::span<const gazetteer::Point> _points;
    std::span<const gazetteer::Node> _nodes;
    Bar _bar;
    std::optional<PlaceTree::Found> _best;
    // On the way down one branch a level is put aside, so there are never more than bits in a number.
    std::array<Branch, 32> _waiting;
    std::size_t _count = 0;
};

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
    return 2 * leafCountForPoints(pointCount); // The first one is not used.
}

std::optional<PlaceTree::Found> PlaceTree::find(
    const Search& search, const std::function<bool(std::uint32_t index)>& isWanted) const {
    return Walk(search, _points, _nodes).best(isWanted);
}

} // namespace exifcard

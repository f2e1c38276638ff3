#pragma once

#include "platform/corelocation/CLLocation.h"
#include "platform/corelocation/GazetteerFormat.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <span>

namespace exifcard {

/// The coordinate on the sphere of `GazetteerFormat.h`; its radius is 0.
gazetteer::Point pointAtCoordinate(const CLLocationCoordinate2D& coordinate);

/// How far from being in a place one is: −1 in its centre, 0 at the edge of its
/// extent, beyond that the kilometres to the edge.
///
/// So among the places that one stands in, that one counts whose centre is
/// relatively nearer: a city beats the hamlet next door, but in the middle of a
/// village it is the village. Outside of all it is the one with the nearest edge.
inline float placeScore(float distance, float radius) {
    return distance < radius ? distance / radius - 1 : distance - radius;
}

/// Finds the place that a point belongs to, in a balanced k-d tree
/// that lies in two arrays: node k, from 1 on, has the children 2k and 2k + 1, and leaf k of
/// n, in their order, has the points from size · k / n to size · (k + 1) / n.
class PlaceTree {
public:
    struct Found {
        std::uint32_t index = 0;
        float distance = 0; ///< Kilometres.
        float score = 0;
    };

    /// A tree over arrays that outlive it.
    /// @return Nothing when there are not `nodeCount` nodes. Any values in them are safe.
    static std::optional<PlaceTree> make(
        std::span<const gazetteer::Point> points, std::span<const gazetteer::Node> nodes);
    static std::size_t nodeCount(std::size_t pointCount);

    /// What to look for around a point.
    struct Search {
        gazetteer::Point point;
        float reach = 0; ///< Kilometres.
        /// Only what is better counts.
        float scoreBelow = std::numeric_limits<float>::infinity();
    };
    /// The place with the lowest score among those for which `isWanted(index)`, which is asked only about
    /// places better than all before.
    std::optional<Found> find(
        const Search& search, const std::function<bool(std::uint32_t index)>& isWanted) const;

private:
    PlaceTree(std::span<const gazetteer::Point> points, std::span<const gazetteer::Node> nodes)
        : _points(points)
        , _nodes(nodes) {}

    std::span<const gazetteer::Point> _points;
    std::span<const gazetteer::Node> _nodes;
};

} // namespace exifcard

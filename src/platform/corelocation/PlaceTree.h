#pragma once

#include "platform/corelocation/CLLocation.h"
#include "platform/corelocation/GazetteerFormat.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <utility>

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

/// Finds the place that a point belongs to, in a balanced tree of boxes that
/// lies in two arrays: node k has the children 2k + 1 and 2k + 2, and leaf k of
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
    /// The place with the lowest score for which `isWanted(index)`.
    template<typename Predicate>
    std::optional<Found> find(const Search& search, Predicate isWanted) const;

private:
    PlaceTree(std::span<const gazetteer::Point> points, std::span<const gazetteer::Node> nodes)
        : _points(points)
        , _nodes(nodes) {}

    struct Branch {
        std::size_t node = 0;
        float distance = 0; ///< To its box, in kilometres.
        float score = 0;    ///< No place in it has a lower one.
    };
    struct Leaf {
        std::size_t begin = 0;
        std::size_t end = 0;
    };

    Branch branchAt(std::size_t node, const gazetteer::Point& point) const;
    Found placeAt(std::size_t index, const gazetteer::Point& point) const;
    std::optional<Leaf> leafAt(std::size_t node) const;

    std::span<const gazetteer::Point> _points;
    std::span<const gazetteer::Node> _nodes;
};

template<typename Predicate>
std::optional<PlaceTree::Found> PlaceTree::find(const Search& search, Predicate isWanted) const {
    std::optional<Found> best;
    float scoreBelow = search.scoreBelow;
    const auto isPromising = [&](const auto& candidate) {
        return candidate.score < scoreBelow && candidate.distance <= search.reach;
    };
    // On the way down one branch a level is put aside, so there are never more than bits in a size.
    std::array<Branch, 64> waiting;
    std::size_t count = 0;
    const auto putAside = [&](const Branch& branch) {
        if (isPromising(branch)) {
            waiting[count++] = branch;
        }
    };
    const auto lookThrough = [&](const Leaf& leaf) {
        for (std::size_t index = leaf.begin; index < leaf.end; ++index) {
            const Found place = placeAt(index, search.point);
            if (isPromising(place) && isWanted(place.index)) {
                best = place;
                scoreBelow = place.score;
            }
        }
    };

    putAside(branchAt(0, search.point));
    while (count > 0) {
        const Branch branch = waiting[--count];
        if (!isPromising(branch)) {
            continue; // Something better was found meanwhile.
        }
        if (const auto leaf = leafAt(branch.node)) {
            lookThrough(*leaf);
            continue;
        }
        Branch nearer = branchAt(2 * branch.node + 1, search.point);
        Branch farther = branchAt(2 * branch.node + 2, search.point);
        if (farther.score < nearer.score) {
            std::swap(nearer, farther);
        }
        putAside(farther);
        putAside(nearer);
    }
    return best;
}

} // namespace exifcard

#pragma once

#include "platform/corelocation/CLLocation.h"
#include "platform/corelocation/GazetteerFormat.h"

#include <cstdint>
#include <optional>
#include <span>

namespace exifcard {

/// A k-d tree over the map of the earth. Its leaves tell the few places that can name a point in them, so
/// that a question goes down once. Node k, from 1 on, has the children 2k, in the south or west, and 2k + 1;
/// beyond the nodes the children are the leaves.
class PlaceTree {
public:
    struct Surroundings {
        /// The places with the lowest score somewhere in the leaf, among all or among those of a country
        /// that has a part in it.
        std::span<const gazetteer::Candidate> places;
        /// The same among the quarters of each of these places.
        std::span<const gazetteer::Candidate> quarters;
        /// None at sea. Absent near outlines.
        std::optional<std::uint8_t> country;
    };

    /// A tree over arrays that outlive it.
    /// @return Nothing when they don't fit one another. Any values in them are safe.
    static std::optional<PlaceTree> make(std::span<const gazetteer::Node> nodes,
        std::span<const gazetteer::Leaf> leaves,
        std::span<const gazetteer::Patch> patches,
        std::span<const gazetteer::Candidate> candidates);

    /// What to look at for a valid coordinate. Nothing when the file is damaged there.
    std::optional<Surroundings> surroundingsOf(const CLLocationCoordinate2D& coordinate) const;

private:
    PlaceTree(std::span<const gazetteer::Node> nodes,
        std::span<const gazetteer::Leaf> leaves,
        std::span<const gazetteer::Patch> patches,
        std::span<const gazetteer::Candidate> candidates)
        : _nodes(nodes)
        , _leaves(leaves)
        , _patches(patches)
        , _candidates(candidates) {}

    const gazetteer::Leaf& leafAt(const CLLocationCoordinate2D& coordinate) const;
    std::uint8_t countryAt(const gazetteer::Leaf& leaf, const CLLocationCoordinate2D& coordinate) const;

    std::span<const gazetteer::Node> _nodes;
    std::span<const gazetteer::Leaf> _leaves;
    std::span<const gazetteer::Patch> _patches;
    std::span<const gazetteer::Candidate> _candidates;
};

} // namespace exifcard

#include "platform/corelocation/PlaceTree.h"

#include <algorithm>
#include <bit>
#include <cstddef>

namespace exifcard {

std::optional<PlaceTree> PlaceTree::make(std::span<const gazetteer::Node> nodes,
    std::span<const gazetteer::Leaf> leaves,
    std::span<const gazetteer::Patch> patches,
    std::span<const gazetteer::Candidate> candidates) {
    if (!std::has_single_bit(nodes.size()) || leaves.size() != nodes.size()) {
        return std::nullopt;
    }
    return PlaceTree(nodes, leaves, patches, candidates);
}

std::optional<PlaceTree::Surroundings> PlaceTree::surroundingsOf(
    const CLLocationCoordinate2D& coordinate) const {
    const auto& leaf = leafAt(coordinate);
    const std::size_t count = std::size_t{leaf.placeCount} + leaf.quarterCount;
    if (leaf.firstCandidate > _candidates.size() || count > _candidates.size() - leaf.firstCandidate) {
        return std::nullopt;
    }
    const auto candidates = _candidates.subspan(leaf.firstCandidate, count);
    __builtin_prefetch(candidates.data());
    const auto country = countryAt(leaf, coordinate);
    return Surroundings{.places = candidates.first(leaf.placeCount),
        .quarters = candidates.subspan(leaf.placeCount),
        .country = country != gazetteer::kSeveralCountries ? std::optional(country) : std::nullopt};
}

const gazetteer::Leaf& PlaceTree::leafAt(const CLLocationCoordinate2D& coordinate) const {
    const std::size_t count = _nodes.size();
    std::size_t position = 1;
    while (position < count) {
        // The descendants in the third generation share a line of the cache, which is on its way meanwhile.
        const std::size_t descendants = 8 * position;
        __builtin_prefetch(
            descendants < count
                ? static_cast<const void*>(_nodes.data() + descendants)
                : static_cast<const void*>(_leaves.data() + std::min(descendants, 2 * count) - count));
        const auto& node = _nodes[position];
        const double value = node.isMeridian != 0 ? coordinate.longitude : coordinate.latitude;
        position = 2 * position + (value >= double{node.boundary} ? 1 : 0);
    }
    return _leaves[position - count];
}

std::uint8_t PlaceTree::countryAt(
    const gazetteer::Leaf& leaf, const CLLocationCoordinate2D& coordinate) const {
    if (leaf.territory < gazetteer::kFirstPatch) {
        return static_cast<std::uint8_t>(leaf.territory);
    }
    const std::size_t number = std::size_t{leaf.territory} - gazetteer::kFirstPatch;
    if (number >= _patches.size()) {
        return gazetteer::kSeveralCountries;
    }
    const double kLast = gazetteer::Patch::kSide - 1;
    const auto& patch = _patches[number];
    // Not a number becomes the last one.
    const auto partAt = [kLast](double way) {
        return static_cast<std::size_t>(std::max(0.0, std::min(kLast, way)));
    };
    const auto row = partAt((coordinate.latitude - double{patch.south}) * double{patch.rowsPerDegree});
    const auto column = partAt((coordinate.longitude - double{patch.west}) * double{patch.columnsPerDegree});
    return patch.countries[row * gazetteer::Patch::kSide + column];
}

} // namespace exifcard

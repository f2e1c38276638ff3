#include "platform/corelocation/tools/PlaceTreeBuilder.h"

#include "platform/corelocation/PlaceTree.h"

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>
#include <span>

namespace exifcard {
namespace {

class PlaceTreeBuilder {
public:
    explicit PlaceTreeBuilder(const std::vector<gazetteer::Point>& points) : _points(points) {
        _tree.order.resize(points.size());
        std::iota(_tree.order.begin(), _tree.order.end(), std::size_t{0});
        _tree.nodes.resize(PlaceTree::nodeCount(points.size()));
    }

    BuiltPlaceTree build() {
        arrange(1, 0, leafCount());
        for (const std::size_t number : _tree.order) {
            _tree.points.push_back(_points[number]);
        }
        return std::move(_tree);
    }

private:
    static std::array<float, 3> axesOf(const gazetteer::Point& point) { return {point.x, point.y, point.z}; }

    std::size_t leafCount() const { return _tree.nodes.size() / 2; }

    std::size_t beginOfLeaf(std::size_t leaf) const { return _points.size() * leaf / leafCount(); }

    /// Halves the places of some leaves across their longest side, fills the node over them, and goes on
    /// below.
    void arrange(std::size_t node, std::size_t firstLeaf, std::size_t leaves) {
        const auto places =
            std::span(_tree.order)
                .subspan(beginOfLeaf(firstLeaf), beginOfLeaf(firstLeaf + leaves) - beginOfLeaf(firstLeaf));
        _tree.nodes[node].greatestRadius = greatest(places, [](const auto& point) { return point.radius; });
        if (leaves == 1) {
            return;
        }
        const std::size_t middleLeaf = firstLeaf + leaves / 2;
        const auto lower = places.first(beginOfLeaf(middleLeaf) - beginOfLeaf(firstLeaf));
        const auto upper = places.subspan(lower.size());
        const std::size_t axis = longestSide(places);
        const auto along = [axis](const gazetteer::Point& point) { return axesOf(point)[axis]; };
        std::ranges::nth_element(
            places, upper.begin(), {}, [&](std::size_t number) { return along(_points[number]); });
        _tree.nodes[node].axis = static_cast<std::uint32_t>(axis);
        _tree.nodes[node].lowerEnd = greatest(lower, along);
        _tree.nodes[node].upperBegin = -greatest(upper, [&](const auto& point) { return -along(point); });
        arrange(2 * node, firstLeaf, leaves / 2);
        arrange(2 * node + 1, middleLeaf, leaves / 2);
    }

    /// What is greatest at one of the places; below everything when there are none.
    template<typename Value>
    float greatest(std::span<const std::size_t> places, Value value) const {
        float result = -std::numeric_limits<float>::infinity();
        for (const std::size_t number : places) {
            result = std::max(result, value(_points[number]));
        }
        return result;
    }

    std::size_t longestSide(std::span<const std::size_t> places) const {
        std::array<float, 3> sides = {};
        for (std::size_t axis = 0; axis < sides.size(); ++axis) {
            const auto along = [axis](const gazetteer::Point& point) { return axesOf(point)[axis]; };
            sides[axis] =
                greatest(places, along) + greatest(places, [&](const auto& point) { return -along(point); });
        }
        return static_cast<std::size_t>(std::ranges::max_element(sides) - sides.begin());
    }

    const std::vector<gazetteer::Point>& _points;
    BuiltPlaceTree _tree;
};

} // namespace

BuiltPlaceTree buildPlaceTree(const std::vector<gazetteer::Point>& points) {
    return PlaceTreeBuilder(points).build();
}

} // namespace exifcard

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
        const std::size_t leafCount = (_tree.nodes.size() + 1) / 2;
        arrange(0, 0, leafCount);
        for (const std::size_t number : _tree.order) {
            _tree.points.push_back(_points[number]);
        }
        return std::move(_tree);
    }

private:
    static std::array<float, 3> axesOf(const gazetteer::Point& point) { return {point.x, point.y, point.z}; }

    std::size_t beginOfLeaf(std::size_t leaf) const {
        return _points.size() * leaf / ((_tree.nodes.size() + 1) / 2);
    }

    /// Fills the node over some leaves, halves its places across its longest side, and goes on below.
    void arrange(std::size_t node, std::size_t firstLeaf, std::size_t leafCount) {
        const auto begin = _tree.order.begin() + static_cast<std::ptrdiff_t>(beginOfLeaf(firstLeaf));
        const auto end =
            _tree.order.begin() + static_cast<std::ptrdiff_t>(beginOfLeaf(firstLeaf + leafCount));
        const auto& box = _tree.nodes[node] = boxAround({begin, end});
        if (leafCount == 1) {
            return;
        }
        const std::size_t middleLeaf = firstLeaf + leafCount / 2;
        const auto middle = _tree.order.begin() + static_cast<std::ptrdiff_t>(beginOfLeaf(middleLeaf));
        const auto along = [this, axis = longestSide(box)](
                               std::size_t number) { return axesOf(_points[number])[axis]; };
        std::ranges::nth_element(begin, middle, end, {}, along);
        arrange(2 * node + 1, firstLeaf, leafCount / 2);
        arrange(2 * node + 2, middleLeaf, leafCount / 2);
    }

    gazetteer::Node boxAround(std::span<const std::size_t> numbers) const {
        gazetteer::Node box;
        box.lower.fill(std::numeric_limits<float>::infinity());
        box.upper.fill(-std::numeric_limits<float>::infinity());
        for (const std::size_t number : numbers) {
            const auto axes = axesOf(_points[number]);
            for (std::size_t axis = 0; axis < axes.size(); ++axis) {
                box.lower[axis] = std::min(box.lower[axis], axes[axis]);
                box.upper[axis] = std::max(box.upper[axis], axes[axis]);
            }
            box.greatestRadius = std::max(box.greatestRadius, _points[number].radius);
        }
        return box;
    }

    static std::size_t longestSide(const gazetteer::Node& box) {
        std::array<float, 3> sides = {};
        std::ranges::transform(box.upper, box.lower, sides.begin(), std::minus());
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

#pragma once

#include "platform/uikit/IndexPath.h"
#include "platform/uivalues/CGGeometry.h"

#include <optional>
#include <vector>

namespace exifcard {

class UICollectionViewFlowLayout;

/// Where the keys lead from an item of a list.
class ItemNavigation {
public:
    /// @param counts  Of the items of each section, as the layout has them.
    /// @param pageHeight  How far the page keys lead, in points.
    ItemNavigation(const UICollectionViewFlowLayout& layout,
        const std::vector<std::size_t>& counts,
        bool isRightToLeft,
        double pageHeight)
        : _layout(layout)
        , _counts(counts)
        , _isRightToLeft(isRightToLeft)
        , _pageHeight(pageHeight) {}

    /// Nothing where the list ends. Left and right go in reading direction, also into the next line.
    /// @param key  An arrow, Home, End or a page key, as the toolkit numbers them.
    std::optional<IndexPath> itemInDirection(IndexPath indexPath, int key) const;
    std::optional<IndexPath> firstItem() const;
    std::optional<IndexPath> lastItem() const;
    CGRect frameOf(IndexPath indexPath) const;

private:
    std::optional<IndexPath> neighbour(IndexPath indexPath, bool isNext) const;
    std::optional<IndexPath> itemInNextLine(IndexPath indexPath, bool isDown) const;
    std::optional<IndexPath> itemPageAway(IndexPath indexPath, bool isDown) const;

    const UICollectionViewFlowLayout& _layout;
    const std::vector<std::size_t>& _counts;
    bool _isRightToLeft;
    double _pageHeight;
};

} // namespace exifcard

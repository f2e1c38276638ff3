#include "platform/uikit/ItemNavigation.h"

#include "platform/uikit/UICollectionViewFlowLayout.h"

#include <QtCore/qnamespace.h>

#include <algorithm>
#include <cmath>

namespace exifcard {
namespace {

double middle(const CGRect& frame) {
    return frame.origin.x + frame.size.width / 2;
}

/// Whether one stands beside the other.
bool shareLine(const CGRect& one, const CGRect& other) {
    const double overlap = std::min(one.origin.y + one.size.height, other.origin.y + other.size.height) -
                           std::max(one.origin.y, other.origin.y);
    return overlap > 0;
}

} // namespace

std::optional<IndexPath> ItemNavigation::firstItem() const {
    for (std::size_t section = 0; section < _counts.size(); ++section) {
        if (_counts[section] > 0) {
            return IndexPath{section, 0};
        }
    }
    return std::nullopt;
}

std::optional<IndexPath> ItemNavigation::lastItem() const {
    for (std::size_t section = _counts.size(); section-- > 0;) {
        if (_counts[section] > 0) {
            return IndexPath{section, _counts[section] - 1};
        }
    }
    return std::nullopt;
}

/// The item after or before, also of another section.
std::optional<IndexPath> ItemNavigation::neighbour(IndexPath indexPath, bool isNext) const {
    if (isNext && indexPath.item + 1 < _counts[indexPath.section]) {
        return IndexPath{indexPath.section, indexPath.item + 1};
    }
    if (!isNext && indexPath.item > 0) {
        return IndexPath{indexPath.section, indexPath.item - 1};
    }
    std::size_t section = indexPath.section;
    while (isNext ? section + 1 < _counts.size() : section > 0) {
        section = isNext ? section + 1 : section - 1;
        if (_counts[section] > 0) {
            return IndexPath{section, isNext ? 0 : _counts[section] - 1};
        }
    }
    return std::nullopt;
}

std::optional<IndexPath> ItemNavigation::itemInDirection(IndexPath indexPath, int key) const {
    switch (key) {
    case Qt::Key_Left:
        return neighbour(indexPath, _isRightToLeft);
    case Qt::Key_Right:
        return neighbour(indexPath, !_isRightToLeft);
    case Qt::Key_Up:
    case Qt::Key_Down:
        return itemInNextLine(indexPath, key == Qt::Key_Down);
    case Qt::Key_Home:
        return firstItem();
    case Qt::Key_End:
        return lastItem();
    default:
        return itemPageAway(indexPath, key == Qt::Key_PageDown);
    }
}

/// Of the line below or above, the item that stands nearest.
std::optional<IndexPath> ItemNavigation::itemInNextLine(IndexPath indexPath, bool isDown) const {
    const CGRect from = frameOf(indexPath);
    std::optional<IndexPath> best;
    CGRect bestFrame;
    for (auto next = neighbour(indexPath, isDown); next; next = neighbour(*next, isDown)) {
        const CGRect frame = frameOf(*next);
        if (best && !shareLine(frame, bestFrame)) {
            break;
        }
        const bool isNearer =
            std::abs(middle(frame) - middle(from)) < std::abs(middle(bestFrame) - middle(from));
        if (!shareLine(frame, from) && (!best || isNearer)) {
            best = next;
            bestFrame = frame;
        }
    }
    return best;
}

std::optional<IndexPath> ItemNavigation::itemPageAway(IndexPath indexPath, bool isDown) const {
    const CGRect from = frameOf(indexPath);
    std::optional<IndexPath> item = indexPath;
    for (auto next = itemInNextLine(indexPath, isDown); next; next = itemInNextLine(*next, isDown)) {
        const CGRect frame = frameOf(*next);
        const double distance = std::abs(frame.origin.y - from.origin.y) + frame.size.height;
        if (item != indexPath && distance > _pageHeight) {
            break;
        }
        item = next;
    }
    return item;
}

CGRect ItemNavigation::frameOf(IndexPath indexPath) const {
    const auto attributes = _layout.layoutAttributesForItemAtIndexPath(indexPath);
    return attributes ? attributes->frame : CGRect{};
}

} // namespace exifcard

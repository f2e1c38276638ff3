#include "platform/uikit/UICollectionViewFlowLayout.h"

#include "platform/foundation/Log.h"
#include "platform/uikit/UICollectionView.h"

#include <algorithm>
#include <cmath>

namespace exifcard {
namespace {

/// Thirds and quarters of a width add up to it only nearly; no eye sees this much.
constexpr double kFitTolerance = 0.01;
/// Far beyond any screen, and far within what sums of a million items keep exact.
constexpr double kLongestSide = 1e6;

double saneLength(double length) {
    return std::isfinite(length) ? std::clamp(length, 0.0, kLongestSide) : 0;
}

CGSize saneSize(CGSize size) {
    return {saneLength(size.width), saneLength(size.height)};
}

UIEdgeInsets saneInsets(const UIEdgeInsets& insets) {
    return {
        saneLength(insets.top), saneLength(insets.left), saneLength(insets.bottom), saneLength(insets.right)};
}

double maxX(const CGRect& rect) {
    return rect.origin.x + rect.size.width;
}

double maxY(const CGRect& rect) {
    return rect.origin.y + rect.size.height;
}

bool touch(const CGRect& one, const CGRect& other) {
    return one.origin.x < maxX(other) && other.origin.x < maxX(one) && one.origin.y < maxY(other) &&
           other.origin.y < maxY(one);
}

/// How many items of that width a full line takes; at least one.
std::size_t fullLineCount(double width, double spacing, double available, std::size_t itemCount) {
    const double step = width + spacing;
    if (step <= 0) {
        return std::max<std::size_t>(itemCount, 1);
    }
    const double count = std::floor((available + spacing + kFitTolerance) / step);
    return static_cast<std::size_t>(std::clamp(count, 1.0, std::max(1.0, static_cast<double>(itemCount))));
}

/// The spacing of a full line of items of that width, as wide as the line has room for.
double fullLineSpacing(double width, double spacing, double available) {
    const double step = width + spacing;
    const double count = step > 0 ? std::floor((available + spacing + kFitTolerance) / step) : 1;
    return count > 1 ? std::max(0.0, (available - count * width) / (count - 1)) : spacing;
}

} // namespace

void UICollectionViewFlowLayout::invalidateLayout() {
    _isValid = false;
    _collectionView.setNeedsLayout();
}

bool UICollectionViewFlowLayout::prepare(double width) {
    const bool isRightToLeft = _collectionView.isRightToLeft();
    // Sizes may follow from which of the list's sides is the longer one.
    const bool isPortrait = _collectionView.width() < _collectionView.height();
    if (_isValid && width == _width && isRightToLeft == _isRightToLeft && isPortrait == _isPortrait) {
        return false;
    }
    _isValid = true;
    _isPortrait = isPortrait;
    _width = width;
    _isRightToLeft = isRightToLeft;
    _lines.clear();
    _sections.assign(_collectionView.numberOfSections(), {});
    double top = 0;
    for (std::size_t index = 0; index < _sections.size(); ++index) {
        top = prepareSection(index, top);
    }
    _contentSize = {width, top};
    return true;
}

double UICollectionViewFlowLayout::prepareSection(std::size_t index, double top) {
    const auto delegate = _collectionView.delegate();
    Section& section = _sections[index];
    section.itemCount = _collectionView.numberOfItemsInSection(index);
    const CGSize header =
        saneSize(delegate ? delegate->referenceSizeForHeaderInSection(_collectionView, *this, index)
                          : headerReferenceSize);
    section.header = {{0, top}, {_width, header.height}};
    const UIEdgeInsets insets =
        saneInsets(delegate ? delegate->insetForSectionAtIndex(_collectionView, *this, index) : sectionInset);
    const Measures measures = measuresOfSection(insets, index);
    askForSizes(section, index);
    section.bottom = layOutLines(section, measures, top + header.height + insets.top) + insets.bottom;
    return section.bottom;
}

UICollectionViewFlowLayout::Measures UICollectionViewFlowLayout::measuresOfSection(
    const UIEdgeInsets& insets, std::size_t index) const {
    const auto delegate = _collectionView.delegate();
    Measures measures{.left = insets.left,
        .available = std::max(0.0, _width - insets.left - insets.right),
        .lineSpacing = minimumLineSpacing,
        .itemSpacing = minimumInteritemSpacing};
    if (delegate) {
        measures.lineSpacing = delegate->minimumLineSpacingForSectionAtIndex(_collectionView, *this, index);
        measures.itemSpacing =
            delegate->minimumInteritemSpacingForSectionAtIndex(_collectionView, *this, index);
    }
    measures.lineSpacing = saneLength(measures.lineSpacing);
    measures.itemSpacing = saneLength(measures.itemSpacing);
    return measures;
}

void UICollectionViewFlowLayout::askForSizes(Section& section, std::size_t index) const {
    section.itemSize = saneSize(itemSize);
    const auto delegate = _collectionView.delegate();
    if (!delegate) {
        return;
    }
    for (std::size_t item = 0; item < section.itemCount; ++item) {
        const CGSize size =
            saneSize(delegate->sizeForItemAtIndexPath(_collectionView, *this, IndexPath{index, item}));
        if (item == 0) {
            section.itemSize = size;
        } else if (section.sizes.empty() && size != section.itemSize) {
            section.sizes.reserve(section.itemCount);
            section.sizes.assign(item, section.itemSize);
        }
        if (!section.isUniform()) {
            section.sizes.push_back(size);
        }
    }
}

double UICollectionViewFlowLayout::layOutLines(Section& section, const Measures& measures, double top) {
    section.firstLine = _lines.size();
    bool isTooWide = false;
    for (std::size_t item = 0; item < section.itemCount;) {
        Line line = lineFrom(section, measures, item);
        justify(section, measures, line);
        line.top = top;
        isTooWide = isTooWide || (line.count == 1 && section.sizeOfItem(item).width >= measures.available);
        item += line.count;
        top += line.height + (item < section.itemCount ? measures.lineSpacing : 0);
        _lines.push_back(line);
    }
    section.lineCount = _lines.size() - section.firstLine;
    if (isTooWide) {
        errorLog("UICollectionViewFlowLayout: an item must be narrower than the list without its insets.");
    }
    return top;
}

UICollectionViewFlowLayout::Line UICollectionViewFlowLayout::lineFrom(
    const Section& section, const Measures& measures, std::size_t firstItem) const {
    const std::size_t left = section.itemCount - firstItem;
    if (section.isUniform()) {
        const double width = section.itemSize.width;
        return {.firstItem = firstItem,
            .count = fullLineCount(width, measures.itemSpacing, measures.available, left),
            .height = section.itemSize.height};
    }
    Line line{.firstItem = firstItem};
    double width = -measures.itemSpacing;
    while (line.count < left) {
        const CGSize size = section.sizes[firstItem + line.count];
        width += measures.itemSpacing + size.width;
        if (line.count > 0 && width > measures.available + kFitTolerance) {
            break;
        }
        line.height = std::max(line.height, size.height);
        ++line.count;
    }
    return line;
}

void UICollectionViewFlowLayout::justify(const Section& section, const Measures& measures, Line& line) const {
    double width = 0;
    bool isOfEqualItems = true;
    const CGSize first = section.sizeOfItem(line.firstItem);
    if (section.isUniform()) {
        width = static_cast<double>(line.count) * first.width;
    } else {
        for (std::size_t item = line.firstItem; item < line.firstItem + line.count; ++item) {
            width += section.sizes[item].width;
            isOfEqualItems = isOfEqualItems && section.sizes[item] == first;
        }
    }
    const double spare = std::max(0.0, measures.available - width);
    const bool isLast = line.firstItem + line.count == section.itemCount;
    const bool isShort = first.width + measures.itemSpacing <=
                         spare - static_cast<double>(line.count - 1) * measures.itemSpacing + kFitTolerance;
    line.left = measures.left;
    line.spacing = measures.itemSpacing;
    if (isLast && isShort && isOfEqualItems && (section.isUniform() || line.count > 1)) {
        line.spacing = fullLineSpacing(first.width, measures.itemSpacing, measures.available);
    } else if (line.count == 1) {
        line.left += spare / 2;
    } else {
        line.spacing = spare / static_cast<double>(line.count - 1);
    }
}

CGSize UICollectionViewFlowLayout::collectionViewContentSize() const {
    return _contentSize;
}

CGRect UICollectionViewFlowLayout::mirrored(CGRect frame) const {
    if (_isRightToLeft) {
        frame.origin.x = _width - maxX(frame);
    }
    return frame;
}

UICollectionViewLayoutAttributes UICollectionViewFlowLayout::attributesOf(
    std::size_t section, const Line& line, std::size_t item) const {
    const Section& its = _sections[section];
    const CGSize size = its.sizeOfItem(item);
    const std::size_t before = item - line.firstItem;
    double x = line.left + static_cast<double>(before) * line.spacing;
    if (its.isUniform()) {
        x += static_cast<double>(before) * size.width;
    } else {
        for (std::size_t earlier = line.firstItem; earlier < item; ++earlier) {
            x += its.sizes[earlier].width;
        }
    }
    const double y = line.top + (line.height - size.height) / 2;
    return {.indexPath = {section, item}, .frame = mirrored({{x, y}, size})};
}

const UICollectionViewFlowLayout::Line& UICollectionViewFlowLayout::lineOfItem(
    const Section& section, std::size_t item) const {
    const auto first = _lines.begin() + static_cast<std::ptrdiff_t>(section.firstLine);
    const auto last = first + static_cast<std::ptrdiff_t>(section.lineCount);
    const auto after =
        std::partition_point(first, last, [item](const Line& line) { return line.firstItem <= item; });
    return *std::prev(after);
}

std::optional<UICollectionViewLayoutAttributes>
UICollectionViewFlowLayout::layoutAttributesForItemAtIndexPath(IndexPath indexPath) const {
    if (indexPath.section >= _sections.size() || indexPath.item >= _sections[indexPath.section].itemCount) {
        return std::nullopt;
    }
    const Section& section = _sections[indexPath.section];
    return attributesOf(indexPath.section, lineOfItem(section, indexPath.item), indexPath.item);
}

std::vector<UICollectionViewLayoutAttributes> UICollectionViewFlowLayout::layoutAttributesForElementsInRect(
    const CGRect& rect) const {
    std::vector<UICollectionViewLayoutAttributes> found;
    const auto first = std::ranges::partition_point(
        _sections, [&rect](const Section& section) { return section.bottom <= rect.origin.y; });
    for (auto section = first; section != _sections.end() && section->header.origin.y < maxY(rect);
         ++section) {
        const auto index = static_cast<std::size_t>(section - _sections.begin());
        if (section->header.size.height > 0 && touch(section->header, rect)) {
            found.push_back({.indexPath = {index, 0}, .frame = section->header, .isHeader = true});
        }
        appendItems(found, index, rect);
    }
    return found;
}

void UICollectionViewFlowLayout::appendItems(
    std::vector<UICollectionViewLayoutAttributes>& found, std::size_t section, const CGRect& rect) const {
    const Section& its = _sections[section];
    const auto begin = _lines.begin() + static_cast<std::ptrdiff_t>(its.firstLine);
    const auto end = begin + static_cast<std::ptrdiff_t>(its.lineCount);
    auto line = std::partition_point(
        begin, end, [&rect](const Line& one) { return one.top + one.height <= rect.origin.y; });
    for (; line != end && line->top < maxY(rect); ++line) {
        for (std::size_t item = line->firstItem; item < line->firstItem + line->count; ++item) {
            const auto attributes = attributesOf(section, *line, item);
            if (touch(attributes.frame, rect)) {
                found.push_back(attributes);
            }
        }
    }
}

} // namespace exifcard

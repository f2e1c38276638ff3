#pragma once

#include "platform/uikit/IndexPath.h"
#include "platform/uikit/UICollectionViewDelegates.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace exifcard {

class UICollectionView;

/// Where one element stands.
struct UICollectionViewLayoutAttributes {
    IndexPath indexPath;
    CGRect frame; ///< In content coordinates.
    bool isHeader = false;
};

/// Items in lines from top to bottom. A line takes items while they fit between the insets; its spare width
/// is shared between them, but a last, shorter line of equal items keeps the spacing of the full ones. An
/// item alone in a full-width line stands in the middle. Lines run from the right where the language does.
class UICollectionViewFlowLayout {
public:
    CGSize itemSize = {50, 50};
    CGSize headerReferenceSize = {0, 0};
    UIEdgeInsets sectionInset;
    double minimumLineSpacing = 10;
    double minimumInteritemSpacing = 10;

    explicit UICollectionViewFlowLayout(UICollectionView& collectionView) : _collectionView(collectionView) {}
    UICollectionViewFlowLayout(const UICollectionViewFlowLayout&) = delete;
    UICollectionViewFlowLayout& operator=(const UICollectionViewFlowLayout&) = delete;

    /// Lines are laid out anew in the next layout pass.
    void invalidateLayout();

    // In the state of the last layout pass.
    CGSize collectionViewContentSize() const;
    /// Those that touch the rectangle, in the order of the items.
    std::vector<UICollectionViewLayoutAttributes> layoutAttributesForElementsInRect(const CGRect& rect) const;
    std::optional<UICollectionViewLayoutAttributes> layoutAttributesForItemAtIndexPath(
        IndexPath indexPath) const;

private:
    friend class UICollectionView;

    /// A line of items; their frames follow from it, before mirroring.
    struct Line {
        std::size_t firstItem = 0;
        std::size_t count = 0;
        double top = 0;
        double height = 0;
        double left = 0;
        double spacing = 0;
    };
    struct Section {
        double bottom = 0; ///< With its inset.
        std::size_t firstLine = 0;
        std::size_t lineCount = 0;
        std::size_t itemCount = 0;
        CGRect header;             ///< Without height where there is none.
        CGSize itemSize;           ///< Of all items, unless `sizes` has them.
        std::vector<CGSize> sizes; ///< Empty where all items are of one size.

        CGSize sizeOfItem(std::size_t item) const { return sizes.empty() ? itemSize : sizes[item]; }
        bool isUniform() const { return sizes.empty(); }
    };
    /// What a section's items are laid out in.
    struct Measures {
        double left = 0;
        double available = 0; ///< Between the insets.
        double lineSpacing = 0;
        double itemSpacing = 0;
    };

    /// Lays out the sections that the collection view has counted, anew where something changed.
    /// @return Whether it did.
    bool prepare(double width);
    double prepareSection(std::size_t index, double top);
    Measures measuresOfSection(const UIEdgeInsets& insets, std::size_t index) const;
    void askForSizes(Section& section, std::size_t index) const;
    double layOutLines(Section& section, const Measures& measures, double top);
    Line lineFrom(const Section& section, const Measures& measures, std::size_t firstItem) const;
    void justify(const Section& section, const Measures& measures, Line& line) const;
    const Line& lineOfItem(const Section& section, std::size_t item) const;
    UICollectionViewLayoutAttributes attributesOf(
        std::size_t section, const Line& line, std::size_t item) const;
    void appendItems(
        std::vector<UICollectionViewLayoutAttributes>& found, std::size_t section, const CGRect& rect) const;
    CGRect mirrored(CGRect frame) const;

    UICollectionView& _collectionView;
    bool _isValid = false;
    bool _isRightToLeft = false;
    bool _isPortrait = false;
    double _width = 0;
    CGSize _contentSize;
    std::vector<Line> _lines;
    std::vector<Section> _sections;
};

} // namespace exifcard

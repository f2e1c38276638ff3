#pragma once

#include "platform/uikit/IndexPath.h"
#include "platform/uikit/UICollectionViewDelegates.h"

#include <cstdint>
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

    /// A line of items; their frames follow from it.
    struct Line {
        std::size_t section = 0;
        std::size_t firstItem = 0;
        std::uint32_t count = 0;
        double top = 0;
        double height = 0;
        double left = 0;
        double spacing = 0;
        bool isUniform = true; ///< All items have `itemSize`; otherwise sizes stand in `_sizes`.
        CGSize itemSize;
    };
    struct Section {
        std::size_t firstLine = 0;
        std::size_t lineCount = 0;
        std::size_t itemCount = 0;
        CGRect header;
        std::vector<CGSize> sizes; ///< Empty where all items are of one size.
    };

    void prepare(double width);

    UICollectionView& _collectionView;
    bool _isValid = false;
    double _width = 0;
    CGSize _contentSize;
    std::vector<Line> _lines;
    std::vector<Section> _sections;
};

} // namespace exifcard

#include "platform/uikit/UICollectionViewDelegates.h"

#include "platform/uikit/UICollectionViewFlowLayout.h"

namespace exifcard {

CGSize UICollectionViewDelegateFlowLayout::sizeForItemAtIndexPath(
    UICollectionView&, const UICollectionViewFlowLayout& layout, IndexPath) {
    return layout.itemSize;
}

UIEdgeInsets UICollectionViewDelegateFlowLayout::insetForSectionAtIndex(
    UICollectionView&, const UICollectionViewFlowLayout& layout, std::size_t) {
    return layout.sectionInset;
}

double UICollectionViewDelegateFlowLayout::minimumLineSpacingForSectionAtIndex(
    UICollectionView&, const UICollectionViewFlowLayout& layout, std::size_t) {
    return layout.minimumLineSpacing;
}

double UICollectionViewDelegateFlowLayout::minimumInteritemSpacingForSectionAtIndex(
    UICollectionView&, const UICollectionViewFlowLayout& layout, std::size_t) {
    return layout.minimumInteritemSpacing;
}

CGSize UICollectionViewDelegateFlowLayout::referenceSizeForHeaderInSection(
    UICollectionView&, const UICollectionViewFlowLayout& layout, std::size_t) {
    return layout.headerReferenceSize;
}

} // namespace exifcard

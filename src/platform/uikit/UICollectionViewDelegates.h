#pragma once

#include "platform/uikit/IndexPath.h"
#include "platform/uivalues/CGGeometry.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace exifcard {

class UICollectionReusableView;
class UICollectionView;
class UICollectionViewCell;
class UICollectionViewFlowLayout;

inline constexpr std::string_view kUICollectionElementKindSectionHeader =
    "UICollectionElementKindSectionHeader";
inline constexpr std::string_view kUICollectionElementKindSectionFooter =
    "UICollectionElementKindSectionFooter";

struct UIEdgeInsets {
    double top = 0;
    double left = 0;
    double bottom = 0;
    double right = 0;
    bool operator==(const UIEdgeInsets&) const = default;
};

/// What a collection view shows. Asked on the main queue, in layout passes.
class UICollectionViewDataSource {
public:
    UICollectionViewDataSource() = default;
    virtual ~UICollectionViewDataSource() = default;
    UICollectionViewDataSource(const UICollectionViewDataSource&) = delete;
    UICollectionViewDataSource& operator=(const UICollectionViewDataSource&) = delete;

    virtual std::size_t numberOfSectionsInCollectionView(UICollectionView&) { return 1; }
    virtual std::size_t numberOfItemsInSection(UICollectionView& collectionView, std::size_t section) = 0;
    /// A cell that was dequeued for the place; null leaves it empty.
    virtual UICollectionViewCell* cellForItemAtIndexPath(
        UICollectionView& collectionView, IndexPath indexPath) = 0;
    /// What an item shows, wherever it stands; nothing where that has no name. With it the press of an item
    /// outlives a reload.
    virtual std::optional<std::string> modelIdentifierForElementAtIndexPath(IndexPath) const {
        return std::nullopt;
    }
    /// Where that is shown now; nothing when it is no longer.
    virtual std::optional<IndexPath> indexPathForElementWithModelIdentifier(const std::string&) const {
        return std::nullopt;
    }
    /// Null for none.
    virtual UICollectionReusableView* viewForSupplementaryElementOfKind(
        UICollectionView&, std::string_view, IndexPath) {
        return nullptr;
    }
};

/// Hears of items that are coming up, and of those that are no longer.
class UICollectionViewDataSourcePrefetching {
public:
    UICollectionViewDataSourcePrefetching() = default;
    virtual ~UICollectionViewDataSourcePrefetching() = default;
    UICollectionViewDataSourcePrefetching(const UICollectionViewDataSourcePrefetching&) = delete;
    UICollectionViewDataSourcePrefetching& operator=(const UICollectionViewDataSourcePrefetching&) = delete;

    virtual void prefetchItemsAtIndexPaths(
        UICollectionView& collectionView, std::span<const IndexPath> indexPaths) = 0;
    virtual void cancelPrefetchingForItemsAtIndexPaths(UICollectionView&, std::span<const IndexPath>) {}
};

/// Hears what happens in a collection view, and says how its items are laid out.
class UICollectionViewDelegateFlowLayout {
public:
    UICollectionViewDelegateFlowLayout() = default;
    virtual ~UICollectionViewDelegateFlowLayout() = default;
    UICollectionViewDelegateFlowLayout(const UICollectionViewDelegateFlowLayout&) = delete;
    UICollectionViewDelegateFlowLayout& operator=(const UICollectionViewDelegateFlowLayout&) = delete;

    virtual void willDisplayCell(UICollectionView&, UICollectionViewCell&, IndexPath) {}
    virtual void didEndDisplayingCell(UICollectionView&, UICollectionViewCell&, IndexPath) {}
    virtual bool shouldSelectItemAtIndexPath(UICollectionView&, IndexPath) { return true; }
    virtual bool shouldDeselectItemAtIndexPath(UICollectionView&, IndexPath) { return true; }
    virtual void didSelectItemAtIndexPath(UICollectionView&, IndexPath) {}
    virtual void didDeselectItemAtIndexPath(UICollectionView&, IndexPath) {}
    virtual void scrollViewDidScroll(UICollectionView&) {}

    // The answers here are the layout's own properties.
    virtual CGSize sizeForItemAtIndexPath(
        UICollectionView& collectionView, const UICollectionViewFlowLayout& layout, IndexPath indexPath);
    virtual UIEdgeInsets insetForSectionAtIndex(
        UICollectionView& collectionView, const UICollectionViewFlowLayout& layout, std::size_t section);
    virtual double minimumLineSpacingForSectionAtIndex(
        UICollectionView& collectionView, const UICollectionViewFlowLayout& layout, std::size_t section);
    virtual double minimumInteritemSpacingForSectionAtIndex(
        UICollectionView& collectionView, const UICollectionViewFlowLayout& layout, std::size_t section);
    virtual CGSize referenceSizeForHeaderInSection(
        UICollectionView& collectionView, const UICollectionViewFlowLayout& layout, std::size_t section);
};

} // namespace exifcard

#pragma once

#include "platform/uikit/UICollectionView.h"
#include "platform/uikit/UIRefreshControl.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <QTest>

#include <algorithm>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace exifcard {

/// A data source and delegate that writes down what it is asked and told: "cell 0/3", "willDisplay 0/3".
class RecordingSource : public UICollectionViewDataSource,
                        public UICollectionViewDataSourcePrefetching,
                        public UICollectionViewDelegateFlowLayout {
public:
    std::vector<std::size_t> counts = {0};
    std::function<CGSize(IndexPath)> sizeOfItem; ///< The layout's own where empty.
    std::vector<std::string> record;
    std::size_t cellsMade = 0;
    bool isSelectionAllowed = true;
    std::function<void()> onScroll;
    std::function<void(IndexPath)> onCell;
    std::function<void(UICollectionViewCell&)> onDisplay;

    std::size_t numberOfSectionsInCollectionView(UICollectionView&) override { return counts.size(); }
    std::size_t numberOfItemsInSection(UICollectionView&, std::size_t section) override {
        return counts.at(section);
    }
    UICollectionViewCell* cellForItemAtIndexPath(UICollectionView& list, IndexPath indexPath) override {
        EXPECT_LT(indexPath.item, counts.at(indexPath.section)) << "asked for an item that is not there";
        note("cell", indexPath);
        auto& cell = list.dequeueReusableCellWithReuseIdentifier("cell", indexPath);
        if (onCell) {
            onCell(indexPath);
        }
        return &cell;
    }
    UICollectionReusableView* viewForSupplementaryElementOfKind(
        UICollectionView& list, std::string_view kind, IndexPath indexPath) override {
        note("header", indexPath);
        return &list.dequeueReusableSupplementaryViewOfKind(kind, "header", indexPath);
    }
    CGSize sizeForItemAtIndexPath(
        UICollectionView&, const UICollectionViewFlowLayout& layout, IndexPath indexPath) override {
        return sizeOfItem ? sizeOfItem(indexPath) : layout.itemSize;
    }
    void prefetchItemsAtIndexPaths(UICollectionView&, std::span<const IndexPath> indexPaths) override {
        noteAll("prefetch", indexPaths);
    }
    void cancelPrefetchingForItemsAtIndexPaths(
        UICollectionView&, std::span<const IndexPath> indexPaths) override {
        noteAll("cancel", indexPaths);
    }
    void willDisplayCell(UICollectionView&, UICollectionViewCell& cell, IndexPath indexPath) override {
        note("willDisplay", indexPath);
        if (onDisplay) {
            onDisplay(cell);
        }
    }
    void didEndDisplayingCell(UICollectionView&, UICollectionViewCell&, IndexPath indexPath) override {
        note("didEnd", indexPath);
    }
    bool shouldSelectItemAtIndexPath(UICollectionView&, IndexPath indexPath) override {
        note("shouldSelect", indexPath);
        return isSelectionAllowed;
    }
    bool shouldDeselectItemAtIndexPath(UICollectionView&, IndexPath indexPath) override {
        note("shouldDeselect", indexPath);
        return true;
    }
    void didSelectItemAtIndexPath(UICollectionView&, IndexPath indexPath) override {
        note("didSelect", indexPath);
    }
    void didDeselectItemAtIndexPath(UICollectionView&, IndexPath indexPath) override {
        note("didDeselect", indexPath);
    }
    void scrollViewDidScroll(UICollectionView&) override {
        if (onScroll) {
            onScroll();
        }
    }

    /// What was written down of that kind, and forgets all.
    std::vector<std::string> takeRecord(std::string_view prefix = {}) {
        std::vector<std::string> taken = std::exchange(record, {});
        std::erase_if(taken, [prefix](const std::string& line) { return !line.starts_with(prefix); });
        return taken;
    }

private:
    void note(std::string_view what, IndexPath indexPath) {
        record.push_back(fmt::format("{} {}/{}", what, indexPath.section, indexPath.item));
    }
    void noteAll(std::string_view what, std::span<const IndexPath> indexPaths) {
        for (const IndexPath indexPath : indexPaths) {
            note(what, indexPath);
        }
    }
};

/// A list, 375 by 600, of what a recording source has.
class ListFixture : public testing::Test {
protected:
    ListFixture() {
        list.registerClass("cell", [this] {
            ++source->cellsMade;
            return std::make_unique<UICollectionViewCell>();
        });
        list.registerSupplementaryClass(kUICollectionElementKindSectionHeader, "header",
            [] { return std::make_unique<UICollectionReusableView>(); });
        list.setDataSource(source);
        list.setDelegate(source);
        list.setPrefetchDataSource(source);
        list.resize(375, 600);
    }

    UICollectionViewFlowLayout& layout() { return list.collectionViewLayout(); }
    /// Full-width rows without gaps, 100 high.
    void showRows(std::size_t count) {
        source->counts = {count};
        layout().itemSize = {300, 100};
        layout().minimumLineSpacing = 0;
        list.show();
        list.layoutIfNeeded();
    }
    CGRect frameOfItem(std::size_t item, std::size_t section = 0) const {
        const auto attributes =
            list.collectionViewLayout().layoutAttributesForItemAtIndexPath({section, item});
        return attributes ? attributes->frame : CGRect{};
    }
    /// The middle of an item that is on screen, in the viewport.
    QPoint middleOf(std::size_t item) const {
        return list.cellForItemAtIndexPath({0, item})->geometry().center();
    }
    void tap(std::size_t item) { QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, middleOf(item)); }

    std::shared_ptr<RecordingSource> source = std::make_shared<RecordingSource>();
    UICollectionView list;
};

} // namespace exifcard

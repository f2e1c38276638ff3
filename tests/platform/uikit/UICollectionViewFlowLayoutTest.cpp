#include "platform/uikit/UICollectionViewFlowLayout.h"

#include "ListFixture.h"

#include <QApplication>

#include <random>

namespace exifcard {
namespace {

using testing::DoubleNear;

double maxX(const CGRect& rect) {
    return rect.origin.x + rect.size.width;
}

double maxY(const CGRect& rect) {
    return rect.origin.y + rect.size.height;
}

bool overlap(const CGRect& one, const CGRect& other) {
    constexpr double kTolerance = 1e-6;
    return one.origin.x < maxX(other) - kTolerance && other.origin.x < maxX(one) - kTolerance &&
           one.origin.y < maxY(other) - kTolerance && other.origin.y < maxY(one) - kTolerance;
}

class UICollectionViewFlowLayoutTest : public ListFixture {
protected:
    UICollectionViewFlowLayoutTest() {
        layout().sectionInset = {4, 4, 4, 4};
        layout().minimumLineSpacing = 2;
        layout().minimumInteritemSpacing = 2;
    }
    void layOut(std::vector<std::size_t> counts) {
        source->counts = std::move(counts);
        layout().invalidateLayout();
        list.reloadData();
        list.layoutIfNeeded();
    }
};

TEST_F(UICollectionViewFlowLayoutTest, FillsARowWithAsManyTilesAsItIsMadeFor) {
    struct Case {
        int width;
        CGSize tile;
        std::size_t perRow;
    };
    const auto details = [](double width) { return CGSize{width / 3 - 4, width / 3 - 4 + 12}; };
    const auto square = [](double width, double parts) {
        return CGSize{width / parts - 4, width / parts - 4};
    };
    const Case cases[] = {
        {375, {121, 133}, 3},
        {375, {89.75, 89.75}, 4},
        {320, details(320), 3},
        {390, details(390), 3},
        {414, details(414), 3},
        {431, details(431), 3},
        {768, square(768, 5), 5},
        {1024, square(1024, 7), 7},
        {1023, square(1023, 7), 7},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(fmt::format("{} tiles of {} in {}", c.perRow, c.tile.width, c.width));
        list.resize(c.width, 600);
        layout().itemSize = c.tile;
        layOut({3 * c.perRow});
        EXPECT_THAT(frameOfItem(0).origin.x, DoubleNear(4, 0.01));
        EXPECT_THAT(maxX(frameOfItem(c.perRow - 1)), DoubleNear(c.width - 4, 0.01));
        EXPECT_EQ(frameOfItem(c.perRow - 1).origin.y, 4);
        EXPECT_THAT(frameOfItem(c.perRow).origin.y, DoubleNear(4 + c.tile.height + 2, 1e-9));
        EXPECT_THAT(
            layout().collectionViewContentSize().height, DoubleNear(4 + 3 * c.tile.height + 2 * 2 + 4, 1e-9));
    }
}

TEST_F(UICollectionViewFlowLayoutTest, SharesTheSpareWidthAndKeepsItInAShorterLastLine) {
    layout().itemSize = {100, 50};
    layOut({5});
    // 367 points take three of 100 and leave 67 for two gaps.
    EXPECT_DOUBLE_EQ(frameOfItem(1).origin.x, 4 + 100 + 33.5);
    EXPECT_DOUBLE_EQ(maxX(frameOfItem(2)), 371);
    EXPECT_DOUBLE_EQ(frameOfItem(3).origin.x, 4);
    EXPECT_DOUBLE_EQ(frameOfItem(4).origin.x, 4 + 100 + 33.5);
    layOut({2}); // The first line is the last.
    EXPECT_DOUBLE_EQ(frameOfItem(0).origin.x, 4);
    EXPECT_DOUBLE_EQ(frameOfItem(1).origin.x, 4 + 100 + 33.5);
}

TEST_F(UICollectionViewFlowLayoutTest, PutsAnItemAloneInItsLineInTheMiddle) {
    layout().itemSize = {366, 275};
    layOut({2});
    EXPECT_DOUBLE_EQ(frameOfItem(0).origin.x, 4.5);
    EXPECT_DOUBLE_EQ(frameOfItem(1).origin.x, 4.5);
    EXPECT_DOUBLE_EQ(frameOfItem(1).origin.y, 4 + 275 + 2);
}

TEST_F(UICollectionViewFlowLayoutTest, CentresLowerItemsInTheLineOfTheTallest) {
    source->sizeOfItem = [](IndexPath indexPath) { return CGSize{100, indexPath.item == 1 ? 90.0 : 50.0}; };
    layOut({4});
    EXPECT_DOUBLE_EQ(frameOfItem(0).origin.y, 4 + 20);
    EXPECT_DOUBLE_EQ(frameOfItem(1).origin.y, 4);
    EXPECT_DOUBLE_EQ(frameOfItem(3).origin.y, 4 + 90 + 2);
}

TEST_F(UICollectionViewFlowLayoutTest, MirrorsWhereTheLanguageRunsFromTheRight) {
    layout().itemSize = {121, 133};
    list.setLayoutDirection(Qt::RightToLeft);
    layOut({4});
    EXPECT_DOUBLE_EQ(frameOfItem(0).origin.x, 375 - 4 - 121);
    EXPECT_DOUBLE_EQ(frameOfItem(2).origin.x, 4);
    EXPECT_DOUBLE_EQ(frameOfItem(3).origin.x, 375 - 4 - 121);
    EXPECT_EQ(list.indexPathForItemAtPoint({370, 10}), (IndexPath{0, 0}));
}

TEST_F(UICollectionViewFlowLayoutTest, AsksForHeadersOnlyWhereTheyHaveAHeight) {
    layout().itemSize = {121, 133};
    layOut({3, 3});
    EXPECT_THAT(source->takeRecord("header"), testing::IsEmpty());
    layout().headerReferenceSize = {0, 30};
    layOut({3, 3});
    EXPECT_THAT(source->takeRecord("header"), testing::ElementsAre("header 0/0", "header 1/0"));
    EXPECT_DOUBLE_EQ(frameOfItem(0).origin.y, 30 + 4);
    EXPECT_DOUBLE_EQ(frameOfItem(0, 1).origin.y, 30 + 4 + 133 + 4 + 30 + 4);
    const auto elements = layout().layoutAttributesForElementsInRect({{0, 0}, {375, 20}});
    ASSERT_EQ(elements.size(), 1U);
    EXPECT_TRUE(elements.front().isHeader);
}

TEST_F(UICollectionViewFlowLayoutTest, KeepsItsLinesUntilInvalidatedOrOfAnotherWidth) {
    layout().itemSize = {100, 50};
    layOut({3});
    layout().itemSize = {100, 80};
    list.setNeedsLayout();
    list.layoutIfNeeded();
    EXPECT_DOUBLE_EQ(frameOfItem(0).size.height, 50);
    layout().invalidateLayout();
    list.layoutIfNeeded();
    EXPECT_DOUBLE_EQ(frameOfItem(0).size.height, 80);
    list.resize(220, 600);
    list.layoutIfNeeded();
    EXPECT_DOUBLE_EQ(frameOfItem(2).origin.y, 4 + 80 + 2);
}

TEST_F(UICollectionViewFlowLayoutTest, SurvivesSizesThatAreNone) {
    const double bad[] = {0, -5, std::nan(""), HUGE_VAL, 1e300};
    for (const double length : bad) {
        SCOPED_TRACE(length);
        layout().itemSize = {length, length};
        layout().minimumInteritemSpacing = length;
        layOut({1000});
        EXPECT_TRUE(std::isfinite(layout().collectionViewContentSize().height));
        EXPECT_GE(layout().collectionViewContentSize().height, 8);
    }
}

/// Sections of items of any sizes, some of them of one size.
class Random {
public:
    explicit Random(unsigned seed) : _engine(seed) {}
    double between(double least, double most) {
        return std::uniform_real_distribution<>(least, most)(_engine);
    }
    std::size_t below(std::size_t bound) {
        return std::uniform_int_distribution<std::size_t>(0, bound - 1)(_engine);
    }

private:
    std::mt19937 _engine;
};

TEST_F(UICollectionViewFlowLayoutTest, KeepsTheLawsWhateverTheSizes) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(seed);
        Random random(seed);
        list.setLayoutDirection(seed % 2 == 0 ? Qt::LeftToRight : Qt::RightToLeft);
        layout().sectionInset = {random.between(0, 9), random.between(0, 9), random.between(0, 9), 3};
        layout().headerReferenceSize = {0, seed % 3 == 0 ? 20.0 : 0};
        std::vector<std::vector<CGSize>> sizes(1 + random.below(4));
        std::vector<std::size_t> counts;
        for (auto& section : sizes) {
            section.resize(random.below(40), {random.between(20, 150), random.between(10, 90)});
            for (CGSize& size : section) {
                size =
                    &section == sizes.data() ? size : CGSize{random.between(20, 300), random.between(10, 90)};
            }
            counts.push_back(section.size());
        }
        source->sizeOfItem = [&](IndexPath indexPath) { return sizes[indexPath.section][indexPath.item]; };
        layOut(counts);

        std::vector<CGRect> frames;
        for (std::size_t section = 0; section < counts.size(); ++section) {
            double top = 0;
            for (std::size_t item = 0; item < counts[section]; ++item) {
                const CGRect frame = frameOfItem(item, section);
                EXPECT_EQ(frame.size, sizes[section][item]);
                const UIEdgeInsets& insets = layout().sectionInset;
                const bool isMirrored = seed % 2 != 0;
                EXPECT_GE(frame.origin.x, (isMirrored ? insets.right : insets.left) - 0.011);
                EXPECT_LE(maxX(frame), 375 - (isMirrored ? insets.left : insets.right) + 0.011);
                EXPECT_GE(maxY(frame), top); // An item never lies wholly above an earlier one.
                top = frame.origin.y;
                frames.push_back(frame);
            }
        }
        for (std::size_t one = 0; one < frames.size(); ++one) {
            for (std::size_t other = one + 1; other < frames.size(); ++other) {
                EXPECT_FALSE(overlap(frames[one], frames[other])) << one << " and " << other;
            }
        }
        const CGRect rect{{random.between(0, 300), random.between(-50, 900)}, {random.between(1, 200), 150}};
        std::size_t expected = 0;
        for (const CGRect& frame : frames) {
            expected += frame.origin.x < maxX(rect) && rect.origin.x < maxX(frame) &&
                                frame.origin.y < maxY(rect) && rect.origin.y < maxY(frame)
                            ? 1
                            : 0;
        }
        auto found = layout().layoutAttributesForElementsInRect(rect);
        std::erase_if(found, [](const auto& attributes) { return attributes.isHeader; });
        EXPECT_EQ(found.size(), expected);
        EXPECT_TRUE(std::ranges::is_sorted(found, {}, &UICollectionViewLayoutAttributes::indexPath));
    }
}

} // namespace
} // namespace exifcard

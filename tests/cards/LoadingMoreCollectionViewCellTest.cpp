#include "cards/LoadingMoreCollectionViewCell.h"

#include "cards/LoadingBarView.h"
#include "platform/uikit/UIActivityIndicatorView.h"

#include <gtest/gtest.h>

#include <QTest>

namespace exifcard {
namespace {

TEST(LoadingMoreCollectionViewCellTest, ShowsABarThatGrowsOrStandsAtOnce) {
    LoadingMoreCollectionViewCell cell;
    cell.resize(358, 80);
    EXPECT_EQ(cell.progressBarView().shownWidth(), 0);
    cell.progressBarWidthConstraint.setConstant(358 * 0.5);
    cell.layOutBar(0.05);
    EXPECT_LT(cell.progressBarView().shownWidth(), 179);
    ASSERT_TRUE(QTest::qWaitFor([&cell] { return cell.progressBarView().shownWidth() == 179; }));
    cell.grab();
    EXPECT_EQ(cell.progressBarView().geometry(), QRect(0, 77, 179, 3));
    cell.progressBarWidthConstraint.setConstant(100);
    cell.layOutBar(0);
    EXPECT_EQ(cell.progressBarView().shownWidth(), 100);
}

TEST(LoadingMoreCollectionViewCellTest, StartsEachUseWithAnEmptyBar) {
    LoadingMoreCollectionViewCell cell;
    cell.startAnimatingLoading();
    EXPECT_TRUE(cell.loadingMoreActivityIndicatorView().isAnimating());
    cell.progressBarWidthConstraint.setConstant(200);
    cell.layOutBar(10);
    cell.prepareForReuse();
    EXPECT_EQ(cell.progressBarView().shownWidth(), 0);
    EXPECT_EQ(cell.progressBarWidthConstraint.constant(), 0);
}

} // namespace
} // namespace exifcard

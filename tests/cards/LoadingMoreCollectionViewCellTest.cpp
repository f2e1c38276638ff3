#include "cards/LoadingMoreCollectionViewCell.h"

#include "cards/LoadingBarView.h"
#include "platform/uikit/UIActivityIndicatorView.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QLabel>
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

TEST(LoadingMoreCollectionViewCellTest, ItsMessageStandsStillWhileItsNumberGrows) {
    LoadingMoreCollectionViewCell cell;
    cell.resize(358, 80);
    const QLabel& message = cell.loadingMessageLabel();
    cell.loadingMessageLabel().setText(QStringLiteral("Downloading photos from iCloud :- 11.11%"));
    cell.grab();
    const QRect place = message.geometry();
    EXPECT_NEAR(place.center().x(), 358 / 2, 1);
    EXPECT_GE(place.width(), message.fontMetrics().horizontalAdvance(message.text()));
    cell.loadingMessageLabel().setText(QStringLiteral("Downloading photos from iCloud :- 68.09%"));
    cell.grab();
    EXPECT_EQ(message.geometry(), place);
    EXPECT_TRUE(message.alignment() & Qt::AlignLeft);
}

TEST(LoadingMoreCollectionViewCellTest, ReadersAreToldOfItAlsoWithoutAMessage) {
    LoadingMoreCollectionViewCell cell;
    cell.resize(358, 80);
    auto* const item = QAccessible::queryAccessibleInterface(&cell);
    EXPECT_EQ(item->text(QAccessible::Name), QStringLiteral("Loading"));
    cell.loadingMessageLabel().setText(QStringLiteral("Downloading photos from iCloud :- 62.00%"));
    auto* const message = QAccessible::queryAccessibleInterface(&cell.loadingMessageLabel());
    EXPECT_NE(item->indexOfChild(message), -1);
    EXPECT_EQ(message->text(QAccessible::Name), cell.loadingMessageLabel().text());
}

} // namespace
} // namespace exifcard

#include "cards/ExifDataCollectionListViewCell.h"

#include "cards/CardLibrary.h"
#include "cards/ExifGridCollectionViewCell.h"
#include "cards/PlaceholderView.h"
#include "cards/PressView.h"
#include "hud/MBProgressHUD.h"
#include "library/QueueManager.h"
#include "platform/foundation/Operation.h"
#include "platform/photos/SlowFolder.h"
#include "platform/uikit/LOTAnimationView.h"
#include "platform/uikit/UITraitCollection.h"

namespace exifcard {
namespace {

class ExifDataCollectionListViewCellTest : public CardLibrary {
protected:
    /// Notes what cells ask of their screen.
    struct Owner : CardOwner {
        void didTapOnShareAsEXIFCard(IndexPath) override {}
        void didTapOnFrontSideImageView(IndexPath) override {}
        void didTapOnBackSideImageView(IndexPath) override {}
        void requestToDownloadiCloudAssetAtCell(ExifDataCollectionListViewCell& cell) override {
            asked.push_back(&cell);
        }
        std::vector<ExifDataCollectionListViewCell*> asked;
    };
};

TEST_F(ExifDataCollectionListViewCellTest, BringsAPictureOfItsSizeAndKeepsItWithTheRecord) {
    const auto record = recordOf(add("canon-6d-elephants.jpg"));
    const auto cell = makeCell(record);
    waitUntil([&cell] { return picture(*cell) != nullptr && !cell->isRequestingImage(); });
    EXPECT_EQ(picture(*cell), record->cachedThumbNailImage);
    waitUntil([&record] { return record->fileNameCached.load().has_value(); });
    EXPECT_EQ(record->fileNameCached.load(), "canon-6d-elephants.jpg");

    // The next cell has it at once.
    EXPECT_EQ(picture(*makeCell(record)), record->cachedThumbNailImage);
}

TEST_F(ExifDataCollectionListViewCellTest, AReusedCellTakesNothingOfThePhotoBefore) {
    const auto before = recordOf(add(kCanon));
    const auto after = recordOf(add("canon-6d-elephants.jpg"));
    for (const bool isDataPath : {false, true}) {
        SCOPED_TRACE(isDataPath);
        before->cachedThumbNailImage = nullptr;
        after->cachedThumbNailImage = nullptr;
        const auto cell = makeCell();
        cell->setShouldUseFullResolutionImage(isDataPath);
        cell->setExifInfo(before, [&cell] { return cell.get(); });
        cell->prepareForReuse();
        EXPECT_FALSE(cell->isRequestingImage());
        EXPECT_EQ(picture(*cell), nullptr);
        cell->setExifInfo(after, [&cell] { return cell.get(); });
        const auto other = makeCell(recordOf(assetNamed(kCanon))); // Asked for later than the first.
        waitUntil([&] { return picture(*other) && picture(*cell); });
        EXPECT_EQ(picture(*cell), after->cachedThumbNailImage);
        EXPECT_EQ(before->cachedThumbNailImage, nullptr);
    }
}

TEST_F(ExifDataCollectionListViewCellTest, WhatComesLateGoesToTheCellThatShowsThePlaceThen) {
    const auto record = recordOf(add(kCanon));
    const auto first = makeCell();
    const auto second = makeCell();
    Cell* shown = nullptr; // At that place.
    const auto block = [&shown] { return shown; };
    const auto& queue = QueueManager::sharedInstance().imageScaleDownOperationQueue;
    const auto waitForResult = [&queue](const Cell& cell) {
        waitUntil([&cell, &queue] { return !cell.isRequestingImage() && queue.operationCount() == 0; });
    };
    for (Cell* const cell : {first.get(), second.get()}) {
        cell->setShouldUseFullResolutionImage(true);
        cell->setExifInfo(record, block);
        waitForResult(*cell);
        EXPECT_EQ(picture(*cell), nullptr) << "nobody shows the place";
    }
    shown = second.get();
    first->setExifInfo(record, block);
    waitForResult(*first);
    EXPECT_NE(picture(*second), nullptr);
    EXPECT_EQ(picture(*first), nullptr);

    // Another photo at that place keeps its own picture.
    second->prepareForReuse();
    second->setExifInfo(recordOf(add("leica-q2.jpg")), nullptr);
    waitForResult(*second);
    first->setExifInfo(record, block);
    waitForResult(*first);
    EXPECT_EQ(picture(*second), nullptr);
}

TEST_F(ExifDataCollectionListViewCellTest, APhotoThatCannotBeDrawnIsAskedForInEveryWayAndThenLeft) {
    const auto cell = makeCell(recordOf(add(kBroken)));
    MBProgressHUD::showHUDAddedTo(*cell, /*animated=*/false);
    waitUntil([this] { return countOfLine("Image is NIL") == 1; });
    waitUntil([&cell] { return !cell->isRequestingImage(); });
    EXPECT_EQ(picture(*cell), nullptr);
    waitUntil([&cell] { return cell->findChild<PlaceholderView*>() != nullptr; });
    EXPECT_EQ(MBProgressHUD::hideAllHUDsForView(*cell, /*animated=*/false), 0U) << "hidden with the request";
    EXPECT_EQ(countOfLine("Image is NIL"), 1U);
    cell->resize(180, 192);
    cell->grab();
    const auto* const placeholder = cell->findChild<PlaceholderView*>();
    EXPECT_EQ(placeholder->size(), placeholder->parentWidget()->size());
    cell->prepareForReuse();
    EXPECT_EQ(cell->findChild<PlaceholderView*>(), nullptr);
}

TEST_F(ExifDataCollectionListViewCellTest, ACellThatGoesLeavesItsRequestsBehind) {
    makeCell(recordOf(add(kCanon)));
    makeCell(recordOf(add(kBroken)));
    const auto last = makeCell(recordOf(add("canon-6d-elephants.jpg")));
    waitUntil([&last] { return picture(*last) != nullptr; });
}

TEST_F(ExifDataCollectionListViewCellTest, TurnsProgressIntoFramesOfTheCloud) {
    struct Case {
        double progress;
        double frame;
        double speed;
        bool loops;
    };
    constexpr Case cases[] = {
        {0, 60, 1, true},
        {0.001, 61, 1, false},
        {0.5, 91, 1, false},
        {0.999, 120, 1, false},
        {1, 121, 1.4, false},
        {-1, 0, 1.4, false},
    };
    const auto cell = makeCell();
    LOTAnimationView& cloud = *cell->cloudDownloadingAnimationView();
    EXPECT_EQ(cloud.size(), QSize(35, 35));
    EXPECT_NEAR(cloud.frame().origin.x, 7.5, 1e-9);
    EXPECT_NEAR(cloud.frame().origin.y, 7.5, 1e-9);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.progress);
        cell->setICloudDownloadProgress(c.progress);
        EXPECT_EQ(cloud.targetFrame(), c.frame);
        EXPECT_EQ(cloud.animationSpeed(), c.speed);
        EXPECT_EQ(cloud.loopAnimation(), c.loops);
    }
    EXPECT_EQ(countOfLine("iCloudProgress == 0.0, Resuming infinite animation"), 1U);
    cell->prepareForReuse();
    EXPECT_EQ(cloud.animationSpeed(), 1);
}

TEST_F(ExifDataCollectionListViewCellTest, TellsOnceThatADownloadIsShownToItsEnd) {
    const auto cell = makeCell();
    std::vector<bool> ends;
    cell->setICloudDownloadProgress(1, [&ends](bool isFinished) { ends.push_back(isFinished); });
    waitUntil([&ends] { return !ends.empty(); });
    cell->stopShowingDownloadingFromCloud();
    LOTAnimationView& cloud = *cell->cloudDownloadingAnimationView();
    waitUntil([&cloud] { return cloud.currentFrame() == 0; });
    EXPECT_EQ(ends, std::vector<bool>{true});
}

TEST_F(ExifDataCollectionListViewCellTest, TheCloudBadgeAsksForAnOriginalThatLiesElsewhere) {
    const auto owner = std::make_shared<Owner>();
    const auto record = recordOf(addElsewhere(kCanon));
    const auto cell = makeCell(record);
    cell->setListViewController(owner);
    EXPECT_TRUE(isShown(*cell, "iCloudDownloadButton"));
    outlet<QAbstractButton>(*cell, "iCloudDownloadButton").click();
    EXPECT_EQ(owner->asked, std::vector<ExifDataCollectionListViewCell*>{cell.get()});
    const auto actions = cell->accessibilityCustomActions();
    ASSERT_EQ(actions.size(), 2U);
    EXPECT_EQ(actions[1].name, QStringLiteral("Download the original from iCloud"));
    actions[1].actionHandler();
    EXPECT_EQ(owner->asked.size(), 2U);

    record->hasFinishedDownloadingImageResultFromCloud = true;
    cell->setExifInfo(record, nullptr);
    EXPECT_FALSE(isShown(*cell, "iCloudDownloadButton"));
    cell->forceDownloadFromICloudIfNeeded();
    EXPECT_EQ(owner->asked.size(), 2U);
    EXPECT_EQ(cell->accessibilityCustomActions().size(), 1U);
}

TEST_F(ExifDataCollectionListViewCellTest, ReuseCancelsTheDownload) {
    const auto operation = BlockOperation::blockOperationWithBlock([] {});
    const auto cell = makeCell();
    cell->setICloudDownloadOperation(operation);
    EXPECT_FALSE(operation->isCancelled());
    cell->prepareForReuse();
    EXPECT_TRUE(operation->isCancelled());
}

TEST_F(ExifDataCollectionListViewCellTest, AFavouriteIsKeptByTheLibrary) {
    const auto asset = add(kCanon);
    const auto cell = makeCell(recordOf(asset));
    auto& heart = outlet<QAbstractButton>(*cell, "favoriteButton");
    cell->doubleTapGesture();
    EXPECT_TRUE(heart.isChecked());
    waitUntil([] { return assetNamed(kCanon)->isFavorite; });

    cell->setExifInfo(recordOf(assetNamed(kCanon)), nullptr);
    heart.click();
    EXPECT_FALSE(heart.isChecked());
    waitUntil([] { return !assetNamed(kCanon)->isFavorite; });
}

TEST_F(ExifDataCollectionListViewCellTest, APressedTileShrinksALittleAndGrowsBack) {
    const auto cell = makeCell();
    cell->setHighlighted(true);
    const QPointer<PressView> view = cell->findChild<PressView*>();
    ASSERT_FALSE(view.isNull());
    waitUntil([&view] { return view->shownScale() == 0.97; });
    cell->setHighlighted(false);
    waitUntil([&view] { return view.isNull(); });

    UITraitCollection::setCurrentTraitCollection({.isMotionReduced = true});
    cell->setHighlighted(true);
    EXPECT_EQ(cell->findChild<PressView*>(), nullptr);
    EXPECT_TRUE(cell->highlighted());
    UITraitCollection::setCurrentTraitCollection({});
}

TEST_F(ExifDataCollectionListViewCellTest, AMarkedTileHasABorder) {
    ExifGridCollectionViewCell cell;
    EXPECT_FALSE(isShown(cell, "isSelectedHolderView"));
    cell.setIsSelected(true);
    EXPECT_TRUE(isShown(cell, "isSelectedHolderView"));
    EXPECT_EQ(cell.layer().borderWidth, 3.5);
    cell.markUnSelected();
    EXPECT_EQ(cell.layer().borderWidth, 0);
    EXPECT_TRUE(cell.isSelected());
}

} // namespace
} // namespace exifcard

#include "screens/ExifDataListDataSource.h"

#include "hud/MBProgressHUD.h"
#include "metadata/ExifInformation.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/uikit/UICollectionView.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UIStoryboard.h"
#include "screens/ScreenTest.h"
#include "settings/PersistanceManager.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <set>
#include <thread>
#include <utility>

namespace exifcard {
namespace {

using testing::ElementsAre;

class ExifDataListDataSourceTest : public ScreenTest {
protected:
    /// How many records are there after each page of a list of that view type.
    static std::vector<std::size_t> countsAfterPages(std::uint64_t viewType) {
        // Not shown, so that no cell asks for more by itself.
        const auto screen = list(std::make_shared<ChosenPresentation>(viewType), 375, 0);
        std::vector<std::size_t> counts = {screen->dataSource->exifDataItemsArray.size()};
        while (screen->dataSource->hasMoreExifObjects && counts.size() < 10) {
            loadMore(*screen);
            counts.push_back(screen->dataSource->exifDataItemsArray.size());
        }
        return counts;
    }
};

TEST_F(ExifDataListDataSourceTest, ReadsFiftyCardsOrAHundredTilesAPage) {
    addPhotos(120);
    EXPECT_THAT(countsAfterPages(0), ElementsAre(50, 100, 120));
    EXPECT_THAT(countsAfterPages(1), ElementsAre(100, 120));
    EXPECT_THAT(countsAfterPages(2), ElementsAre(50, 100, 120));
    EXPECT_THAT(countsAfterPages(3), ElementsAre(100, 120));
    EXPECT_THAT(countsAfterPages(9), ElementsAre(50, 100, 120));
}

TEST_F(ExifDataListDataSourceTest, LooksForMoreOnceWhereThePhotosFillAPage) {
    addPhotos(50);
    EXPECT_THAT(countsAfterPages(0), ElementsAre(50, 50));
}

TEST_F(ExifDataListDataSourceTest, EndsALoadAtOnceWhileAnotherRuns) {
    addPhotos(60);
    const auto screen = list(std::make_shared<ChosenPresentation>(0), 375, 0);
    int completions = 0;
    screen->dataSource->loadMoreResultsWithCompletionBlock([&] { completions += 10; });
    screen->dataSource->loadMoreResultsWithCompletionBlock([&] { completions += 1; });
    EXPECT_EQ(completions, 1);
    waitUntil([&] { return completions == 11; });
    EXPECT_EQ(screen->dataSource->exifDataItemsArray.size(), 60U);
}

TEST_F(ExifDataListDataSourceTest, EndsALoadAtOnceWhileTheLibraryIsAsked) {
    addPhotos(60);
    const auto screen = list(std::make_shared<ChosenPresentation>(0), 375, 0);
    screen->refresh();
    int completions = 0;
    screen->dataSource->loadMoreResultsWithCompletionBlock([&] { ++completions; });
    EXPECT_EQ(completions, 1);
    EXPECT_FALSE(screen->dataSource->isLoadingMoreExifObjects);
    waitUntil([&] { return screen->completions == 2; });
    EXPECT_EQ(screen->dataSource->unFilteredExifDataItemsArray.size(), 50U);
}

TEST_F(ExifDataListDataSourceTest, TakesBackThePrefetchOfTheRecordThatStoodThere) {
    addPhotos(2, "canon-40d-northwest-rating5.jpg");
    const auto screen = list(std::make_shared<ChosenPresentation>(0), 375, 0);
    auto& dataSource = *screen->dataSource;
    const auto record = dataSource.exifDataItemsArray[0];
    const IndexPath first[] = {{0, 0}, {0, 9}};
    dataSource.prefetchItemsAtIndexPaths(*screen->collectionView, first);
    EXPECT_TRUE(record->imageFetchCompletionHandler);
    std::swap(dataSource.exifDataItemsArray[0], dataSource.exifDataItemsArray[1]);
    dataSource.cancelPrefetchingForItemsAtIndexPaths(*screen->collectionView, first);
    EXPECT_FALSE(record->imageFetchCompletionHandler);
}

class OpenRequestsTest : public ExifDataListDataSourceTest {
protected:
    OpenRequestsTest() {
        addPhotos(60);
        UIStoryboard::registerScene("ExifDetails", "ExifPhotoDetailViewControllerID",
            [] { return std::make_shared<ExifDataListViewController>(); });
        screen = list(std::make_shared<ChosenPresentation>(0), 375, 0);
        navigation = std::make_shared<UINavigationController>(screen);
        navigation->view();
    }
    ~OpenRequestsTest() override {
        UIStoryboard::registerScene("ExifDetails", "ExifPhotoDetailViewControllerID", {});
    }
    /// Carries out what was asked for, and answers the screen that it opened.
    std::shared_ptr<ExifDataListViewController> opened() const {
        screen->dataSource->checkAndGoToExifDetailsScreenForPHAssetID();
        waitUntil([&] { return navigation->viewControllers().size() == 2; });
        const auto found =
            std::dynamic_pointer_cast<ExifDataListViewController>(navigation->viewControllers().back());
        EXPECT_EQ(screen->exifPhotoDetailViewController.lock(), found);
        screen->dataSource->popFromDetailViewControllers();
        EXPECT_EQ(navigation->viewControllers().back(), screen);
        return found;
    }
    static std::string identifierOf(const std::string& name) { return assetNamed(name)->localIdentifier; }

    std::shared_ptr<WholeLibraryScreen> screen;
    std::shared_ptr<UINavigationController> navigation;
};

TEST_F(OpenRequestsTest, OpensPhotosThatArePagedThrough) {
    auto& dataSource = *screen->dataSource;
    dataSource.onLoadOpenPHAssetIDsArray = {identifierOf("5.jpg"), "none", identifierOf("7.jpg")};
    dataSource.onLoadOpenPHAssetIDsArrayCurrentIndexPosition = 1;
    const auto detail = opened();
    EXPECT_THAT(namesOf(detail->dataSource->exifDataItemsArray), ElementsAre("5.jpg", "7.jpg"));
    EXPECT_EQ(detail->currentIndexPath, (IndexPath{0, 1}));
    EXPECT_TRUE(dataSource.onLoadOpenPHAssetIDsArray.empty());
}

TEST_F(OpenRequestsTest, OpensARecordAndAPhotoThatIsNotListed) {
    auto& dataSource = *screen->dataSource;
    dataSource.onLoadOpenEXIFInformation = dataSource.exifDataItemsArray[2];
    EXPECT_THAT(namesOf(opened()->dataSource->exifDataItemsArray), ElementsAre("57.jpg"));
    EXPECT_EQ(dataSource.onLoadOpenEXIFInformation, nullptr);
    dataSource.onLoadOpenPHAssetID = identifierOf("2.jpg"); // Of the page that was not read yet.
    EXPECT_THAT(namesOf(opened()->dataSource->exifDataItemsArray), ElementsAre("2.jpg"));
    EXPECT_EQ(dataSource.onLoadOpenPHAssetID, "");
}

TEST_F(OpenRequestsTest, TapsAListedPhotoAndForgetsOneThatIsNowhere) {
    screen->presentation->setViewType(3);
    auto& dataSource = *screen->dataSource;
    dataSource.onLoadOpenPHAssetID = identifierOf("58.jpg");
    dataSource.checkAndGoToExifDetailsScreenForPHAssetID();
    EXPECT_TRUE(screen->selectedItems.contains(dataSource.exifDataItemsArray[1]));
    dataSource.onLoadOpenPHAssetID = "none";
    dataSource.checkAndGoToExifDetailsScreenForPHAssetID();
    EXPECT_EQ(dataSource.onLoadOpenPHAssetID, "");
    EXPECT_EQ(navigation->viewControllers().size(), 1U);
}

TEST_F(ExifDataListDataSourceTest, ShowsEachPhotoOnceHoweverOftenItIsRefreshed) {
    addPhotos(70);
    const auto screen = std::make_shared<WholeLibraryScreen>(std::make_shared<ChosenPresentation>(0));
    screen->view().resize(375, 0);
    screen->refresh();
    waitUntil([&] { return screen->dataSource->fetchResult != nullptr; });
    screen->refresh(); // While the first page is being read.
    waitUntil([&] { return screen->completions == 3 && !screen->dataSource->isLoading(); });
    const auto names = namesOf(screen->dataSource->unFilteredExifDataItemsArray);
    EXPECT_EQ(names.size(), 50U);
    EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), 50U);
}

TEST_F(ExifDataListDataSourceTest, DropsAPageOfTheListBeforeAndCallsBackAllTheSame) {
    addPhotos(120);
    const auto screen = list(std::make_shared<ChosenPresentation>(0), 375, 0);
    const auto firstPage = namesOf(screen->dataSource->unFilteredExifDataItemsArray);
    int dropped = 0;
    screen->dataSource->loadMoreResultsWithCompletionBlock([&] { ++dropped; });
    screen->refresh();
    waitUntil([&] { return dropped == 1 && screen->completions == 2 && !screen->dataSource->isLoading(); });
    loadMore(*screen);
    // On a slow machine the list may have asked for a further page by itself.
    const auto names = namesOf(screen->dataSource->unFilteredExifDataItemsArray);
    ASSERT_GE(names.size(), 100U);
    EXPECT_TRUE(std::equal(firstPage.begin(), firstPage.end(), names.begin()));
    EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), names.size());
    EXPECT_EQ(dropped, 1);
}

TEST_F(ExifDataListDataSourceTest, FiltersWhatWasReadWithoutReadingItAgain) {
    addPhotos(20, "canon-40d-northwest-rating5.jpg");
    addPhotos(10, "hostile-header.jpg"); // Without EXIF.
    addPhotos(30, "canon-40d-northwest-rating5.jpg");
    PersistanceManager::sharedInstance().setShouldHidePhotosWithoutExifDetails(true);
    const auto screen = list(std::make_shared<ChosenPresentation>(0), 375, 0);
    ExifDataListDataSource& dataSource = *screen->dataSource;
    EXPECT_EQ(dataSource.unFilteredExifDataItemsArray.size(), 50U);
    EXPECT_EQ(dataSource.exifDataItemsArray.size(), 40U);
    const auto shown = dataSource.exifDataItemsArray;

    std::filesystem::remove_all(photos); // Nothing is there to be read any more.
    PersistanceManager::sharedInstance().setShouldHidePhotosWithoutExifDetails(false);
    EXPECT_EQ(dataSource.exifDataItemsArray, dataSource.unFilteredExifDataItemsArray);
    std::thread([] {
        PersistanceManager::sharedInstance().setShouldHidePhotosWithoutExifDetails(true);
    }).join();
    waitUntil([&] { return dataSource.exifDataItemsArray == shown; });

    loadMore(*screen); // From record 50 on, not from the 40 that are shown.
    EXPECT_EQ(dataSource.unFilteredExifDataItemsArray.size(), 60U);
    EXPECT_EQ(namesOf(dataSource.unFilteredExifDataItemsArray).back(), "0.jpg");
}

TEST_F(ExifDataListDataSourceTest, TellsTheProgressOfPhotosElsewhereOnly) {
    EXPECT_EQ(
        ExifDataListDataSource::messageForProgress(0.256F, true), "Downloading photos from iCloud :- 25.60%");
    EXPECT_EQ(
        ExifDataListDataSource::messageForProgress(0.5F, true), "Downloading photos from iCloud :- 50.00%");
    EXPECT_EQ(ExifDataListDataSource::messageForProgress(0.5F, false), "");
}

TEST_F(ExifDataListDataSourceTest, CoversTheListWhileItsFirstPageLoadsButForTheQuietCards) {
    addPhotos(3);
    for (const std::uint64_t viewType : {0, 1, 2, 3}) {
        SCOPED_TRACE(viewType);
        const auto screen =
            std::make_shared<WholeLibraryScreen>(std::make_shared<ChosenPresentation>(viewType));
        screen->view().resize(375, 600);
        waitUntil([&] { return screen->dataSource->isLoadingMoreExifObjects; });
        const auto* const overlay = screen->dataSource->firstLoadingSpinnerHUD.data();
        ASSERT_EQ(overlay != nullptr, viewType != 2);
        if (overlay != nullptr) {
            EXPECT_EQ(overlay->mode(), MBProgressHUDMode::DeterminateHorizontalBar);
        }
        waitUntilLoaded(*screen);
        waitUntil([&] { return screen->dataSource->firstLoadingSpinnerHUD.isNull(); });
    }
}

TEST_F(ExifDataListDataSourceTest, LosesNothingAndCallsBackWhenTheScreenGoesWhileAPageLoads) {
    addPhotos(60);
    int completions = 0;
    auto screen = list(std::make_shared<ChosenPresentation>(0), 375, 0);
    screen->dataSource->loadMoreResultsWithCompletionBlock([&] { ++completions; });
    screen.reset();
    PersistanceManager::sharedInstance().setShouldHidePhotosWithoutExifDetails(true);
    waitUntil([&] { return completions == 1; });
}

} // namespace
} // namespace exifcard

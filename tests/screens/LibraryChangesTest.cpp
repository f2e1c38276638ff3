#include "metadata/ExifInformation.h"
#include "platform/photos/PHAssetChangeRequest.h"
#include "platform/uikit/UICollectionView.h"
#include "screens/EmptyStateView.h"
#include "screens/ScreenTest.h"

#include <gmock/gmock.h>

#include <QElapsedTimer>

#include <algorithm>
#include <set>

namespace exifcard {
namespace {

using testing::ElementsAre;

class LibraryChangesTest : public ScreenTest {
protected:
    using Records = ExifDataListDataSource::Records;

    static const Records& shown(const WholeLibraryScreen& screen) {
        return screen.dataSource->exifDataItemsArray;
    }
    static void change(const std::function<void()>& change) {
        EXPECT_EQ(PHPhotoLibrary::sharedPhotoLibrary().performChangesAndWait(change), std::nullopt);
    }
    static void remove(const std::vector<PHAssetPtr>& assets) {
        change([&] { PHAssetChangeRequest::deleteAssets(assets); });
    }
    /// Whether the list is the library, each photo once, and pages go on where it ends.
    static void expectInStep(WholeLibraryScreen& screen, std::size_t count) {
        while (screen.dataSource->hasMoreExifObjects) {
            loadMore(screen);
        }
        EXPECT_EQ(shown(screen), screen.dataSource->unFilteredExifDataItemsArray);
        const auto names = namesOf(shown(screen));
        EXPECT_EQ(names.size(), count);
        EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), count);
    }
};

TEST_F(LibraryChangesTest, AppendsNewPhotosAndRemovesDeletedOnes) {
    addPhotos(3);
    const auto screen = list(std::make_shared<ChosenPresentation>(0));
    addPhotos(2);
    waitUntil([&] { return shown(*screen).size() == 5; });
    EXPECT_THAT(namesOf(shown(*screen)), ElementsAre("2.jpg", "1.jpg", "0.jpg", "4.jpg", "3.jpg"));
    remove({assetNamed("1.jpg"), assetNamed("4.jpg")});
    waitUntil([&] { return shown(*screen).size() == 3; });
    EXPECT_THAT(namesOf(shown(*screen)), ElementsAre("2.jpg", "0.jpg", "3.jpg"));
    expectInStep(*screen, 3);
}

TEST_F(LibraryChangesTest, ReplacesChangedPhotosInPlaceAndKeepsThemSelected) {
    addPhotos(3);
    const auto screen = list(std::make_shared<ChosenPresentation>(3));
    const Records before = shown(*screen);
    screen->selectedItems = {before[1], before[2]};
    change([] { PHAssetChangeRequest::changeRequestForAsset(*assetNamed("1.jpg")).setFavorite(true); });
    waitUntil([&] { return shown(*screen)[1] != before[1]; });
    EXPECT_TRUE(shown(*screen)[1]->phAsset->isFavorite);
    EXPECT_EQ(shown(*screen)[0], before[0]);
    EXPECT_EQ(screen->selectedItems, (std::set{shown(*screen)[1], before[2]}));
    remove({assetNamed("0.jpg")});
    waitUntil([&] { return shown(*screen).size() == 2; });
    EXPECT_EQ(screen->selectedItems, (std::set{shown(*screen)[1]}));
}

TEST_F(LibraryChangesTest, LeavesNewPhotosBehindTheLoadedOnesToALaterPage) {
    addPhotos(60);
    const auto screen = list(std::make_shared<ChosenPresentation>(0), 375, 0);
    CatalogueWriter writer(catalogue());
    for (const double time : {1e9 - 5, 1e9 + 100}) { // The oldest and the youngest of all.
        const std::string name = time < 1e9 ? "oldest.jpg" : "youngest.jpg";
        std::filesystem::copy_file(EXIFCARD_TEST_DATA "/mwg.jpg", photos / name);
        writer.storeAsset(photo(name, {.creationDate = Date{time}}));
    }
    writer.commit();
    waitUntil([&] { return shown(*screen).size() == 51; });
    EXPECT_EQ(namesOf(shown(*screen)).back(), "youngest.jpg");
    expectInStep(*screen, 62);
    EXPECT_EQ(namesOf(shown(*screen)).back(), "oldest.jpg");
}

TEST_F(LibraryChangesTest, TakesInWhatChangedWhileAPageLoadedAfterIt) {
    addPhotos(60);
    const auto screen = list(std::make_shared<ChosenPresentation>(0), 375, 0);
    screen->dataSource->loadMoreResultsWithCompletionBlock({});
    remove({assetNamed("59.jpg"), assetNamed("0.jpg")});
    addPhotos(1);
    EXPECT_EQ(shown(*screen).size(), 50U);
    waitUntil([&] { return shown(*screen).size() == 59; });
    EXPECT_EQ(namesOf(shown(*screen)).back(), "60.jpg");
    expectInStep(*screen, 59);
}

TEST_F(LibraryChangesTest, BeginsAnewWithMoreThanAHundredNewPhotos) {
    addPhotos(3);
    const auto screen = list(std::make_shared<ChosenPresentation>(1), 375, 0);
    addPhotos(100);
    waitUntil([&] { return shown(*screen).size() == 103; });
    EXPECT_EQ(namesOf(shown(*screen)).front(), "2.jpg"); // A hundred are appended.
    addPhotos(101);
    waitUntil([&] { return namesOf(shown(*screen)).front() == "203.jpg"; });
    EXPECT_EQ(shown(*screen).size(), 100U);
    addPhotos(101); // Within the same second: later, but not lost.
    waitUntil([&] { return namesOf(shown(*screen)).front() == "304.jpg"; });
    expectInStep(*screen, 305);
}

TEST_F(LibraryChangesTest, DropsAPhotoThatWasDeletedBeforeItsPageWasRead) {
    addPhotos(60);
    const auto screen = list(std::make_shared<ChosenPresentation>(0), 375, 0);
    auto& dataSource = *screen->dataSource;
    const auto asset = shown(*screen)[3]->phAsset;
    dataSource.unFilteredExifDataItemsArray[3] = ExifInformation::init(); // As it is read of an asset gone.
    dataSource.filterLoadedRecords();
    remove({assetNamed(nameOf(*asset))});
    waitUntil([&] { return shown(*screen).size() == 49; });
    EXPECT_TRUE(
        std::ranges::all_of(shown(*screen), [](const auto& record) { return record->phAsset != nullptr; }));
    expectInStep(*screen, 59);
}

TEST_F(LibraryChangesTest, TakesInTheChangesOfAnImportOnceASecond) {
    const auto screen = list(std::make_shared<ChosenPresentation>(0), 375, 0);
    const int reloads = screen->reloads;
    QElapsedTimer clock;
    clock.start();
    for (std::size_t count = 1; count <= 12; ++count) {
        addPhotos(1);
        const qint64 next = clock.elapsed() + 100;
        waitUntil([&] { return clock.elapsed() >= next; });
    }
    waitUntil([&] { return shown(*screen).size() == 12; });
    EXPECT_LE(screen->reloads - reloads, 2 + clock.elapsed() / 1000);
}

TEST_F(LibraryChangesTest, LetsChangesWaitWhileItsScreenIsOutOfSight) {
    addPhotos(2);
    const auto hidden = list(std::make_shared<ChosenPresentation>(0));
    hidden->beginAppearanceTransition(true, false);
    hidden->endAppearanceTransition();
    hidden->beginAppearanceTransition(false, false);
    hidden->endAppearanceTransition();
    const auto seen = list(std::make_shared<ChosenPresentation>(0));
    addPhotos(1);
    waitUntil([&] { return shown(*seen).size() == 3; });
    remove({assetNamed("0.jpg")});
    waitUntil([&] { return shown(*seen).size() == 2; });
    EXPECT_THAT(namesOf(shown(*hidden)), ElementsAre("1.jpg", "0.jpg"));
    hidden->beginAppearanceTransition(true, false);
    hidden->endAppearanceTransition();
    waitUntil([&] { return namesOf(shown(*hidden)) == namesOf(shown(*seen)); });
}

TEST_F(LibraryChangesTest, TellsWhenTheLastPhotoHasGone) {
    addPhotos(1);
    const auto screen = list(std::make_shared<ListPresentation>());
    remove({assetNamed("0.jpg")});
    waitUntil([&] { return screen->collectionView->findChild<EmptyStateView*>() != nullptr; });
    addPhotos(1);
    waitUntil([&] { return screen->collectionView->findChild<EmptyStateView*>() == nullptr; });
}

TEST_F(LibraryChangesTest, OutlivesAScreenThatGoesWhileItsChangesAreLookedAt) {
    addPhotos(3);
    auto screen = list(std::make_shared<ChosenPresentation>(0));
    const std::weak_ptr<ExifDataListDataSource> dataSource = screen->dataSource;
    addPhotos(20);
    screen.reset();
    addPhotos(1);
    waitUntil([&] { return dataSource.expired(); });
}

} // namespace
} // namespace exifcard

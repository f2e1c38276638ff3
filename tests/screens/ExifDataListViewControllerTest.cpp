#include "screens/ExifDataListViewController.h"

#include "cards/ExifGridCollectionViewCell.h"
#include "cards/ExifGridWithDetailsCollectionViewCell.h"
#include "cards/LoadingMoreCollectionViewCell.h"
#include "library/QueueManager.h"
#include "metadata/ExifInformation.h"
#include "platform/uikit/UICollectionView.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UIRefreshControl.h"
#include "platform/uikit/UIStoryboard.h"
#include "platform/uikit/UITraitCollection.h"
#include "screens/EmptyStateView.h"
#include "screens/ListScreenRequests.h"
#include "screens/ScreenTest.h"
#include "settings/PersistanceManager.h"

#include <gmock/gmock.h>

#include <QAccessible>
#include <QTest>

#include <atomic>

namespace exifcard {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

/// A program for that kind of device, until the object ends.
class Idiom {
public:
    explicit Idiom(UIUserInterfaceIdiom idiom) : _before(UITraitCollection::currentTraitCollection()) {
        auto traits = _before;
        traits.userInterfaceIdiom = idiom;
        UITraitCollection::setCurrentTraitCollection(traits);
    }
    ~Idiom() { UITraitCollection::setCurrentTraitCollection(_before); }
    Idiom(const Idiom&) = delete;
    Idiom& operator=(const Idiom&) = delete;

private:
    UITraitCollection _before;
};

class ExifDataListViewControllerTest : public ScreenTest {
protected:
    /// Presses or moves the mouse over the middle of that item.
    static void mouse(void (*action)(QWidget*, const QPoint&), WholeLibraryScreen& screen, std::size_t item) {
        const auto frame =
            screen.collectionView->collectionViewLayout().layoutAttributesForItemAtIndexPath({0, item});
        ASSERT_TRUE(frame);
        const CGRect visible = screen.collectionView->bounds();
        action(screen.collectionView->viewport(),
            QPoint(int(frame->frame.origin.x + frame->frame.size.width / 2 - visible.origin.x),
                int(frame->frame.origin.y + frame->frame.size.height / 2 - visible.origin.y)));
        QTest::qWait(1);
    }
    static void press(QWidget* view, const QPoint& place) {
        QTest::mousePress(view, Qt::LeftButton, {}, place);
        // A sideways beginning, so that the gesture knows where it goes.
        for (int step = 4; step <= 16; step += 4) {
            QTest::mouseMove(view, place + QPoint(step, 0));
        }
    }
    static void move(QWidget* view, const QPoint& place) { QTest::mouseMove(view, place); }
    static void release(QWidget* view, const QPoint& place) {
        QTest::mouseRelease(view, Qt::LeftButton, {}, place);
    }

    /// The positions of the selected items.
    static std::vector<std::size_t> selection(const WholeLibraryScreen& screen) {
        std::vector<std::size_t> positions;
        const auto& records = screen.dataSource->exifDataItemsArray;
        for (std::size_t item = 0; item < records.size(); ++item) {
            if (screen.selectedItems.contains(records[item])) {
                positions.push_back(item);
            }
        }
        return positions;
    }
};

TEST_F(ExifDataListViewControllerTest, SizesItsCellsByDeviceOrientationAndKind) {
    struct Case {
        UIUserInterfaceIdiom idiom;
        int width;
        int height;
        std::uint64_t viewType;
        bool showsDetails;
        CGSize size;
    };
    const Case cases[] = {
        {UIUserInterfaceIdiom::Phone, 375, 667, 0, false, {366, 275}},
        {UIUserInterfaceIdiom::Phone, 375, 667, 2, true, {366, 275}},
        {UIUserInterfaceIdiom::Phone, 375, 667, 1, false, {89.75, 89.75}},
        {UIUserInterfaceIdiom::Phone, 375, 667, 3, true, {121, 133}},
        {UIUserInterfaceIdiom::Pad, 768, 1024, 0, false, {374, 295}},
        {UIUserInterfaceIdiom::Pad, 1024, 768, 0, false, {1024.0 / 3 - 8, 295}},
        {UIUserInterfaceIdiom::Pad, 768, 1024, 1, false, {768.0 / 5 - 4, 768.0 / 5 - 4}},
        {UIUserInterfaceIdiom::Pad, 1024, 768, 1, false, {1024.0 / 7 - 4, 1024.0 / 7 - 4}},
        {UIUserInterfaceIdiom::Pad, 768, 1024, 1, true, {188, 200}},
        {UIUserInterfaceIdiom::Pad, 1024, 768, 3, true, {1024.0 / 6 - 4, 1024.0 / 6 + 8}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.width << ", view type " << c.viewType);
        const Idiom idiom(c.idiom);
        const auto presentation = std::make_shared<ChosenPresentation>(c.viewType, c.showsDetails);
        const auto screen = list(presentation, c.width, c.height);
        screen->view().show();
        QTest::qWait(1);
        const CGSize size = screen->sizeOfExifCardItemForDevice();
        EXPECT_DOUBLE_EQ(size.width, c.size.width);
        EXPECT_DOUBLE_EQ(size.height, c.size.height);
        EXPECT_EQ(screen->sizeOfiPhoneiPadLoadingMoreCell(), (CGSize{c.width - 17.0, 80}));
        screen->collectionView->setContentInset({0, 10, 0, 20});
        EXPECT_EQ(screen->sizeOfiPhoneiPadLoadingMoreCell(), (CGSize{c.width - 47.0, 80}));
    }
}

TEST_F(ExifDataListViewControllerTest, AsksForMoreNearItsEnd) {
    addPhotos(120);
    struct Case {
        std::uint64_t viewType;
        std::size_t item;
        bool asks;
    };
    const Case cases[] = {{0, 44, true}, {0, 43, false}, {0, 45, false}, {1, 88, true}, {1, 87, false},
        {3, 88, true}, {2, 44, true}, {9, 44, false}};
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "view type " << c.viewType << ", item " << c.item);
        const auto screen = list(std::make_shared<ChosenPresentation>(c.viewType), 375, 0);
        ExifGridCollectionViewCell cell;
        screen->willDisplayCell(*screen->collectionView, cell, {0, c.item});
        EXPECT_EQ(screen->dataSource->isLoadingMoreExifObjects, c.asks);
        waitUntilLoaded(*screen);
    }
    const auto screen = list(std::make_shared<ChosenPresentation>(0), 375, 0);
    LoadingMoreCollectionViewCell loadingMore;
    screen->willDisplayCell(*screen->collectionView, loadingMore, {1, 0});
    EXPECT_TRUE(screen->dataSource->isLoadingMoreExifObjects);
    waitUntilLoaded(*screen);
}

TEST_F(ExifDataListViewControllerTest, ShowsTheCellsOfItsKind) {
    addPhotos(5);
    const auto screen = list(std::make_shared<ListPresentation>());
    screen->view().show();
    waitUntilLoaded(*screen);
    auto* const first = screen->collectionView->cellForItemAtIndexPath({0, 0});
    auto* const tile = dynamic_cast<ExifGridWithDetailsCollectionViewCell*>(first);
    ASSERT_NE(tile, nullptr); // The settings answer the grid with details, whatever is stored.
    EXPECT_EQ(tile->exifInfo(), screen->dataSource->exifDataItemsArray[0]);
    EXPECT_EQ(nameOf(*tile->exifInfo()->phAsset), "4.jpg");
}

TEST_F(ExifDataListViewControllerTest, SelectsARangeByPanningSideways) {
    addPhotos(24);
    const auto presentation = std::make_shared<ChosenPresentation>(3);
    const auto screen = list(presentation);
    screen->view().show();
    waitUntilLoaded(*screen);
    mouse(press, *screen, 8);
    EXPECT_FALSE(screen->collectionView->cellForItemAtIndexPath({0, 8})->highlighted()) << "it may be a pan";
    mouse(move, *screen, 9);
    mouse(move, *screen, 12);
    EXPECT_THAT(selection(*screen), ElementsAre(8, 9, 10, 11, 12));
    mouse(move, *screen, 10);
    EXPECT_THAT(selection(*screen), ElementsAre(8, 9, 10));
    mouse(move, *screen, 6);
    EXPECT_THAT(selection(*screen), ElementsAre(6, 7, 8));
    EXPECT_FALSE(screen->collectionView->isScrollEnabled());
    mouse(release, *screen, 6);
    EXPECT_TRUE(screen->collectionView->isScrollEnabled());
    EXPECT_FALSE(screen->isSwipeSelecting);

    mouse(press, *screen, 8); // Begun on a selected item, a pan deselects.
    mouse(move, *screen, 6);
    EXPECT_THAT(selection(*screen), ElementsAre());
    mouse(move, *screen, 7);
    EXPECT_THAT(selection(*screen), ElementsAre(6));
    mouse(release, *screen, 7);
}

TEST_F(ExifDataListViewControllerTest, BeginsARangeAtTheFirstItemThatAPanReaches) {
    addPhotos(12);
    const auto screen = list(std::make_shared<ChosenPresentation>(3));
    screen->view().show();
    waitUntilLoaded(*screen);
    QWidget* const viewport = screen->collectionView->viewport();
    const QRect first = screen->collectionView->cellForItemAtIndexPath({0, 0})->geometry();
    press(viewport, {0, first.center().y()}); // In the margin, and with less than its width to go.
    QTest::mouseMove(viewport, {2, first.center().y()});
    ASSERT_TRUE(screen->isSwipeSelecting);
    screen->panGestureStartingSelectedIndexPath.reset(); // As where a wider margin was pressed.
    screen->selectedItems.clear();
    screen->previouslySelectedIndexPath.reset();
    mouse(move, *screen, 1);
    mouse(move, *screen, 3);
    EXPECT_THAT(selection(*screen), ElementsAre(1, 2, 3));
    mouse(release, *screen, 3);
}

TEST_F(ExifDataListViewControllerTest, GoesInTheMiddleOfAPan) {
    addPhotos(12);
    auto screen = list(std::make_shared<ChosenPresentation>(3));
    screen->view().show();
    waitUntilLoaded(*screen);
    mouse(press, *screen, 4);
    ASSERT_TRUE(screen->isSwipeSelecting);
    const QPointer<UICollectionView> view = screen->collectionView;
    const std::weak_ptr<WholeLibraryScreen> weak = screen;
    screen.reset();
    EXPECT_TRUE(weak.expired());
    ASSERT_TRUE(view); // It goes a turn later.
    QTest::mouseMove(view->viewport(), {200, 60});
    QTest::mouseRelease(view->viewport(), Qt::LeftButton, {}, {200, 60});
    waitUntil([&] { return view.isNull(); });
}

TEST_F(ExifDataListViewControllerTest, LeavesTheSelectionModeWithNothingSelected) {
    addPhotos(3);
    const auto presentation = std::make_shared<ChosenPresentation>(3);
    const auto screen = list(presentation);
    screen->updateNavigationBarUI();
    ASSERT_NE(screen->navigationItem().leftBarButton(), nullptr);
    screen->navigationItem().rightBarButton()->click();
    EXPECT_THAT(selection(*screen), ElementsAre(0, 1, 2));
    screen->navigationItem().leftBarButton()->click();
    EXPECT_TRUE(screen->selectedItems.empty());
    EXPECT_EQ(presentation->viewType(), 1U);
    screen->cancelSelectionsAndRefreshUI();
    EXPECT_EQ(screen->navigationItem().leftBarButton(), nullptr);
    EXPECT_FALSE(screen->collectionView->allowsMultipleSelection());
}

TEST_F(ExifDataListViewControllerTest, SelectsByTapsInTheSelectionModeAlone) {
    addPhotos(3);
    const auto presentation = std::make_shared<ChosenPresentation>(3);
    const auto screen = list(presentation);
    UICollectionView& view = *screen->collectionView;
    screen->didSelectItemAtIndexPath(view, {0, 1});
    screen->didSelectItemAtIndexPath(view, {1, 0}); // The loading-more cell.
    screen->didSelectItemAtIndexPath(view, {0, 7}); // Gone meanwhile.
    EXPECT_THAT(selection(*screen), ElementsAre(1));
    screen->didDeselectItemAtIndexPath(view, {0, 1});
    EXPECT_THAT(selection(*screen), ElementsAre());
    presentation->setViewType(1);
    screen->didSelectItemAtIndexPath(view, {0, 1});
    EXPECT_THAT(selection(*screen), ElementsAre());
}

TEST_F(ExifDataListViewControllerTest, MakesThumbnailsAheadWhereTheVisiblePartHasMoved) {
    struct Case {
        CGRect before;
        CGRect after;
        std::vector<CGRect> added;
        std::vector<CGRect> removed;
    };
    const Case cases[] = {
        {{{0, 0}, {10, 100}}, {{0, 30}, {10, 100}}, {{{0, 100}, {10, 30}}}, {{{0, 0}, {10, 30}}}},
        {{{0, 30}, {10, 100}}, {{0, 0}, {10, 100}}, {{{0, 0}, {10, 30}}}, {{{0, 100}, {10, 30}}}},
        {{{0, 0}, {10, 100}}, {{0, 200}, {10, 100}}, {{{0, 200}, {10, 100}}}, {{{0, 0}, {10, 100}}}},
        {{{0, 20}, {10, 20}}, {{5, 0}, {10, 100}}, {{{5, 40}, {10, 60}}, {{5, 0}, {10, 20}}}, {}},
    };
    for (const Case& c : cases) {
        std::vector<CGRect> added;
        std::vector<CGRect> removed;
        ExifDataListViewController::computeDifferenceBetweenRect(
            c.before, c.after, [&](const CGRect& rect) { removed.push_back(rect); },
            [&](const CGRect& rect) { added.push_back(rect); });
        EXPECT_EQ(added, c.added);
        EXPECT_EQ(removed, c.removed);
    }
}

TEST_F(ExifDataListViewControllerTest, TellsWhyItShowsNoPhotoAndOffersWhatHelps) {
    std::vector<std::string> requests;
    const auto note = [&requests](
                          const Notification& notification) { requests.push_back(notification.name); };
    auto& center = NotificationCenter::defaultCenter();
    const auto added = center.addObserver(kAddPhotosRequestedNotification, nullptr, note);
    const auto allowed = center.addObserver(kLibraryAccessRequestedNotification, nullptr, note);
    const auto screen = list(std::make_shared<ListPresentation>());
    const auto shown = [&] { return screen->collectionView->findChild<EmptyStateView*>(); };
    waitUntilLoaded(*screen);
    ASSERT_NE(shown(), nullptr);
    EXPECT_EQ(shown()->reason(), EmptyListReason::NoPhotos);
    QAccessibleInterface* const told = QAccessible::queryAccessibleInterface(shown());
    EXPECT_EQ(told->text(QAccessible::Name), shown()->title());
    EXPECT_EQ(told->text(QAccessible::Value), shown()->explanation());
    EXPECT_EQ(QAccessible::queryAccessibleInterface(screen->collectionView)->childCount(), 2)
        << "the text and its button";
    screen->collectionView->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(screen->view().window()->focusWidget(), shown()->button()) << "there is nothing else for keys";
    QTest::keyClick(shown()->button(), Qt::Key_Return);

    PHPhotoLibrary::setAuthorization(PHAuthorizationStatus::Denied);
    waitUntil([&] { return shown() != nullptr && shown()->reason() == EmptyListReason::NoAccess; });
    shown()->button()->click();
    EXPECT_THAT(requests, ElementsAre(kAddPhotosRequestedNotification, kLibraryAccessRequestedNotification));

    addPhotos(2, "hostile-header.jpg");
    PersistanceManager::sharedInstance().setShouldHidePhotosWithoutExifDetails(true);
    PersistanceManager::sharedInstance().setLocationFilter(1);
    PHPhotoLibrary::setAuthorization(PHAuthorizationStatus::Authorized);
    waitUntil([&] { return shown() != nullptr && shown()->reason() == EmptyListReason::Filter; });
    EXPECT_THAT(shown()->explanation().toStdString(), testing::HasSubstr("only with a location"));
    shown()->button()->click();
    waitUntil([&] { return screen->dataSource->exifDataItemsArray.size() == 2; });
    waitUntilLoaded(*screen);
    EXPECT_EQ(shown(), nullptr);
    EXPECT_EQ(screen->view().window()->focusWidget(), screen->collectionView);
}

TEST_F(ExifDataListViewControllerTest, ShowsAFolderAsSoonAsItIsAllowedToo) {
    addPhotos(2, "hostile-header.jpg");
    PHPhotoLibrary::setAuthorization(PHAuthorizationStatus::Limited, {"/elsewhere"});
    const auto screen = list(std::make_shared<ListPresentation>());
    waitUntilLoaded(*screen);
    EXPECT_TRUE(screen->dataSource->exifDataItemsArray.empty());
    PHPhotoLibrary::allowFolder(home.path().string());
    waitUntil([&] { return screen->dataSource->exifDataItemsArray.size() == 2; });
}

TEST_F(ExifDataListViewControllerTest, OffersAccessWhereTheQuestionWasLeftOpen) {
    PHPhotoLibrary::setAuthorization(PHAuthorizationStatus::NotDetermined);
    std::atomic<bool> isAnswered = false;
    PHPhotoLibrary::setAuthorizationQuestion([&isAnswered] {
        while (!isAnswered) {}
        return PHAuthorizationStatus::NotDetermined;
    });
    const auto screen = list(std::make_shared<ListPresentation>());
    const auto shown = [&] { return screen->collectionView->findChild<EmptyStateView*>(); };
    waitUntilLoaded(*screen);
    EXPECT_EQ(shown(), nullptr) << "while it is being asked";
    isAnswered = true;
    waitUntil([&] { return shown() != nullptr; });
    EXPECT_EQ(shown()->reason(), EmptyListReason::NoAccess);
    PHPhotoLibrary::setAuthorizationQuestion({});
}

TEST_F(ExifDataListViewControllerTest, ReturnsToItsTopHoweverQuicklyItIsLoaded) {
    const auto screen = list(std::make_shared<ListPresentation>());
    screen->view().show();
    for (int round = 0; round < 3; ++round) {
        const int before = screen->completions;
        screen->refresh();
        EXPECT_TRUE(screen->refreshControl->isRefreshing());
        waitUntil([&] { return screen->completions == before + 1; });
        waitUntil([&] { return screen->collectionView->contentOffset().y == 0; });
        EXPECT_FALSE(screen->refreshControl->isRefreshing());
    }
}

TEST_F(ExifDataListViewControllerTest, BringsAnOriginalThatLiesElsewhereAndOffersAFailedOneAgain) {
    addElsewhere("canon-40d-northwest-rating5.jpg");
    slowFolder->isBroken = true;
    const auto screen = list(std::make_shared<ListPresentation>());
    screen->view().show();
    waitUntilLoaded(*screen);
    const auto record = screen->dataSource->exifDataItemsArray.at(0);
    ASSERT_TRUE(record->imageResultIsInCloud);
    screen->selectedItems = {record};
    auto* const cell =
        dynamic_cast<ExifDataCollectionListViewCell*>(screen->collectionView->cellForItemAtIndexPath({0, 0}));
    ASSERT_NE(cell, nullptr);
    screen->collectionView->setFocus();
    QTest::keyClick(screen->collectionView, Qt::Key_Home);
    QTest::keyClick(screen->collectionView, Qt::Key_C);
    EXPECT_EQ(record->iCloudDownloadProgress, 0);
    EXPECT_TRUE(record->hasForceDownloadedImageResultFromCloud);
    waitUntil([&] { return record->iCloudDownloadProgress == -1; });
    EXPECT_FALSE(record->hasFinishedDownloadingImageResultFromCloud);

    slowFolder->isBroken = false;
    screen->requestToDownloadiCloudAssetAtCell(*cell);
    waitUntil([&] { return screen->dataSource->exifDataItemsArray.at(0) != record; });
    const auto downloaded = screen->dataSource->exifDataItemsArray.at(0);
    EXPECT_TRUE(downloaded->exifInfoAvailable);
    EXPECT_FALSE(downloaded->imageResultIsInCloud);
    EXPECT_TRUE(record->hasFinishedDownloadingImageResultFromCloud);
    EXPECT_EQ(screen->dataSource->unFilteredExifDataItemsArray.at(0), downloaded);
    EXPECT_TRUE(screen->selectedItems.contains(downloaded));
    waitUntil([&] { return cell->exifInfo() == downloaded; });
}

TEST_F(ExifDataListViewControllerTest, OffersADownloadAgainWhoseCardWasNeededBeforeItsTurn) {
    addElsewhere("canon-40d-northwest-rating5.jpg");
    const auto screen = list(std::make_shared<ListPresentation>());
    screen->view().show();
    waitUntilLoaded(*screen);
    const auto record = screen->dataSource->exifDataItemsArray.at(0);
    DispatchSemaphore isDone(0);
    std::atomic<int> releases = 0;
    auto& queue = QueueManager::sharedInstance().imageTransferOperationQueue;
    for (int place = 0; place < 8; ++place) {
        queue.addOperation(BlockOperation::blockOperationWithBlock([&] {
            isDone.wait();
            ++releases;
        }));
    }
    ExifGridCollectionViewCell cell; // Another one than the list shows.
    screen->requestToDownloadiCloudAssetAtCell(cell);
    EXPECT_EQ(record->iCloudDownloadProgress, 0);
    screen->collectionView->hide();
    screen->collectionView->setDataSource({});
    screen->collectionView->layoutIfNeeded(); // So that no card shows it.
    cell.prepareForReuse();
    waitUntil([&] { return record->iCloudDownloadProgress == -1; });
    EXPECT_FALSE(record->hasForceDownloadedImageResultFromCloud);
    for (int place = 0; place < 8; ++place) {
        isDone.signal();
    }
    waitUntil([&] { return releases == 8; });
    EXPECT_EQ(screen->dataSource->exifDataItemsArray.at(0), record);
    screen->requestToDownloadiCloudAssetAtCell(cell);
    waitUntil([&] { return screen->dataSource->exifDataItemsArray.at(0) != record; });
}

TEST_F(ExifDataListViewControllerTest, HidesWhatADownloadShowsToBeWithoutExif) {
    addElsewhere("hostile-header.jpg");
    PersistanceManager::sharedInstance().setShouldHidePhotosWithoutExifDetails(true);
    const auto screen = list(std::make_shared<ListPresentation>());
    screen->view().show();
    waitUntilLoaded(*screen);
    ASSERT_EQ(screen->dataSource->exifDataItemsArray.size(), 1U);
    ExifGridCollectionViewCell cell;
    screen->requestToDownloadiCloudAssetAtCell(cell);
    waitUntil([&] { return screen->dataSource->exifDataItemsArray.empty(); });
    EXPECT_EQ(screen->dataSource->unFilteredExifDataItemsArray.size(), 1U);
    EXPECT_TRUE(screen->collectionView->visibleCells().empty());
}

TEST_F(ExifDataListViewControllerTest, LooksUpTheScreenOfAPressedPhoto) {
    addPhotos(3);
    const auto screen = list(std::make_shared<ListPresentation>());
    screen->view().show();
    waitUntilLoaded(*screen);
    const auto frame =
        screen->collectionView->collectionViewLayout().layoutAttributesForItemAtIndexPath({0, 2});
    const CGPoint place = {frame->frame.origin.x + 20, frame->frame.origin.y + 20};
    EXPECT_EQ(screen->viewControllerForLocation(place), nullptr); // Nobody has such a screen.
    UIStoryboard::registerScene("ExifDetails", "ExifPhotoDetailViewControllerID",
        [] { return std::make_shared<ExifDataListViewController>(); });
    EXPECT_EQ(screen->viewControllerForLocation({1, 1}), nullptr);
    const auto detail =
        std::dynamic_pointer_cast<ExifDataListViewController>(screen->viewControllerForLocation(place));
    ASSERT_NE(detail, nullptr);
    EXPECT_EQ(detail->currentIndexPath, (IndexPath{0, 2}));
    EXPECT_EQ(detail->dataSource->exifDataItemsArray, screen->dataSource->exifDataItemsArray);
    const auto navigation = std::make_shared<UINavigationController>(screen);
    navigation->view();
    screen->commitViewController(detail);
    EXPECT_EQ(navigation->viewControllers().back(), detail);
    UIStoryboard::registerScene("ExifDetails", "ExifPhotoDetailViewControllerID", {});
}

TEST_F(ExifDataListViewControllerTest, ObeysItsKeys) {
    addPhotos(3);
    const auto presentation = std::make_shared<ChosenPresentation>(1, true);
    const auto screen = list(presentation);
    screen->view().show();
    waitUntilLoaded(*screen);
    UICollectionView& view = *screen->collectionView;
    const int refreshes = screen->completions;
    QTest::keyClick(&view, Qt::Key_F5);
    waitUntil([&] { return screen->completions == refreshes + 1; });
    QTest::keyClick(&view, Qt::Key_R, Qt::ControlModifier);
    waitUntil([&] { return screen->completions == refreshes + 2; });
    waitUntilLoaded(*screen);

    view.setFocus();
    QTest::keyClick(&view, Qt::Key_Home);
    QTest::keyClick(&view, Qt::Key_F);
    waitUntil([&] { return screen->dataSource->exifDataItemsArray[0]->phAsset->isFavorite; });
    waitUntilLoaded(*screen);
    auto* const tile = dynamic_cast<ExifGridWithDetailsCollectionViewCell*>(
        view.cellForItemAtIndexPath(view.focusedIndexPath().value()));
    ASSERT_NE(tile, nullptr);
    const bool wasTimeAgo = tile->isDisplayingTimeAgo();
    QTest::keyClick(&view, Qt::Key_D);
    EXPECT_NE(tile->isDisplayingTimeAgo(), wasTimeAgo);

    QTest::keyClick(&view, Qt::Key_A, Qt::ControlModifier);
    EXPECT_TRUE(screen->selectedItems.empty());
    presentation->setViewType(3);
    QTest::keyClick(&view, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(screen->selectedItems.size(), 3U);
    QTest::keyClick(&view, Qt::Key_Escape);
    EXPECT_TRUE(screen->selectedItems.empty());
    EXPECT_EQ(presentation->viewType(), 1U);
}

} // namespace
} // namespace exifcard

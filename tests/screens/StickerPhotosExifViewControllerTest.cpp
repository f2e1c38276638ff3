#include "screens/StickerPhotosExifViewController.h"

#include "metadata/ExifInformation.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/messages/ConversationStore.h"
#include "platform/photos/AssetByteSource.h"
#include "platform/photos/PHAssetChangeRequest.h"
#include "platform/photos/import/Importer.h"
#include "platform/uikit/MSMessagesAppViewController.h"
#include "platform/uikit/UICollectionView.h"
#include "platform/uikit/UISwitch.h"
#include "screens/ScreenTest.h"
#include "sending/Conversations.h"
#include "settings/PersistanceManager.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <QTest>

#include <atomic>

namespace exifcard {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

/// A host that notes which styles it is asked for.
class Host : public MSMessagesAppHost {
public:
    void presentationStyleRequested(MSMessagesAppPresentationStyle presentationStyle) override {
        requests.push_back(presentationStyle);
    }
    std::vector<MSMessagesAppPresentationStyle> requests;
};

/// Gives its files, but for the times when it does not answer.
class StallingDisk final : public AssetByteSource {
public:
    std::optional<std::string> localFile(const AssetFile& file) const override {
        if (isStalled) {
            isAsked = true;
            const BlockingSection blocking;
            isStalled.wait(true);
        }
        return file.root + "/" + file.path;
    }
    bool isElsewhere(const AssetFile&) const override { return false; }
    std::optional<PHError> bring(const AssetFile&, const Progress&) override { return std::nullopt; }

    void answer() {
        isStalled = false;
        isStalled.notify_all();
    }

    std::atomic<bool> isStalled = false;
    mutable std::atomic<bool> isAsked = false;
};

class StickerPhotosExifViewControllerTest : public ScreenTest {
protected:
    using Screen = StickerPhotosExifViewController;

    std::shared_ptr<Screen> sendScreen(const PHAssetCollectionPtr& album = nullptr) {
        auto screen = std::make_shared<Screen>();
        screen->assetCollection = album;
        screen->conversation = conversationNamed("Ada");
        screen->messagesViewController = entry;
        screen->sendingObserver = [this](const SendingOutcome& outcome) { outcomes.push_back(outcome); };
        screen->view().resize(375, 500);
        screen->view().show();
        waitUntilLoaded(*screen);
        return screen;
    }
    void tap(Screen& screen, IndexPath indexPath) {
        const std::size_t before = outcomes.size();
        screen.didSelectItemAtIndexPath(*screen.collectionView, indexPath);
        waitUntil([&] { return outcomes.size() == before + 1; });
    }
    static std::vector<ConversationEntry> field() { return ConversationStore().content("Ada").entries; }
    static void wantText(bool isWanted) {
        PersistanceManager::sharedInstance().setIncludeExifAsTextOniMessageApp(isWanted);
    }
    /// The folder's album of this library.
    PHAssetCollectionPtr folderAlbum() const {
        CatalogueWriter(catalogue()).showFolderAsAlbum(folder, "Trip");
        return PHAssetCollection::fetchAssetCollectionsWithType(
            PHAssetCollectionType::Album, PHAssetCollectionSubtype::Any)
            ->firstObject();
    }

    const std::shared_ptr<Host> host = std::make_shared<Host>();
    const std::shared_ptr<MSMessagesAppViewController> entry =
        std::make_shared<MSMessagesAppViewController>();
    std::vector<SendingOutcome> outcomes;
};

TEST_F(StickerPhotosExifViewControllerTest, SendsTheTappedPhotoAndThenItsTextIfThatIsWanted) {
    for (const char* const name : {"synthetic-southwest.jpg", "apple-iphone4s-lens.jpg"}) {
        std::filesystem::copy_file(std::filesystem::path(EXIFCARD_TEST_DATA) / name, photos / name);
    }
    const ImportHandlers noHandlers{[](const auto&) {}, [](auto) {}, [](const auto&) {}};
    Importer(catalogue(), noHandlers, 1).importTrees({photos.string()});
    const auto screen = sendScreen();
    ASSERT_EQ(screen->dataSource->exifDataItemsArray.size(), 2U);
    for (std::size_t item = 0; item < 2; ++item) {
        const auto record = screen->dataSource->exifDataItemsArray[item];
        const bool isLandscape = nameOf(*record->phAsset) == "synthetic-southwest.jpg";
        wantText(false);
        tap(*screen, {0, item});
        ASSERT_EQ(field().size(), 1U);
        const auto caption = field()[0].message.layout.caption.value_or("");
        EXPECT_THAT(caption, HasSubstr("   ISO "));
        EXPECT_EQ(caption.find("        ISO ") != std::string::npos, isLandscape);
        EXPECT_TRUE(field()[0].picture);
        EXPECT_EQ(field()[0].message.layout.subcaption, record->cameraModel);
        wantText(true);
        tap(*screen, {0, item});
        ASSERT_EQ(field().size(), 2U);
        EXPECT_EQ(field()[1].kind, ConversationEntry::Kind::Text);
        EXPECT_EQ(field()[1].text, record->shortExifStringsForShare());
        EXPECT_EQ(outcomes.back().result.error, std::nullopt);
    }
}

TEST_F(StickerPhotosExifViewControllerTest, SendsTheFirstPhotoWhenItsLoadingMoreCellIsTapped) {
    addPhotos(101);
    const auto screen = sendScreen();
    tap(*screen, {1, 0});
    EXPECT_EQ(outcomes.back().record, screen->dataSource->exifDataItemsArray[0]);
    screen->didSelectItemAtIndexPath(*screen->collectionView, {0, 500}); // Gone meanwhile.
}

TEST_F(StickerPhotosExifViewControllerTest, AsksForLessRoomOnlyWhereItHasMuch) {
    addPhotos(1);
    entry->setHost(host);
    entry->becomeActive(conversationNamed("Ada"), MSMessagesAppPresentationStyle::Compact);
    tap(*sendScreen(), {0, 0});
    EXPECT_THAT(host->requests, ElementsAre());
    entry->beginTransition(MSMessagesAppPresentationStyle::Expanded);
    entry->finishTransition();
    tap(*sendScreen(), {0, 0});
    waitUntil([&] { return !host->requests.empty(); });
    EXPECT_THAT(host->requests, ElementsAre(MSMessagesAppPresentationStyle::Compact));
}

TEST_F(StickerPhotosExifViewControllerTest, AsksForLessRoomWhereThePanelWasExpandedWhileThePhotoWasRead) {
    const auto disk = std::make_shared<StallingDisk>();
    Library::addElsewhere(disk, "canon-40d-northwest-rating5.jpg", {});
    entry->setHost(host);
    entry->becomeActive(conversationNamed("Ada"), MSMessagesAppPresentationStyle::Compact);
    auto screen = sendScreen();
    disk->isStalled = true;
    screen->didSelectItemAtIndexPath(*screen->collectionView, {0, 0});
    waitUntil([&] { return disk->isAsked.load(); });
    screen.reset(); // As the panel does when its style changes.
    entry->beginTransition(MSMessagesAppPresentationStyle::Expanded);
    entry->finishTransition();
    disk->answer();
    waitUntil([&] { return outcomes.size() == 1 && !host->requests.empty(); });
    EXPECT_THAT(host->requests, ElementsAre(MSMessagesAppPresentationStyle::Compact));
}

TEST_F(StickerPhotosExifViewControllerTest, OffersTheTextBelowAnAlbumAlone) {
    addPhotos(2);
    wantText(true);
    const auto all = sendScreen();
    EXPECT_TRUE(all->advancedHolderView->isHidden());
    EXPECT_EQ(all->advancedViewHeightConstraint.constant(), 0);
    EXPECT_EQ(all->collectionView->height(), 500);
    all->assetCollection = folderAlbum();
    all->updateAdvancedViewUI();
    EXPECT_EQ(all->collectionView->height(), 440); // In the same step.
    all->assetCollection = nullptr;
    all->updateAdvancedViewUI();
    EXPECT_EQ(all->collectionView->height(), 500);

    const auto album = sendScreen(folderAlbum());
    EXPECT_EQ(album->dataSource->exifDataItemsArray.size(), 2U);
    EXPECT_EQ(album->advancedHolderView->height(), 60);
    EXPECT_EQ(album->collectionView->height(), 440);
    EXPECT_TRUE(album->includeExifAsTextSwitch->isOn());
    album->includeExifAsTextSwitch->click();
    EXPECT_FALSE(PersistanceManager::sharedInstance().includeExifAsTextOniMessageApp());
}

TEST_F(StickerPhotosExifViewControllerTest, SendsWithoutAPictureWhatIsNoLongerThere) {
    addPhotos(1);
    wantText(false);
    const auto screen = sendScreen();
    std::filesystem::remove_all(photos);
    tap(*screen, {0, 0});
    ASSERT_EQ(field().size(), 1U);
    EXPECT_FALSE(field()[0].picture);
    EXPECT_THAT(field()[0].message.layout.caption.value_or(""), HasSubstr("ISO"));
}

TEST_F(StickerPhotosExifViewControllerTest, LeavesOnePhotoInTheFieldWithItsOwnTextAlone) {
    addPhotos(2, "canon-40d-northwest-rating5.jpg");
    wantText(true);
    auto screen = sendScreen();
    for (const std::size_t item : {1, 0, 1}) {
        screen->didSelectItemAtIndexPath(*screen->collectionView, {0, item});
    }
    screen.reset(); // The style changes in the middle of it.
    waitUntil([&] { return outcomes.size() == 3; });
    ASSERT_EQ(field().size(), 2U);
    EXPECT_EQ(field()[1].text, outcomes.back().record->shortExifStringsForShare());
}

TEST_F(StickerPhotosExifViewControllerTest, LeavesOnePhotoInTheFieldWhenThePanelsNextScreenSendsAtOnce) {
    addPhotos(1);
    addPhotos(1, "canon-40d-northwest-rating5.jpg");
    wantText(true);
    std::vector<std::shared_ptr<Screen>> screens = {sendScreen(), sendScreen(), sendScreen()};
    for (std::size_t sent = 0; sent < screens.size(); ++sent) {
        screens[sent]->didSelectItemAtIndexPath(*screens[sent]->collectionView, {0, sent % 2});
    }
    screens.clear();
    waitUntil([&] { return outcomes.size() == 3; });
    ASSERT_EQ(field().size(), 2U);
    const auto& last = outcomes.back().record;
    EXPECT_EQ(field()[0].message.layout.subcaption, last->cameraModel);
    EXPECT_EQ(field()[1].text, last->shortExifStringsForShare());
}

TEST_F(StickerPhotosExifViewControllerTest, SendsWhatIsTappedWhileTheListLoads) {
    addPhotos(101);
    const auto screen = sendScreen();
    const auto shown = screen->dataSource->exifDataItemsArray;
    screen->dataSource->loadMoreResultsWithCompletionBlock({});
    ASSERT_TRUE(screen->dataSource->isLoading());
    tap(*screen, {0, 2});
    EXPECT_EQ(outcomes.back().record, shown[2]);

    screen->refresh(); // The cells are still there, their photos are not.
    screen->didSelectItemAtIndexPath(*screen->collectionView, {0, 2});
    screen->didSelectItemAtIndexPath(*screen->collectionView, {1, 0});
    waitUntilLoaded(*screen);
    tap(*screen, {0, 3});
    EXPECT_EQ(outcomes.back().record, screen->dataSource->exifDataItemsArray[3]);
    EXPECT_EQ(outcomes.size(), 2U);
}

TEST_F(StickerPhotosExifViewControllerTest, SendsOtherPhotosWhileTheDiskOfOneDoesNotAnswer) {
    const auto disk = std::make_shared<StallingDisk>();
    addPhotos(1);
    Library::addElsewhere(disk, "canon-40d-northwest-rating5.jpg", {});
    wantText(false);
    const auto screen = sendScreen();
    const auto& records = screen->dataSource->exifDataItemsArray;
    ASSERT_EQ(namesOf(records).back(), "canon-40d-northwest-rating5.jpg");
    disk->isStalled = true;
    screen->didSelectItemAtIndexPath(*screen->collectionView, {0, 1});
    waitUntil([&] { return disk->isAsked.load(); });
    tap(*screen, {0, 0});
    EXPECT_EQ(outcomes.back().record, records[0]);
    EXPECT_EQ(field().size(), 1U);
    disk->answer();
    waitUntil([&] { return outcomes.size() == 2; });
    EXPECT_EQ(outcomes.back().record, records[1]);
}

TEST_F(
    StickerPhotosExifViewControllerTest, SendsThePhotoThatWasPressedWhenTheLibraryChangesBeforeTheRelease) {
    addPhotos(3);
    wantText(false);
    const auto screen = sendScreen();
    QWidget* const viewport = screen->collectionView->viewport();
    const QPoint place = screen->collectionView->cellForItemAtIndexPath({0, 1})->geometry().center();
    QTest::mousePress(viewport, Qt::LeftButton, {}, place);
    const std::vector<PHAssetPtr> first = {screen->dataSource->exifDataItemsArray[0]->phAsset};
    const auto pressed = screen->dataSource->exifDataItemsArray[1];
    PHPhotoLibrary::sharedPhotoLibrary().performChangesAndWait(
        [&] { PHAssetChangeRequest::deleteAssets(first); });
    waitUntil([&] { return screen->dataSource->exifDataItemsArray.size() == 2; });
    QTest::mouseRelease(viewport, Qt::LeftButton, {}, place);
    waitUntil([&] { return outcomes.size() == 1; });
    EXPECT_EQ(outcomes.back().record, pressed);
}

TEST_F(StickerPhotosExifViewControllerTest, LoadsTheTwentyFourthAlbumByTitle) {
    addPhotos(2);
    const auto screen = sendScreen();
    CatalogueWriter writer(catalogue());
    for (int album = 0; album < 30; ++album) {
        const auto name = fmt::format("{}{:02}", album % 2 == 0 ? "a" : "B", album); // As if in one case.
        writer.showFolderAsAlbum(writer.storeFolder(root, name), name);
    }
    writer.commit();
    screen->getAssetsFromCorrectAssetCollection();
    waitUntil([&] { return screen->dataSource->assetCollection != nullptr; });
    const auto title = screen->dataSource->assetCollection->localizedTitle.value_or("");
    EXPECT_TRUE(title.starts_with("B")) << title; // Fifteen begin with "a", and fewer than eight are others.
    waitUntilLoaded(*screen);
}

TEST_F(StickerPhotosExifViewControllerTest, HandsOnWhatWentWrongAndSendsAgain) {
    addPhotos(1);
    wantText(false);
    const auto screen = sendScreen();
    screen->conversation = conversationNamed(std::string(2000, 'x')); // A name that no conversation can have.
    tap(*screen, {0, 0});
    ASSERT_TRUE(outcomes.back().result.error);
    screen->conversation = conversationNamed("Ada");
    outcomes.back().sendAgain();
    waitUntil([&] { return outcomes.size() == 2; });
    EXPECT_EQ(outcomes.back().result.error, std::nullopt);
    EXPECT_EQ(field().size(), 1U);
}

} // namespace
} // namespace exifcard

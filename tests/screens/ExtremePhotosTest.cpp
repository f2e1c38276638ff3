#include "metadata/ExifInformation.h"
#include "platform/messages/ConversationStore.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UICollectionView.h"
#include "screens/ScreenTest.h"
#include "screens/StickerPhotosExifViewController.h"
#include "sending/Conversations.h"
#include "settings/PersistanceManager.h"

namespace exifcard {
namespace {

class ExtremePhotosTest : public ScreenTest {
protected:
    ExtremePhotosTest() {
        PersistanceManager::sharedInstance().setIncludeExifAsTextOniMessageApp(true);
        screen->conversation = conversationNamed("Ada");
        screen->sendingObserver = [this](const SendingOutcome& outcome) { outcomes.push_back(outcome); };
    }
    void show() const {
        screen->view().resize(375, 500);
        screen->view().show();
    }
    void send(std::size_t item) const {
        screen->didSelectItemAtIndexPath(*screen->collectionView, {0, item});
    }
    static void warnOfMemoryUntil(const std::function<bool()>& isSo) {
        waitUntil([&] {
            UIApplication::postMemoryWarning();
            return isSo();
        });
    }
    static std::vector<ConversationEntry> field() { return ConversationStore().content("Ada").entries; }

    const std::shared_ptr<StickerPhotosExifViewController> screen =
        std::make_shared<StickerPhotosExifViewController>();
    std::vector<SendingOutcome> outcomes;
};

TEST_F(ExtremePhotosTest, ARecordWithNothingInItIsShownAndSent) {
    show();
    waitUntilLoaded(*screen);
    screen->beginAppearanceTransition(/*isAppearing=*/true, /*animated=*/false);
    screen->endAppearanceTransition();
    screen->dataSource->replaceRecords({ExifInformation::init(), ExifInformation::init()});
    screen->previousPreheatRect = {};
    screen->updateCachedAssets();
    ASSERT_NE(screen->collectionView->cellForItemAtIndexPath({0, 1}), nullptr);
    screen->view().grab();
    send(1);
    waitUntil([&] { return outcomes.size() == 1; });
    EXPECT_EQ(outcomes[0].result.error, std::nullopt);
    ASSERT_EQ(field().size(), 2U);
    EXPECT_EQ(field()[0].message.layout.caption, "f/0.0   0 seconds   ISO 0   0mm");
    EXPECT_EQ(field()[0].message.layout.imageTitle, std::nullopt);
    EXPECT_FALSE(field()[0].picture);
}

TEST_F(ExtremePhotosTest, MemoryWarningsWhilePhotosLoadAndAreSentTakeNothingAway) {
    addPhotos(60);
    show();
    warnOfMemoryUntil([&] { return !screen->dataSource->isLoading(); });
    waitUntilLoaded(*screen);
    EXPECT_EQ(screen->dataSource->exifDataItemsArray.size(), 60U);
    send(5);
    warnOfMemoryUntil([&] { return outcomes.size() == 1; });
    ASSERT_EQ(field().size(), 2U);
    EXPECT_TRUE(field()[0].picture);
    EXPECT_EQ(field()[1].text, outcomes[0].record->shortExifStringsForShare());
    // What was dropped is made again where it is seen.
    const auto record = screen->dataSource->exifDataItemsArray[0];
    warnOfMemoryUntil([&] { return record->cachedThumbNailImage == nullptr; });
    screen->dataSource->reloadCollectionView();
    waitUntil([&] { return record->cachedThumbNailImage != nullptr; });
}

} // namespace
} // namespace exifcard

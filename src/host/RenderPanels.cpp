#include "host/RenderPanels.h"

#include "host/ConversationFeed.h"
#include "host/ExtensionPanel.h"
#include "host/HostExtension.h"
#include "host/MessagesWindow.h"
#include "host/RenderViews.h"
#include "platform/photos/PHAsset.h"
#include "platform/photos/PHAssetCollection.h"
#include "platform/photos/PHAssetCollectionChangeRequest.h"
#include "platform/photos/PHFetchOptions.h"
#include "platform/photos/PHFetchResult.h"
#include "platform/photos/PHPhotoLibrary.h"
#include "platform/uikit/UINavigationController.h"
#include "screens/StickerPhotosExifViewController.h"
#include "settings/PersistanceManager.h"

namespace exifcard {
namespace {

constexpr const char* kAlbumTitle = "Summer";

/// An album of all photos of the library. Blocks.
PHAssetCollectionPtr albumOfLibrary() {
    const auto assets = PHAsset::fetchAssetsWithOptions({});
    std::string identifier;
    PHPhotoLibrary::sharedPhotoLibrary().performChangesAndWait([&assets, &identifier] {
        auto request =
            PHAssetCollectionChangeRequest::creationRequestForAssetCollectionWithTitle(kAlbumTitle);
        std::vector<PHAssetPtr> all;
        for (std::size_t index = 0; index < assets->count(); ++index) {
            all.push_back(assets->objectAtIndex(index));
        }
        request.addAssets(all);
        identifier = request.placeholderForCreatedAssetCollection().localIdentifier;
    });
    return PHAssetCollection::fetchAssetCollectionsWithLocalIdentifiers({{identifier}})->firstObject();
}

} // namespace

std::unique_ptr<QWidget> makeCompact(RenderContext& context) {
    auto window = context.makeWindow(/*fillsConversation=*/false);
    if (!window) {
        return nullptr;
    }
    auto panel = std::make_unique<ExtensionPanel>(makeExtension(), nullptr);
    const QSize size = context.windowSize();
    panel->setRoom(size, 0);
    panel->activate(window->feed().conversation());
    return panel;
}

std::unique_ptr<QWidget> makeDenied(RenderContext& context) {
    PHPhotoLibrary::setAuthorization(PHAuthorizationStatus::Denied);
    return makeCompact(context);
}

std::unique_ptr<QWidget> makeFiltered(RenderContext& context) {
    constexpr int kOnlyWithLocation = 1;
    PersistanceManager::sharedInstance().setLocationFilter(kOnlyWithLocation);
    return makeCompact(context);
}

std::unique_ptr<QWidget> makeAlbum(RenderContext& context) {
    auto window = context.makeWindow(/*fillsConversation=*/false);
    if (!window) {
        return nullptr;
    }
    const auto screen = std::make_shared<StickerPhotosExifViewController>();
    SampleLibrary::runOnQueue([&screen] { screen->assetCollection = albumOfLibrary(); });
    screen->conversation = window->feed().conversation();
    screen->setTitle(kAlbumTitle);
    const auto below = std::make_shared<UIViewController>();
    const auto stack = std::make_shared<UINavigationController>(below);
    stack->pushViewController(screen, /*animated=*/false);
    auto holder = std::make_unique<QWidget>();
    holder->resize(context.windowSize());
    stack->view().setParent(holder.get());
    stack->view().setGeometry(holder->rect());
    stack->view().show();
    stack->beginAppearanceTransition(/*isAppearing=*/true, /*animated=*/false);
    stack->endAppearanceTransition();
    context.keep(stack);
    return holder;
}

} // namespace exifcard

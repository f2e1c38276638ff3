#include "screens/ScreenScenes.h"

#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UIStoryboard.h"
#include "screens/AlbumsListViewController.h"
#include "screens/StickerPhotosExifViewController.h"

namespace exifcard {

void registerScreenScenes() {
    UIStoryboard::registerScene(kMainInterfaceStoryboard, kAllPhotosScene,
        [] { return std::make_shared<StickerPhotosExifViewController>(); });
    UIStoryboard::registerScene(kAlbumsListStoryboard, kAlbumsListScene, [] {
        return std::make_shared<UINavigationController>(std::make_shared<AlbumsListViewController>());
    });
}

} // namespace exifcard

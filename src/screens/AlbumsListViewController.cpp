#include "screens/AlbumsListViewController.h"

#include "appearance/Apperance.h"
#include "platform/foundation/LocalizedString.h"
#include "platform/uikit/UIView.h"

namespace exifcard {

AlbumsListViewController::AlbumsListViewController() {
    setTitle(std::string(localizedString("Albums")));
}

void AlbumsListViewController::viewDidLoad() {
    UIViewController::viewDidLoad();
    if (auto* const screen = qobject_cast<UIView*>(&view())) {
        screen->setBackgroundColor(Apperance::appearanceBackgroundColor());
    }
}

} // namespace exifcard

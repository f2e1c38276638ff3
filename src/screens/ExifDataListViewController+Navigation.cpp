#include "screens/ExifDataListViewController.h"

#include "appearance/Apperance.h"
#include "metadata/ExifInformation.h"
#include "platform/foundation/LocalizedString.h"
#include "platform/foundation/Log.h"
#include "platform/uikit/PictureButton.h"
#include "platform/uikit/Text+Qt.h"
#include "platform/uikit/UICollectionView.h"
#include "platform/uikit/UIFont.h"
#include "platform/uikit/UINavigationController.h"
#include "screens/DetailScreen.h"
#include "screens/ExifDataListDataSource.h"
#include "screens/ListViewTypes.h"

#include <utility>

namespace exifcard {
namespace {

constexpr double kImageSideBesideTitle = 18;
constexpr double kTitleSize = 13;

/// @param contentAlignment  Horizontal, in the direction of reading.
std::unique_ptr<PictureButton> barButton(
    const char* imageName, const QString& name, Qt::Alignment contentAlignment) {
    PictureButton::Look look;
    look.picture = Apperance::themedImageFileNameFor(imageName);
    look.color = Apperance::appearanceTextColor();
    look.place = contentAlignment;
    auto button = std::make_unique<PictureButton>(std::move(look), name, nullptr);
    button->setFocusPolicy(Qt::TabFocus); // A click leaves the keys to the list.
    return button;
}

void giveTitle(PictureButton& button, const QString& title) {
    PictureButton::Look look = button.look();
    look.pictureSide = kImageSideBesideTitle;
    button.setLook(std::move(look));
    button.setText(title);
    if (const auto font = UIFont::fontWithName("AvenirNext-DemiBold", kTitleSize)) {
        button.setFont(qFont(*font));
    }
}

} // namespace

void ExifDataListViewController::updateNavigationBarUI() {
    if (collectionView) {
        collectionView->setAllowsMultipleSelection(isSelecting());
    }
    // Intended: the button that selects all photos has the name of the menu's, too.
    const QString menuName = qString(localizedString("Open view type menu"));
    if (!isSelecting()) {
        auto filter = barButton("downArrowButton", menuName, Qt::AlignLeft);
        connect(filter.get(), &QAbstractButton::clicked, this, [this] { didTapOnShowOrHideFilterView(); });
        filterCustomButton = filter.get();
        navigationItem().setRightBarButton(std::move(filter));
        navigationItem().setLeftBarButton(nullptr);
        return;
    }
    auto selectAll = barButton("tickbutton", menuName, Qt::AlignRight);
    giveTitle(*selectAll, qString(localizedString("All")));
    connect(selectAll.get(), &QAbstractButton::clicked, this, [this] { didTapOnSelectAllButton(); });
    filterCustomButton = selectAll.get();
    navigationItem().setRightBarButton(std::move(selectAll));
    auto close = barButton("closebutton", qString(localizedString("Cancel selection")), Qt::AlignHCenter);
    connect(
        close.get(), &QAbstractButton::clicked, this, [this] { didTapOnCancelMultipleSelectionButton(); });
    leftBarButton = close.get();
    navigationItem().setLeftBarButton(std::move(close));
}

std::shared_ptr<UIViewController> ExifDataListViewController::viewControllerForLocation(CGPoint location) {
    const CGPoint offset = collectionView->contentOffset();
    const auto indexPath =
        collectionView->indexPathForItemAtPoint({location.x + offset.x, location.y + offset.y});
    const auto& records = dataSource->exifDataItemsArray;
    if (!indexPath || indexPath->section != kPhotosSection || indexPath->item >= records.size()) {
        return nullptr;
    }
    debugLog("3DTouch_ %@", {std::to_string(indexPath->item)});
    return makeDetailScreen(records, indexPath->item);
}

void ExifDataListViewController::commitViewController(
    const std::shared_ptr<UIViewController>& viewController) {
    const auto navigation = navigationController();
    if (navigation && viewController) {
        exifPhotoDetailViewController = viewController;
        navigation->pushViewController(viewController, /*animated=*/true);
    }
}

} // namespace exifcard

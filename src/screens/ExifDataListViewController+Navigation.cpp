#include "screens/ExifDataListViewController.h"

#include "appearance/Apperance.h"
#include "metadata/ExifInformation.h"
#include "platform/foundation/LocalizedString.h"
#include "platform/foundation/Log.h"
#include "platform/uikit/Accessibility.h"
#include "platform/uikit/Text+Qt.h"
#include "platform/uikit/UICollectionView.h"
#include "platform/uikit/UINavigationController.h"
#include "screens/BarButton.h"
#include "screens/DetailScreen.h"
#include "screens/ExifDataListDataSource.h"
#include "screens/ListViewTypes.h"

#include <utility>

namespace exifcard {
namespace {

std::unique_ptr<BarButton> barButton(const char* imageName, QString title, Qt::Alignment contentAlignment) {
    return std::make_unique<BarButton>(Apperance::themedImageFileNameFor(imageName), std::move(title),
        contentAlignment, Apperance::appearanceTextColor());
}

} // namespace

void ExifDataListViewController::updateNavigationBarUI() {
    if (collectionView) {
        collectionView->setAllowsMultipleSelection(isSelecting());
    }
    if (!isSelecting()) {
        auto filter = barButton("downArrowButton", {}, Qt::AlignLeft);
        connect(filter.get(), &QAbstractButton::clicked, this, [this] { didTapOnShowOrHideFilterView(); });
        setAccessibilityLabel(*filter, qString(localizedString("Open view type menu")));
        filterCustomButton = filter.get();
        navigationItem().setRightBarButton(std::move(filter));
        navigationItem().setLeftBarButton(nullptr);
        return;
    }
    auto selectAll = barButton("tickbutton", qString(localizedString("All")), Qt::AlignRight);
    connect(selectAll.get(), &QAbstractButton::clicked, this, [this] { didTapOnSelectAllButton(); });
    setAccessibilityLabel(*selectAll, qString(localizedString("Open view type menu")));
    filterCustomButton = selectAll.get();
    navigationItem().setRightBarButton(std::move(selectAll));
    auto close = barButton("closebutton", {}, Qt::AlignHCenter);
    connect(
        close.get(), &QAbstractButton::clicked, this, [this] { didTapOnCancelMultipleSelectionButton(); });
    setAccessibilityLabel(*close, qString(localizedString("Cancel selection")));
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

#include "screens/ExifDataListViewController.h"

#include "cards/ExifGridWithDetailsCollectionViewCell.h"
#include "metadata/ExifInformation.h"
#include "platform/photos/PHAssetChangeRequest.h"
#include "platform/photos/PHPhotoLibrary.h"
#include "platform/uikit/UICollectionView.h"
#include "screens/ExifDataListDataSource.h"
#include "screens/ListViewTypes.h"

#include <QKeyEvent>

namespace exifcard {
namespace {

bool isControl(const QKeyEvent& event, int key) {
    return event.key() == key && event.modifiers() == Qt::ControlModifier;
}

bool isPlain(const QKeyEvent& event, int key) {
    return event.key() == key && event.modifiers() == Qt::NoModifier;
}

bool isRefresh(const QKeyEvent& event) {
    return isPlain(event, Qt::Key_F5) || isControl(event, Qt::Key_R);
}

void toggleFavourite(const PHAssetPtr& asset) {
    // The list hears of it as of every change of the library.
    PHPhotoLibrary::sharedPhotoLibrary().performChanges(
        [asset] { PHAssetChangeRequest::changeRequestForAsset(*asset).setFavorite(!asset->isFavorite); }, {});
}

} // namespace

bool ExifDataListViewController::takesKey(const QKeyEvent& event) const {
    if (isRefresh(event)) {
        return true;
    }
    if (isControl(event, Qt::Key_A) || isPlain(event, Qt::Key_Escape)) {
        return isSelecting();
    }
    const bool isOfItem = isPlain(event, Qt::Key_F) || isPlain(event, Qt::Key_D) || isPlain(event, Qt::Key_C);
    return isOfItem && collectionView->focusedIndexPath();
}

void ExifDataListViewController::press(const QKeyEvent& event) {
    if (isRefresh(event)) {
        refresh();
    } else if (isControl(event, Qt::Key_A)) {
        didTapOnSelectAllButton();
    } else if (isPlain(event, Qt::Key_Escape)) {
        cancelSelectionsAndRefreshUI();
    } else if (const auto focused = collectionView->focusedIndexPath();
               focused && focused->section == kPhotosSection) {
        const auto& records = dataSource->exifDataItemsArray;
        auto* const card =
            dynamic_cast<ExifDataCollectionListViewCell*>(collectionView->cellForItemAtIndexPath(*focused));
        auto* const tile = dynamic_cast<ExifGridWithDetailsCollectionViewCell*>(card);
        if (isPlain(event, Qt::Key_C) && card != nullptr) {
            card->downloadFromICloudButtonTapped();
        }
        if (isPlain(event, Qt::Key_D) && tile != nullptr) {
            tile->toggleTimeStamp();
        }
        if (isPlain(event, Qt::Key_F) && focused->item < records.size() && records[focused->item]->phAsset) {
            toggleFavourite(records[focused->item]->phAsset);
        }
    }
}

bool ExifDataListViewController::eventFilter(QObject* watched, QEvent* event) {
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    // The kind first: the list's last events come when it is a list no more.
    if (isKey && watched == collectionView) {
        const auto& keyEvent = static_cast<const QKeyEvent&>(*event);
        if (takesKey(keyEvent)) {
            if (event->type() == QEvent::KeyPress) {
                press(keyEvent);
            }
            event->accept(); // Of a shortcut's question: the key is wanted here.
            return true;
        }
    }
    return UIViewController::eventFilter(watched, event);
}

} // namespace exifcard

#include "screens/DetailScreen.h"

#include "platform/uikit/UIStoryboard.h"
#include "screens/ExifDataListDataSource.h"
#include "screens/ExifDataListViewController.h"
#include "screens/ListViewTypes.h"

#include <utility>

namespace exifcard {

std::shared_ptr<ExifDataListViewController> makeDetailScreen(
    ExifManager::Records records, std::size_t position) {
    auto screen = std::dynamic_pointer_cast<ExifDataListViewController>(
        UIStoryboard::storyboardWithName("ExifDetails")
            .instantiateViewControllerWithIdentifier("ExifPhotoDetailViewControllerID"));
    if (screen) {
        screen->dataSource->unFilteredExifDataItemsArray = records;
        screen->dataSource->exifDataItemsArray = std::move(records);
        screen->currentIndexPath = IndexPath{kPhotosSection, position};
    }
    return screen;
}

} // namespace exifcard

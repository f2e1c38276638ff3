#include "screens/ExifDataListViewController.h"

#include "platform/uikit/UICollectionView.h"
#include "platform/uikit/UITraitCollection.h"
#include "screens/ExifDataListDataSource.h"
#include "screens/ListViewTypes.h"

#include <algorithm>

namespace exifcard {
namespace {

constexpr double kSectionInset = 4; ///< On all four sides.
constexpr double kGridSpacing = 2;
constexpr double kCardSpacing = 4;
constexpr double kPhoneCardLineSpacing = 5;
constexpr double kPhoneCardHeight = 275;
constexpr double kTabletCardHeight = 295;
constexpr double kLoadingMoreHeight = 80;
constexpr double kDetailsHeight = 12; ///< By which a tile with details is higher than wide.

bool isTablet() {
    return UITraitCollection::currentTraitCollection().userInterfaceIdiom == UIUserInterfaceIdiom::Pad;
}

/// A list that has no size yet has cells all the same.
CGSize atLeastOnePoint(CGSize size) {
    return {std::max(size.width, 1.0), std::max(size.height, 1.0)};
}

/// What a line of a list can hold.
double fullWidth(const UICollectionView& view) {
    const UIEdgeInsets inset = view.contentInset();
    return view.width() - 2 * kSectionInset - inset.left - inset.right - 1;
}

CGSize sizeOfCard(const UICollectionView& view) {
    const double width = view.width();
    if (!isTablet()) {
        return {std::min(width - 8, fullWidth(view)), kPhoneCardHeight};
    }
    const bool isPortrait = view.width() < view.height();
    return {isPortrait ? width * 0.5 - 10 : width / 3 - 8, kTabletCardHeight};
}

CGSize sizeOfTile(const UICollectionView& view, bool hasDetails) {
    const bool isPortrait = view.width() < view.height();
    const int tabletColumns = hasDetails ? (isPortrait ? 4 : 6) : (isPortrait ? 5 : 7);
    const int phoneColumns = hasDetails ? 3 : 4;
    const double width = static_cast<double>(view.width()) / (isTablet() ? tabletColumns : phoneColumns) - 4;
    return {width, hasDetails ? width + kDetailsHeight : width};
}

} // namespace

CGSize ExifDataListViewController::sizeOfExifCardItemForDevice() const {
    return atLeastOnePoint(isGrid(presentation->viewType())
                               ? sizeOfTile(*collectionView, presentation->showsDetailsOnGrid())
                               : sizeOfCard(*collectionView));
}

CGSize ExifDataListViewController::sizeOfiPhoneiPadLoadingMoreCell() const {
    return atLeastOnePoint({fullWidth(*collectionView) - 8, kLoadingMoreHeight});
}

CGSize ExifDataListViewController::sizeForItemAtIndexPath(
    UICollectionView& /*view*/, const Layout& /*layout*/, IndexPath indexPath) {
    return indexPath.section == kLoadingMoreSection ? sizeOfiPhoneiPadLoadingMoreCell()
                                                    : sizeOfExifCardItemForDevice();
}

UIEdgeInsets ExifDataListViewController::insetForSectionAtIndex(
    UICollectionView& /*view*/, const Layout& /*layout*/, std::size_t /*section*/) {
    return {kSectionInset, kSectionInset, kSectionInset, kSectionInset};
}

double ExifDataListViewController::minimumLineSpacingForSectionAtIndex(
    UICollectionView& /*view*/, const Layout& /*layout*/, std::size_t /*section*/) {
    if (isGrid(presentation->viewType())) {
        return kGridSpacing;
    }
    return isTablet() ? kCardSpacing : kPhoneCardLineSpacing;
}

double ExifDataListViewController::minimumInteritemSpacingForSectionAtIndex(
    UICollectionView& /*view*/, const Layout& /*layout*/, std::size_t /*section*/) {
    return isGrid(presentation->viewType()) ? kGridSpacing : kCardSpacing;
}

CGSize ExifDataListViewController::referenceSizeForHeaderInSection(
    UICollectionView& /*view*/, const Layout& /*layout*/, std::size_t section) {
    return dataSource->referenceSizeForHeaderInSection(section);
}

} // namespace exifcard

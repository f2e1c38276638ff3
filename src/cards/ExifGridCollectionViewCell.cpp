#include "cards/ExifGridCollectionViewCell.h"

#include "appearance/Apperance.h"
#include "cards/CardOutlets.h"
#include "cards/TilePlacing.h"
#include "ui_ExifGridCollectionViewCell.h"

namespace exifcard {
namespace {

constexpr double kSelectionBorderWidth = 3.5;

} // namespace

ExifGridCollectionViewCell::ExifGridCollectionViewCell() {
    Ui::ExifGridCollectionViewCell interface;
    interface.setupUi(this);
    _backgroundBorderView = interface.backgroundBorderView;
    interface.imageView->setBackgroundColor(Apperance::ultraLightGrayColor());
    interface.backgroundBorderView->setBackgroundColor(UIColor::white(0, 0));
    interface.favoriteButton->setPictureColor(Apperance::yellowColor());
    interface.favoriteButton->setUncheckedPicture(QStringLiteral("favourite"));
    interface.favoriteButton->hide();
    setOutlets({.imageView = interface.imageView,
        .favoriteButton = interface.favoriteButton,
        .playButton = interface.playButton,
        .iCloudDownloadButton = interface.iCloudDownloadButton,
        .isSelectedHolderView = interface.isSelectedHolderView});
    connect(
        interface.favoriteButton, &BadgeButton::toggled, interface.favoriteButton, &BadgeButton::setVisible);
    createAnimationViewWithName("cloud_download");
}

ExifGridCollectionViewCell::~ExifGridCollectionViewCell() = default;

void ExifGridCollectionViewCell::layoutSubviews() {
    placePicture(outlets(), rect());
    _backgroundBorderView->setGeometry(rect());
    outlets().isSelectedHolderView->setGeometry(rect());
}

void ExifGridCollectionViewCell::markSelected() {
    layer().borderColor = Apperance::yellowColor();
    layer().borderWidth = kSelectionBorderWidth;
    update();
}

void ExifGridCollectionViewCell::markUnSelected() {
    layer().borderColor = Apperance::yellowColor();
    layer().borderWidth = 0;
    update();
}

void ExifGridCollectionViewCell::setIsSelected(bool isSelected) {
    ExifDataCollectionListViewCell::setIsSelected(isSelected);
    if (isSelected) {
        markSelected();
    } else {
        markUnSelected();
    }
}

} // namespace exifcard

#include "cards/ExifGridCollectionViewCell.h"

#include "appearance/Apperance.h"
#include "cards/CardOutlets.h"
#include "cards/ExifGridWithDetailsCollectionViewCell.h"
#include "cards/PhotoTexts.h"
#include "cards/TilePlacing.h"
#include "metadata/ExifInformation.h"
#include "platform/foundation/DateFormatter.h"
#include "platform/foundation/LocalizedString.h"
#include "platform/uikit/Accessibility.h"
#include "platform/uikit/Text+Qt.h"
#include "ui_ExifGridCollectionViewCell.h"

#include <QStringList>

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
    interface.favoriteButton->setUncheckedPicture("favourite");
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

/// Readers are told what a tile with details shows.
void ExifGridCollectionViewCell::updateAccessibility() {
    ExifDataCollectionListViewCell::updateAccessibility();
    if (!exifInfo()) {
        return;
    }
    const ExifInformation& record = *exifInfo();
    QStringList parts;
    if (record.exifInfoAvailable) {
        const ExposureTexts texts = exposureTextsOf(record);
        parts << texts.aperture << texts.shutterSpeed << texts.ISO;
    } else {
        parts << qString(localizedString("Exif Not available"));
    }
    if (record.dateTaken) {
        parts << qString(
            ExifGridWithDetailsCollectionViewCell::sharedDateFormatter().stringFromDate(*record.dateTaken));
    }
    parts << qString(record.locationName.value_or(""));
    setAccessibilityHint(*this, spokenList(parts));
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

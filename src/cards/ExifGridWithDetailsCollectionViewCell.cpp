#include "cards/ExifGridWithDetailsCollectionViewCell.h"

#include "appearance/Apperance.h"
#include "appearance/ThemeColors.h"
#include "appearance/uikit/Apperance+Views.h"
#include "cards/CardOutlets.h"
#include "cards/PhotoTexts.h"
#include "cards/TilePlacing.h"
#include "metadata/ExifInformation.h"
#include "platform/foundation/ByteCountFormatter.h"
#include "platform/foundation/DateFormatter.h"
#include "platform/foundation/FormatString.h"
#include "platform/foundation/LocalizedString.h"
#include "platform/foundation/RelativeDate.h"
#include "platform/photos/PHAsset.h"
#include "platform/uikit/Accessibility.h"
#include "platform/uikit/Text+Qt.h"
#include "platform/uikit/UIFont.h"
#include "settings/PersistanceManager.h"
#include "ui_ExifGridWithDetailsCollectionViewCell.h"

#include <QFont>
#include <QStringList>

#include <algorithm>

namespace exifcard {
namespace {

constexpr double kFontSize = 10;
constexpr double kStripOpacity = 0.5;

// Lengths of a tile, in points.
constexpr int kBorder = 1;
constexpr int kTextsHeight = 55;
constexpr int kLineHeight = 13;
constexpr int kAboveTexts = 1; ///< Leaves the last line clear of the border of a selected tile.
constexpr int kBesideTexts = 5;
constexpr int kBetweenTexts = 4;
constexpr int kCameraHeight = 16;
constexpr int kLocationWidth = 11;

QFont tileFont(const char* fontName) {
    const auto font = UIFont::fontWithName(fontName, kFontSize);
    return font ? qFont(*font) : QFont();
}

/// Intended: without the moving half of a live photo, which the strip of the card counts too.
QString sizeText(const ExifInformation& record) {
    static const ByteCountFormatter formatter({.countStyle = ByteCountFormatter::CountStyle::File});
    return qString(
        stringWithFormat("%0.0f x %0.0f (%@)", {record.dimensions.width, record.dimensions.height,
                                                   formatter.stringFromByteCount(record.fileSizeInBytes)}));
}

} // namespace

ExifGridWithDetailsCollectionViewCell::ExifGridWithDetailsCollectionViewCell()
    : _interface(std::make_unique<Ui::ExifGridWithDetailsCollectionViewCell>()) {
    _interface->setupUi(this);
    setAppearanceOnView(*_interface->cameraModelHolderView, kStripOpacity);
    setAppearanceOnView(*_interface->filenameHolderView);
    _interface->backgroundBorderView->setBackgroundColor(
        colorForCurrentStyleWithLight(UIColor::white(0.2, 0.4), UIColor::white(0.2)));
    _interface->imageView->setBackgroundColor(Apperance::ultraLightGrayColor());
    _interface->favoriteButton->setPictureColor(Apperance::yellowColor());
    _interface->favoriteButton->setUncheckedPicture("favourite");
    _interface->favoriteButton->hide();
    _interface->locationButton->setPictureColor(Apperance::appearanceTintColor());
    _interface->cameraModelHolderView->hide();
    setUpLabels();
    setOutlets({.imageView = _interface->imageView,
        .favoriteButton = _interface->favoriteButton,
        .playButton = _interface->playButton,
        .iCloudDownloadButton = _interface->iCloudDownloadButton,
        .isSelectedHolderView = _interface->isSelectedHolderView});
    createAnimationViewWithName("cloud_download");
}

ExifGridWithDetailsCollectionViewCell::~ExifGridWithDetailsCollectionViewCell() = default;

void ExifGridWithDetailsCollectionViewCell::setUpLabels() {
    static const QFont regular = tileFont("AvenirNext-Regular");
    static const QFont demiBold = tileFont("AvenirNext-DemiBold");
    for (TileLabel* const label : {_interface->apertureLabel, _interface->ISOLabel}) {
        label->setFont(demiBold);
        label->setTextColor(Apperance::appearanceTextColor());
    }
    for (TileLabel* const label : {_interface->cameraModelLabel, _interface->shutterSpeedLabel}) {
        label->setFont(regular);
        label->setTextColor(Apperance::appearanceTextColor());
    }
    for (TileLabel* const label : {_interface->imageDimensionAndFileSize, _interface->dateTakenLabel}) {
        label->setFont(regular);
        label->setTextColor(secondaryTextColor());
    }
    _interface->cameraModelLabel->setHaloColor(Apperance::appearanceBackgroundColor(kStripOpacity));
}

void ExifGridWithDetailsCollectionViewCell::setExifInfo(
    const std::shared_ptr<ExifInformation>& exifInfo, ExifOriginalCellBlock withExifOriginalCellBlock) {
    ExifDataCollectionListViewCell::setExifInfo(exifInfo, std::move(withExifOriginalCellBlock));
    if (!exifInfo) {
        return;
    }
    if (exifInfo->exifInfoAvailable) {
        showExposure();
    } else {
        _interface->shutterSpeedLabel->setText(qString(localizedString("Exif Not available")));
    }
    _interface->cameraModelHolderView->setVisible(!_interface->cameraModelLabel->text().isEmpty());
    if (exifInfo->phAsset) {
        _interface->favoriteButton->setVisible(exifInfo->phAsset->isFavorite);
        if (exifInfo->phAsset->isFavorite) {
            _interface->favoriteButton->setChecked(true);
        }
    }
    _interface->locationButton->setVisible(exifInfo->gpsInfoAvailable());
    _interface->imageDimensionAndFileSize->setText(sizeText(*exifInfo));
    placeTexts();
    if (PersistanceManager::sharedInstance().datePreferenceTimeAgoSinceNow()) {
        showDateTimeAgo();
    } else {
        showDateTimeStamp();
    }
}

void ExifGridWithDetailsCollectionViewCell::layoutSubviews() {
    const QRect inner = rect().marginsRemoved({kBorder, kBorder, kBorder, kBorder});
    const QRect picture = inner.adjusted(0, 0, 0, -kTextsHeight);
    placePicture(outlets(), picture);
    QRect camera = picture;
    camera.setTop(picture.bottom() + 1 - kCameraHeight);
    _interface->cameraModelHolderView->setGeometry(camera);
    _interface->cameraModelLabel->setGeometry(
        kBesideTexts, (kCameraHeight - kLineHeight) / 2, camera.width() - 2 * kBesideTexts, kLineHeight);
    QRect texts = inner;
    texts.setTop(picture.bottom() + 1);
    _interface->filenameHolderView->setGeometry(texts);
    placeTexts();
    _interface->backgroundBorderView->setGeometry(rect());
    _interface->isSelectedHolderView->setGeometry(rect());
}

/// ISO speed and mark of place take what they need, the text before them the rest of the line.
void ExifGridWithDetailsCollectionViewCell::placeTexts() {
    const int width = std::max(0, _interface->filenameHolderView->width() - 2 * kBesideTexts);
    const auto placeLine = [width](int line, QWidget& text, QWidget* last = nullptr, int lastWidth = 0) {
        const int top = kAboveTexts + line * kLineHeight;
        const int taken = last ? std::min(width, lastWidth + kBetweenTexts) : 0;
        placeForReading(text, {kBesideTexts, top, width - taken, kLineHeight});
        if (last) {
            placeForReading(*last, {kBesideTexts + width - lastWidth, top, lastWidth, kLineHeight});
        }
    };
    TileLabel& speed = *_interface->ISOLabel;
    placeLine(0, *_interface->apertureLabel, &speed,
        std::min(width, speed.fontMetrics().horizontalAdvance(speed.text().trimmed())));
    const bool hasPlace = !_interface->locationButton->isHidden();
    placeLine(1, *_interface->shutterSpeedLabel, hasPlace ? _interface->locationButton : nullptr,
        std::min(width, kLocationWidth));
    placeLine(2, *_interface->imageDimensionAndFileSize);
    placeLine(3, *_interface->dateTakenLabel);
}

void ExifGridWithDetailsCollectionViewCell::showExposure() {
    const ExposureTexts texts = exposureTextsOf(*exifInfo());
    _interface->apertureLabel->setText(texts.aperture);
    _interface->shutterSpeedLabel->setText(texts.shutterSpeed);
    _interface->ISOLabel->setText(texts.ISO);
    _interface->cameraModelLabel->setText(qString(exifInfo()->cameraModel.value_or("")));
}

void ExifGridWithDetailsCollectionViewCell::toggleTimeStamp() {
    if (_isDisplayingTimeAgo) {
        showDateTimeStamp();
    } else {
        showDateTimeAgo();
    }
}

void ExifGridWithDetailsCollectionViewCell::showDateTimeAgo() {
    // Intended: a record without date keeps the text, but counts as one that shows the elapsed time.
    if (exifInfo() && exifInfo()->dateTaken) {
        showDate(stringWithFormat("  %@  ", {timeAgoSinceNow(*exifInfo()->dateTaken)}));
    }
    _isDisplayingTimeAgo = true;
}

const DateFormatter& ExifGridWithDetailsCollectionViewCell::sharedDateFormatter() {
    static std::unique_ptr<const DateFormatter> shared;
    const std::string pattern = PersistanceManager::sharedInstance().dateFormatString();
    if (!shared || shared->dateFormat() != pattern) {
        shared = std::make_unique<const DateFormatter>(pattern);
    }
    return *shared;
}

void ExifGridWithDetailsCollectionViewCell::showDateTimeStamp() {
    const bool isDated = exifInfo() && exifInfo()->dateTaken;
    showDate(isDated ? sharedDateFormatter().stringFromDate(*exifInfo()->dateTaken) : std::string());
    _isDisplayingTimeAgo = false;
}

void ExifGridWithDetailsCollectionViewCell::showDate(const std::string& text) {
    _interface->dateTakenLabel->setText(qString(text));
    updateAccessibility();
}

void ExifGridWithDetailsCollectionViewCell::updateAccessibility() {
    ExifDataCollectionListViewCell::updateAccessibility();
    QStringList parts;
    for (const TileLabel* const label : {_interface->apertureLabel, _interface->shutterSpeedLabel,
             _interface->ISOLabel, _interface->dateTakenLabel}) {
        parts << label->text().trimmed();
    }
    if (exifInfo()) {
        parts << qString(exifInfo()->locationName.value_or(""));
    }
    setAccessibilityHint(*this, spokenList(parts));
}

void ExifGridWithDetailsCollectionViewCell::prepareForReuse() {
    ExifDataCollectionListViewCell::prepareForReuse();
    for (TileLabel* const label : {_interface->apertureLabel, _interface->shutterSpeedLabel,
             _interface->ISOLabel, _interface->cameraModelLabel, _interface->dateTakenLabel,
             _interface->imageDimensionAndFileSize}) {
        label->clear();
    }
    _isDisplayingTimeAgo = false;
}

} // namespace exifcard

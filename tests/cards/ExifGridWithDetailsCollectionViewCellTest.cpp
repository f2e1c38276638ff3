#include "cards/CardLibrary.h"
#include "cards/ExifGridCollectionViewCell.h"
#include "platform/foundation/DateFormatter.h"
#include "platform/uikit/Accessibility.h"
#include "platform/uikit/UITraitCollection.h"
#include "settings/PersistanceManager.h"

#include <QAccessible>
#include <QBitmap>
#include <QImage>

#include <cmath>

namespace exifcard {
namespace {

class ExifGridWithDetailsCollectionViewCellTest : public CardLibrary {};

TEST_F(ExifGridWithDetailsCollectionViewCellTest, TellsAPhotosExposureCameraSizeAndDate) {
    PersistanceManager::sharedInstance().setDatePreferenceTimeAgoSinceNow(false);
    const CLLocation place{.coordinate = {48.8584, 2.2945}};
    const auto cell = makeCell(recordOf(add(kCanon, {.location = place})));
    EXPECT_EQ(text(*cell, "apertureLabel"), "f/5.6");
    EXPECT_EQ(text(*cell, "shutterSpeedLabel"), "1/1600 seconds");
    EXPECT_EQ(text(*cell, "ISOLabel"), "ISO 400");
    EXPECT_EQ(text(*cell, "cameraModelLabel"), "Canon EOS 40D");
    EXPECT_EQ(text(*cell, "imageDimensionAndFileSize"), "100 x 68 (16 KB)");
    EXPECT_EQ(text(*cell, "dateTakenLabel"), "11-08-2009 09:09:45 AM");
    EXPECT_TRUE(isShown(*cell, "locationButton"));
    EXPECT_TRUE(isShown(*cell, "cameraModelHolderView"));
    EXPECT_FALSE(isShown(*cell, "playButton"));
    EXPECT_FALSE(isShown(*cell, "iCloudDownloadButton"));
    EXPECT_FALSE(cell->isDisplayingTimeAgo());
}

TEST_F(ExifGridWithDetailsCollectionViewCellTest, ChangesBetweenTheDateAndTheTimeSince) {
    const auto record = recordOf(add(kCanon));
    record->dateTaken = Date{Date::now().secondsSince1970 - 3 * 86400.0 - 60};
    const auto cell = makeCell(record);
    EXPECT_EQ(text(*cell, "dateTakenLabel"), "  3 days ago  ");
    EXPECT_TRUE(cell->isDisplayingTimeAgo());
    cell->toggleTimeStamp();
    EXPECT_EQ(text(*cell, "dateTakenLabel").size(), std::string_view("11-08-2009 09:09:45 AM").size());
    cell->toggleTimeStamp();
    EXPECT_EQ(text(*cell, "dateTakenLabel"), "  3 days ago  ");

    record->dateTaken = std::nullopt;
    cell->toggleTimeStamp();
    EXPECT_EQ(text(*cell, "dateTakenLabel"), "");
    cell->toggleTimeStamp();
    EXPECT_EQ(text(*cell, "dateTakenLabel"), "");
    EXPECT_TRUE(cell->isDisplayingTimeAgo());
}

TEST_F(ExifGridWithDetailsCollectionViewCellTest, WritesTheDateByThePatternThatWasChosenLast) {
    const auto cell = makeCell(recordOf(add(kCanon)));
    for (const auto& [pattern, written] : {std::pair("yyyy", "2009"), {"d MMMM yyyy", "11 August 2009"}}) {
        PersistanceManager::sharedInstance().setDateFormatString(pattern);
        EXPECT_EQ(Cell::sharedDateFormatter().dateFormat(), pattern);
        cell->showDateTimeStamp();
        EXPECT_EQ(text(*cell, "dateTakenLabel"), written);
    }
}

TEST_F(ExifGridWithDetailsCollectionViewCellTest, TellsOfAVideoOtherThings) {
    const auto record = ExifInformation::init();
    record->setMediaType(2);
    record->exifInfoAvailable = true;
    record->duration = 75;
    record->framesPerSecondValue = 25;
    record->cameraModel = "A camera";
    const auto cell = makeCell(record);
    EXPECT_EQ(text(*cell, "apertureLabel"), record->Duration().exifValueReadableFormat);
    EXPECT_EQ(text(*cell, "ISOLabel"), record->FramesPerSecond().exifValueReadableFormat);
    EXPECT_EQ(text(*cell, "apertureLabel"), "00:01:15");
    EXPECT_EQ(text(*cell, "shutterSpeedLabel"), "");
    EXPECT_TRUE(isShown(*cell, "playButton"));
    EXPECT_FALSE(isShown(*cell, "locationButton"));
}

TEST_F(ExifGridWithDetailsCollectionViewCellTest, WithoutExifSaysSoAndKeepsTheOtherTexts) {
    const auto cell = makeCell(recordOf(add(kCanon)));
    cell->setExifInfo(ExifInformation::init(), nullptr);
    EXPECT_EQ(text(*cell, "shutterSpeedLabel"), "Exif Not available");
    EXPECT_EQ(text(*cell, "apertureLabel"), "f/5.6");
    cell->prepareForReuse();
    for (const char* const name : {"apertureLabel", "shutterSpeedLabel", "ISOLabel", "cameraModelLabel",
             "dateTakenLabel", "imageDimensionAndFileSize"}) {
        EXPECT_EQ(text(*cell, name), "") << name;
    }
    EXPECT_FALSE(cell->isDisplayingTimeAgo());
    cell->setExifInfo(ExifInformation::init(), nullptr);
    EXPECT_EQ(text(*cell, "shutterSpeedLabel"), "Exif Not available");
    EXPECT_EQ(text(*cell, "apertureLabel"), "");
    EXPECT_FALSE(isShown(*cell, "cameraModelHolderView"));
}

TEST_F(ExifGridWithDetailsCollectionViewCellTest, ShowsTheHeartOfAFavouriteOnly) {
    const auto cell = makeCell(recordOf(add(kCanon, {.isFavorite = true})));
    EXPECT_TRUE(isShown(*cell, "favoriteButton"));
    EXPECT_TRUE(outlet<QAbstractButton>(*cell, "favoriteButton").isChecked());
    EXPECT_EQ(accessibilityLabel(outlet<QWidget>(*cell, "favoriteButton")), QStringLiteral("Favorite ON"));
    cell->setExifInfo(recordOf(add("canon-6d-elephants.jpg")), nullptr);
    EXPECT_FALSE(isShown(*cell, "favoriteButton"));
}

TEST_F(ExifGridWithDetailsCollectionViewCellTest, IsReadOutByNameExposureDateAndPlace) {
    const auto record = recordOf(add(kCanon));
    record->locationName = "Lagos,Portugal";
    record->dateTaken = Date{Date::now().secondsSince1970 - 8 * 86400.0};
    const auto cell = makeCell(record);
    EXPECT_EQ(accessibilityLabel(*cell), QStringLiteral("Image")) << "before the name has come";
    waitUntil([&cell] { return accessibilityLabel(*cell) != QStringLiteral("Image"); });
    EXPECT_EQ(accessibilityLabel(*cell).toStdString(), kCanon);
    EXPECT_EQ(
        accessibilityHint(*cell).toStdString(), "f/5.6, 1/1600 seconds, ISO 400, last week, Lagos,Portugal");
    PersistanceManager::sharedInstance().setDatePreferenceTimeAgoSinceNow(false);
    ExifGridCollectionViewCell plain;
    plain.setExifInfo(record, nullptr);
    cell->showDateTimeStamp();
    EXPECT_EQ(accessibilityHint(plain), accessibilityHint(*cell)) << "whatever a tile shows";
}

TEST_F(ExifGridWithDetailsCollectionViewCellTest, TellsReadersItsMarksInWords) {
    struct Case {
        std::uint64_t subtypes;
        bool isVideo;
        bool isFavorite;
        bool isElsewhere;
        double progress;
        const char* value;
    };
    const Case cases[] = {
        {0, false, false, false, -1, ""},
        {0, false, true, false, -1, "Favorite"},
        {kPHAssetMediaSubtypePhotoLive | kPHAssetMediaSubtypePhotoHDR, false, true, false, -1,
            "Favorite, Live Photo"},
        {0, true, false, false, -1, "Video"},
        {kPHAssetMediaSubtypeVideoTimelapse, true, false, false, -1, "Time-lapse video"},
        {0, false, false, true, -1, "Original in iCloud"},
        {0, true, true, true, 0, "Favorite, Video, Downloading from iCloud"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.value);
        auto asset = std::make_shared<PHAsset>();
        asset->localIdentifier = c.value;
        asset->mediaType = c.isVideo ? PHAssetMediaType::Video : PHAssetMediaType::Image;
        asset->mediaSubtypes = c.subtypes;
        asset->isFavorite = c.isFavorite;
        const auto record = ExifInformation::init();
        record->phAsset = asset;
        record->imageResultIsInCloud = c.isElsewhere;
        record->iCloudDownloadProgress = c.progress;
        EXPECT_EQ(accessibilityValue(*makeCell(record)).toStdString(), c.value);
    }
}

TEST_F(ExifGridWithDetailsCollectionViewCellTest, ReadersChangeTheFavouriteWithoutItsButton) {
    const auto cell = makeCell(recordOf(add(kCanon)));
    QAccessibleActionInterface* const actions =
        QAccessible::queryAccessibleInterface(cell.get())->actionInterface();
    ASSERT_TRUE(actions->actionNames().contains(QStringLiteral("Add to favorites")));
    actions->doAction(QStringLiteral("Add to favorites"));
    waitUntil([] { return assetNamed(kCanon)->isFavorite; });
    EXPECT_EQ(accessibilityValue(*cell), QStringLiteral("Favorite"));
    EXPECT_TRUE(actions->actionNames().contains(QStringLiteral("Remove from favorites")));
}

TEST_F(ExifGridWithDetailsCollectionViewCellTest, TheBorderOfASelectedTileLeavesTheDateWhole) {
    constexpr double kSelectionBorderWidth = 3.5;
    const auto cell = makeCell(recordOf(add(kCanon, {})));
    auto& date = outlet<QLabel>(*cell, "dateTakenLabel");
    date.setText(QStringLiteral("yesterday"));
    QImage drawn(date.size(), QImage::Format_ARGB32_Premultiplied);
    drawn.fill(Qt::transparent);
    date.render(&drawn, QPoint(), QRegion(), QWidget::DrawChildren);
    const QRect ink = QRegion(QBitmap::fromImage(drawn.createAlphaMask(Qt::ThresholdDither))).boundingRect();
    ASSERT_FALSE(ink.isEmpty());
    const int bottom = date.mapTo(cell.get(), QPoint(0, ink.bottom() + 1)).y();
    EXPECT_LE(bottom, std::ceil(cell->height() - kSelectionBorderWidth));
}

TEST_F(ExifGridWithDetailsCollectionViewCellTest, LetsThePictureGrowAndMirrorsForReadingFromTheRight) {
    const auto record = recordOf(add(kCanon, {.isFavorite = true}));
    for (const int width : {121, 187, 250}) {
        SCOPED_TRACE(width);
        const auto cell = makeCell(record);
        cell->resize(width, width + 12);
        cell->grab();
        const auto& imageView = outlet<UIImageView>(*cell, "imageView");
        EXPECT_EQ(imageView.geometry(), QRect(1, 1, width - 2, width + 12 - 57));
        EXPECT_EQ(outlet<QWidget>(*cell, "filenameHolderView").height(), 55);
        EXPECT_EQ(cell->sizeForImageView(), (CGSize{3.0 * (width - 2), 3.0 * (width + 12 - 57)}));
        EXPECT_EQ(outlet<QWidget>(*cell, "favoriteButton").geometry().right(), width - 2);
        cell->setLayoutDirection(Qt::RightToLeft);
        cell->grab();
        EXPECT_EQ(outlet<QWidget>(*cell, "favoriteButton").geometry().left(), 1);
    }
}

} // namespace
} // namespace exifcard

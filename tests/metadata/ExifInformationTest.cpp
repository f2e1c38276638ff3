#include "metadata/ExifInformation.h"

#include "appearance/Apperance.h"
#include "metadata/Records.h"
#include "platform/photos/PHAsset.h"
#include "platform/uivalues/Bitmap.h"
#include "platform/uivalues/UIImage.h"
#include "platform/uivalues/UIScreen.h"
#include "settings/PersistanceManager.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace exifcard {
namespace {

using testing::ElementsAre;

/// Sets the main screen's scale for one test; the size stays the one that the appearance took.
class ScreenScale {
public:
    explicit ScreenScale(double scale) { UIScreen::setMainScreen({_before.sizeInPoints, scale}); }
    ~ScreenScale() { UIScreen::setMainScreen(_before); }
    ScreenScale(const ScreenScale&) = delete;
    ScreenScale& operator=(const ScreenScale&) = delete;

private:
    UIScreen _before = UIScreen::mainScreen();
};

TEST(ExifInformationTest, TakesTheHeadlineValuesOfADictionary) {
    const auto exif = Dictionary::make({{"FNumber", 2.8F}, {"ExposureTime", 0.008}, {"FocalLength", 35.0},
        {"ISOSpeedRatings", Array::make({100})}, {"ISOSpeed", 200}, {"Flash", 16},
        {"DateTimeOriginal", "2020:01:02 03:04:05"}});
    const auto properties = Dictionary::make({{"{Exif}", exif}, {"PixelWidth", 4032}, {"PixelHeight", 3024}});
    const auto record = ExifInformation::exifInformationFromMetaDataDictionary(properties);
    EXPECT_EQ(record->exifDic, exif);
    EXPECT_NE(record->metaDataDictionary, properties);
    EXPECT_EQ(*record->metaDataDictionary, *properties);
    EXPECT_EQ(record->aperture_fStop, Value(2.8F));
    EXPECT_EQ(record->shutterSpeedExposureTimeInSeconds, Value(0.008F));
    EXPECT_EQ(record->focalLengthInmm, Value(35.0));
    EXPECT_EQ(record->iSOSpeed, Value(100));
    EXPECT_EQ(record->flashStatusCode, 16);
    EXPECT_EQ(record->dimensions, (CGSize{4032, 3024}));
    EXPECT_EQ(record->dateTaken, Date{1577934245});
    EXPECT_EQ(record->keywordsArray, nullptr);
    EXPECT_EQ(record->cameraModel, std::nullopt);
}

TEST(ExifInformationTest, AnIsoSpeedStandsInForMissingRatings) {
    EXPECT_EQ(recordWithExif(kCGImagePropertyExifISOSpeed, 200)->iSOSpeed, Value(200));
    EXPECT_EQ(recordWith({})->iSOSpeed, Value(0));
}

TEST(ExifInformationTest, NoDictionaryGivesARecordWithoutAnything) {
    const auto record = ExifInformation::exifInformationFromMetaDataDictionary(nullptr);
    ASSERT_NE(record, nullptr);
    EXPECT_FALSE(record->exifInfoAvailable || record->exifORTiffInfoAvailable || record->isScreenShot);
    EXPECT_TRUE(record->iSOSpeed.isNothing());
    EXPECT_EQ(record->metaDataDictionary, nullptr);
    EXPECT_TRUE(record->imageResultIsInCloud);
    EXPECT_EQ(record->iCloudDownloadProgress, -1);
}

TEST(ExifInformationTest, KnowsWhatMakesEXIFUsable) {
    for (const char* const key : {"FocalLength", "FNumber", "ExposureTime"}) {
        EXPECT_TRUE(recordWithExif(key, 1)->exifInfoAvailable) << key;
    }
    const auto colour = recordWithExif(kCGImagePropertyExifColorSpace, 1);
    EXPECT_FALSE(colour->exifInfoAvailable);
    EXPECT_TRUE(colour->exifORTiffInfoAvailable);
    const auto tiff = recordWith(kCGImagePropertyTIFFDictionary, {{"Make", "Acme"}});
    EXPECT_FALSE(tiff->exifInfoAvailable);
    EXPECT_TRUE(tiff->exifORTiffInfoAvailable);
    EXPECT_FALSE(recordWith({{"{Exif}", "no dictionary"}})->exifORTiffInfoAvailable);
}

TEST(ExifInformationTest, ADateThatIsNoneGivesNone) {
    for (const Value& text : {Value("0000:00:00 00:00:00"), Value("2020:01:02"), Value(""), Value(5)}) {
        EXPECT_EQ(recordWithExif(kCGImagePropertyExifDateTimeOriginal, text)->dateTaken, std::nullopt);
    }
}

TEST(ExifInformationTest, APhotoOfExactlyTheScreensPixelsIsAScreenshot) {
    struct Case {
        double scale;
        int width;
        int height;
        bool isScreenShot;
    };
    const Case cases[] = {{3, 1170, 2532, true}, {3, 2532, 1170, true}, {3, 1170, 2531, false},
        {3, 1170, 1170, false}, {2, 780, 1688, true}, {2, 1170, 2532, false}, {3, 0, 0, false}};
    ASSERT_EQ(Apperance::sharedInstance().mainScreenBounds.size, (CGSize{390, 844}));
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.width << "x" << c.height << "@" << c.scale);
        const ScreenScale scale(c.scale);
        EXPECT_EQ(
            recordWith({{"PixelWidth", c.width}, {"PixelHeight", c.height}})->isScreenShot, c.isScreenShot);
    }
    const auto photo = recordWith(
        {{"PixelWidth", 1170}, {"PixelHeight", 2532}, {"{Exif}", Dictionary::make({{"FNumber", 8}})}});
    EXPECT_FALSE(photo->isScreenShot);
}

TEST(ExifInformationTest, KeywordsAreAListWheneverThereIsIPTC) {
    const auto keywords = Array::make({"sea"});
    const auto record = recordWith(kCGImagePropertyIPTCDictionary, {{"Keywords", keywords}});
    EXPECT_EQ(record->keywordsArray, keywords);
    record->iptcDic->setObjectForKey("sea", kCGImagePropertyIPTCKeywords);
    record->updateKeywordsArray();
    ASSERT_NE(record->keywordsArray, nullptr);
    EXPECT_TRUE(record->keywordsArray->isEmpty());
    record->iptcDic = nullptr;
    record->keywordsArray = keywords;
    record->updateKeywordsArray();
    EXPECT_EQ(record->keywordsArray, keywords);
}

TEST(ExifInformationTest, TheTwinIsACopyWithoutTheHeadlineValues) {
    const auto record = recordWith({{"{Exif}", Dictionary::make({{"FNumber", 8}})},
        {"{IPTC}", Dictionary::make({{"Keywords", Array::make({"sea"})}})}, {"PixelWidth", 100}});
    record->location = CLLocation{.altitude = 5};
    record->dateCreated = Date{7};
    record->setMediaType(3);
    record->phAsset = std::make_shared<PHAsset>(PHAsset{.mediaType = PHAssetMediaType::Video});
    const auto twin = record->editedEXIFInfo();
    EXPECT_EQ(twin, record->editedEXIFInfo());
    EXPECT_TRUE(twin->exifInfoAvailable && twin->exifORTiffInfoAvailable);
    EXPECT_NE(twin->exifDic, record->exifDic);
    EXPECT_EQ(*twin->exifDic, *record->exifDic);
    EXPECT_TRUE(twin->gpsDic && twin->gpsDic->isEmpty());
    EXPECT_NE(twin->metaDataDictionary->objectForKey("{Exif}").dictionary(), record->exifDic);
    EXPECT_NE(twin->keywordsArray, record->keywordsArray);
    EXPECT_EQ(*twin->keywordsArray, *record->keywordsArray);
    EXPECT_EQ(twin->location, record->location);
    EXPECT_EQ(twin->dateCreated, Date{7});
    EXPECT_EQ(twin->mediaTypeForEditedCase(), 2);
    EXPECT_EQ(twin->dimensions, CGSize());
    EXPECT_TRUE(twin->aperture_fStop.isNothing());
    EXPECT_FALSE(twin->editedChanges);

    record->setEditedEXIFInfo(nullptr);
    record->phAsset = nullptr;
    EXPECT_NE(record->editedEXIFInfo(), twin);
    EXPECT_EQ(record->mediaType(), 3);
    EXPECT_EQ(record->editedEXIFInfo()->mediaType(), 0);
}

TEST(ExifInformationTest, AnEditedRowTakesThePlaceOfTheOneBefore) {
    const auto record = ExifInformation::init();
    const ExifValue artist = {.uniqueID = "Artist", .exifValueReadableFormat = "A"};
    const ExifValue title = {.uniqueID = "Title", .exifValueReadableFormat = "T"};
    const ExifValue laterArtist = {.uniqueID = "Artist", .exifValueReadableFormat = "B"};
    record->addToEditedExifValues(artist);
    record->addToEditedExifValues(title);
    record->addToEditedExifValues(laterArtist);
    EXPECT_THAT(record->editedValuesArray, ElementsAre(laterArtist, title));
}

TEST(ExifInformationTest, AMemoryWarningDropsTheCachedThumbnailAlone) {
    const auto image =
        UIImage::imageWithBitmap(std::make_shared<Bitmap>(Bitmap{1, 1, /*channels=*/1, {0}, {}}));
    const auto record = ExifInformation::init();
    record->cachedThumbNailImage = image;
    record->thumbNailImage = image;
    auto gone = ExifInformation::init();
    gone.reset();
    NotificationCenter::defaultCenter().postNotificationName(
        "UIApplicationDidReceiveMemoryWarningNotification", nullptr);
    EXPECT_EQ(record->cachedThumbNailImage, nullptr);
    EXPECT_EQ(record->thumbNailImage, image);
}

TEST(ExifInformationTest, PointsBackAtTheUneditedFile) {
    constexpr std::pair<const char*, const char*> kURLs[] = {
        {"file:///a/Adjustments/FullSizeRender.jpg", "file:///a.jpg"},
        {"file:///a/Adjustments/FullSizeRender/b/Adjustments/FullSizeRender.jpg", "file:///a/b.jpg"},
        {"file:///Adjust/Adjustments/FullSizeRenderments/FullSizeRender",
            "file:///Adjustments/FullSizeRender"},
        {"file:///a/Adjustments/b.jpg", "file:///a/Adjustments/b.jpg"},
        {"", ""},
    };
    const auto record = ExifInformation::init();
    for (const auto& [url, corrected] : kURLs) {
        record->imageFilePathURL = URL::withString(url);
        EXPECT_EQ(record->correctedImageFilePathURL().absoluteString(), corrected);
    }
}

TEST(ExifInformationTest, MakesOneRecordAnAssetInTheirOrder) {
    const std::vector<std::shared_ptr<const PHAsset>> assets = {
        std::make_shared<PHAsset>(), std::make_shared<PHAsset>()};
    const auto records = ExifInformation::exifInformationsArrayFrom(assets);
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0]->phAsset, assets[0]);
    EXPECT_EQ(records[1]->phAsset, assets[1]);
    EXPECT_EQ(records[0]->metaDataDictionary, nullptr);
}

TEST(ExifInformationTest, WritesDatesByThePatternThatTheUserChose) {
    auto& settings = PersistanceManager::sharedInstance();
    const auto record = recordWithExif(kCGImagePropertyExifDateTimeOriginal, "2020:01:02 15:04:05");
    EXPECT_EQ(textOf(record->DateTaken()), "02-01-2020 03:04:05 PM");
    settings.setDateFormatString("yyyy/MM/dd HH:mm");
    EXPECT_EQ(textOf(record->DateTaken()), "2020/01/02 15:04");
    record->phAsset = std::make_shared<PHAsset>(PHAsset{.modificationDate = Date{0}});
    EXPECT_EQ(textOf(record->EditedDate()), "1970/01/01 00:00");
    settings.setDateFormatString("dd-MM-YYYY hh:mm:ss a");
    EXPECT_EQ(textOf(record->EditedDate()), "01-01-1970 12:00:00 AM");
    EXPECT_EQ(textOf(ExifInformation::init()->DateTaken()), "");
    EXPECT_EQ(textOf(ExifInformation::init()->EditedDate()), "");
}

} // namespace
} // namespace exifcard

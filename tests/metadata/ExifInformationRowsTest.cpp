#include "metadata/FieldKeys.h"
#include "metadata/Records.h"
#include "settings/ExifKey.h"
#include "settings/PersistanceManager.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

namespace exifcard {
namespace {

using testing::HasSubstr;

/// Makes these fields, in this order, the ones to share.
void share(std::initializer_list<std::string> keys) {
    ExifKeys list;
    for (const std::string& key : keys) {
        list.push_back(ExifKey::exifWithKey(key));
    }
    PersistanceManager::sharedInstance().setSharedExifVisibleKeysOrderedArray(std::move(list));
}

TEST(ExifInformationRowsTest, EveryRowHasItsKeyAndLabel) {
    const auto record = recordWith({});
    std::set<std::string_view> keys;
    for (const FieldKey& field : fieldKeys()) {
        SCOPED_TRACE(field.key);
        EXPECT_TRUE(keys.insert(field.key).second);
        const auto answer = record->performCustomSelector(field.key);
        const auto* const row = std::get_if<ExifValue>(&answer);
        EXPECT_EQ(row != nullptr, field.kind != FieldKind::Raw);
        if (row != nullptr) {
            EXPECT_EQ(row->uniqueID, field.key == "Map" ? "MapView" : field.key);
            EXPECT_EQ(row->exifKeyReadableFormat.has_value(), field.kind == FieldKind::Row);
            EXPECT_EQ(row->exifKeyReadableFormat.value_or(""), field.label != nullptr ? field.label : "");
        }
    }
    EXPECT_EQ(keys.size(), 85U);
}

TEST(ExifInformationRowsTest, ListsTheKeysInTheirOrder) {
    EXPECT_EQ(fieldKeys().front().key, "ApertureValue");
    EXPECT_STREQ(findFieldKey("GPSAltitude")->label, "Altitude");
    EXPECT_EQ(fieldKeys().back().key, "ComponentsConfiguration");
    for (const char* const text : {"", "aperturevalue", "ApertureValue ", "init", "gps", "zzz"}) {
        EXPECT_FALSE(isFieldKey(text)) << text;
    }
}

TEST(ExifInformationRowsTest, RawKeysReadTheTopLevelOfTheProperties) {
    const auto record = recordWith({{"PixelWidth", 4032}, {"Orientation", 6}, {"FNumber", 2.8},
        {"SubsecTimeOriginal", "12"}, {"SubsecTime", "34"},
        {"{Exif}", Dictionary::make({{"DateTimeOriginal", "2020:01:02 03:04:05"}})}});
    const auto rawValue = [&](std::string_view key) {
        return std::get<Value>(record->performCustomSelector(key));
    };
    EXPECT_EQ(rawValue("PixelWidth"), Value(4032));
    EXPECT_EQ(rawValue("Orientation_TIFF"), Value(6));
    EXPECT_EQ(rawValue("FNumber"), Value(2.8));
    EXPECT_EQ(rawValue("SubsecTime"), Value("34"));
    EXPECT_TRUE(rawValue("SubsecTimeOriginal").isNothing());
    EXPECT_TRUE(rawValue("DateTimeOriginal").isNothing());
    EXPECT_TRUE(std::get<Value>(ExifInformation::init()->performCustomSelector("PixelWidth")).isNothing());
}

TEST(ExifInformationRowsDeathTest, AKeyThatNamesNoFieldEndsTheProgramWithItsName) {
    EXPECT_DEATH(ExifInformation::init()->performCustomSelector("GPSFoo"), HasSubstr("GPSFoo"));
}

TEST(ExifInformationRowsTest, SharesValuesInTheChosenOrderWithTheirDecorations) {
    const auto record = recordWith(
        {{"{Exif}", Dictionary::make({{"FNumber", 1.8}, {"ExposureTime", 0.008}, {"ExposureBiasValue", 0.5},
                        {"MeteringMode", 5}, {"FocalLength", 4.25}, {"FocalLenIn35mmFilm", 26}})},
            {"{TIFF}", Dictionary::make({{"Copyright", "A. Nonymous"}, {"Make", "Acme"}})}});
    share({"MeteringMode", "FocalLength", "FocalLenIn35mmFilm", "Copyright", "ExposureBiasValue",
        "ExposureTime", "ApertureValue", "Artist", "GPS", "PixelWidth", "CameraMakeAndModel", "MapView",
        "Make"});
    EXPECT_EQ(record->shortExifStringsForShare(), "Pattern Metering mode\n"
                                                  "4 mm\n"
                                                  "26 mm (35 mm format)\n"
                                                  "© A. Nonymous\n"
                                                  "0.50 EV\n"
                                                  "0.008000 - ( 1/125 seconds )\n"
                                                  "f/1.8\n"
                                                  "Acme\n");
}

TEST(ExifInformationRowsTest, SharesEqualFocalLengthsOnce) {
    const auto record =
        recordWith(kCGImagePropertyExifDictionary, {{"FocalLength", 50.0}, {"FocalLenIn35mmFilm", 50}});
    share({"FocalLength", "FocalLenIn35mmFilm"});
    EXPECT_EQ(record->shortExifStringsForShare(), "50 mm (35 mm format)\n");
}

TEST(ExifInformationRowsTest, SharesNothingOfWhatIsNotKnown) {
    share({"LensModel", "ApertureMax", "GPS", "GPSSpeed", "Copyright", "PixelWidth", "SubsecTimeOriginal"});
    EXPECT_EQ(recordWith({{"PixelWidth", 100}})->shortExifStringsForShare(), "");
    share({});
    EXPECT_EQ(recordWithExif(kCGImagePropertyExifFNumber, 8)->shortExifStringsForShare(), "");
}

} // namespace
} // namespace exifcard

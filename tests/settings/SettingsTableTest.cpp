#include "settings/SettingsTable.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>

namespace exifcard {
namespace {

TEST(SettingsTableTest, EveryRowHasAKeyAndADefaultOfItsKind) {
    std::set<std::string_view> keys;
    for (const Setting& row : kSettings) {
        SCOPED_TRACE(row.key);
        keys.insert(row.key);
        EXPECT_EQ(settingForKey(row.key), &row);
        const Value::Kind kind = defaultValue(row).kind();
        EXPECT_EQ(kind == Value::Kind::Text, row.kind == SettingKind::Text);
        EXPECT_EQ(kind == Value::Kind::Bool, row.kind == SettingKind::Boolean);
    }
    EXPECT_EQ(keys.size(), 38U);
    EXPECT_EQ(settingForKey("exifKeysOrderedArray"), nullptr);
}

TEST(SettingsTableTest, DefaultsAreThoseOfAFreshInstallation) {
    struct Case {
        const char* key;
        Value value;
    };
    const Case cases[] = {
        {"automaticallyDownloadCloudPhotos", false},
        {"allowNetworkAccessToDownloadPhotos", false},
        {"imageViewContentMode", 2},
        {"overwriteImageForExifChange", true},
        {"dateFormatString", "dd-MM-YYYY hh:mm:ss a"},
        {"tavolinViewType", 1},
        {"shouldShowGPSInDecimalValues", true},
        {"shouldShareAPPURLWhileSharing", false},
        {"includeExifAsTextOniMessageApp", true},
        {"mapType", 0},
        {"selectedTabIndex", 2},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.key);
        EXPECT_EQ(defaultValue(*settingForKey(c.key)), c.value);
    }
}

TEST(SettingsTableTest, ReadsATypedValueByTheSettingsKind) {
    constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
    struct Case {
        const char* key;
        std::string_view text;
        std::optional<Value> value;
    };
    const Case cases[] = {
        {"isDarkModeOn", "Yes", true},
        {"isDarkModeOn", "OFF", false},
        {"isDarkModeOn", "2", {}},
        {"isDarkModeOn", "", {}},
        {"mapType", "2", 2},
        {"mapType", "-1", {}},
        {"mapType", "2 ", {}},
        {"mapType", "0x2", {}},
        {"mapType", "9223372036854775807", kMost},
        {"mapType", "9223372036854775808", {}},
        {"numberOfExifCardFlips", "-3", -3},
        {"numberOfExifCardFlips", "", {}},
        {"albumNameAfterEditingEXIF", "", ""},
        {"albumNameAfterEditingEXIF", "true", "true"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.key) + ' ' + std::string(c.text));
        EXPECT_EQ(settingValueFromText(*settingForKey(c.key), c.text), c.value);
    }
}

} // namespace
} // namespace exifcard

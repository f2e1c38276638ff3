#pragma once

#include "platform/foundation/LocalizedString.h"
#include "platform/foundation/Value.h"
#include "settings/SettingsNotifications.h"

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string_view>

namespace exifcard {

enum class SettingKind { Boolean, Integer, UnsignedInteger, Text };

/// Where the answer of a getter comes from.
enum class SettingRule {
    Stored,        ///< What is stored, else the default.
    LocalizedText, ///< The same, with the default in the user's language.
    LocaleMetric,  ///< The same, with the locale's metric-system flag as the default.
    AlwaysDefault, ///< The default, whatever is stored.
};

/// One persistent setting.
// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding): in this order the rows read best.
struct Setting {
    std::string_view key;
    SettingKind kind = SettingKind::Boolean;
    std::int64_t defaultNumber = 0;     ///< A boolean's is 0 or 1.
    std::string_view notification = {}; ///< Posted when it is set; empty for none.
    SettingRule rule = SettingRule::Stored;
    const char* defaultText = nullptr; ///< Of a text alone.
};

/// All persistent settings, in the order in which they are listed.
inline constexpr Setting kSettings[] = {
    {"automaticallyDownloadCloudPhotos", SettingKind::Boolean, 0},
    // Intended: this one and the other rows with AlwaysDefault store what they are given and never answer it.
    {"allowNetworkAccessToDownloadPhotos", SettingKind::Boolean, 0, {}, SettingRule::AlwaysDefault},
    {"imageViewContentMode", SettingKind::Integer, 2}, // Aspect fill.
    {"overwriteImageForExifChange", SettingKind::Boolean, 1},
    {"addToAlbumAfterEditingEXIF", SettingKind::Boolean, 1},
    {"addToAlbumAfterRemovingEXIF", SettingKind::Boolean, 1},
    {"albumNameAfterEditingEXIF", SettingKind::Text, 0, {}, SettingRule::LocalizedText, N_("Exif Edited")},
    {"albumNameAfterRemovingEXIF", SettingKind::Text, 0, {}, SettingRule::LocalizedText, N_("Exif Removed")},
    {"shouldUseDeviceLanguage", SettingKind::Boolean, 1},
    {"deleteOriginalPhotoAfterCreatingImageWithoutExif", SettingKind::Boolean, 0},
    {"locationFilter", SettingKind::UnsignedInteger, 0,
        kPersistanceManagerHidePhotosWithoutExifDetailsValueChangedEvent},
    {"shouldHidePhotosWithoutExifDetails", SettingKind::Boolean, 0,
        kPersistanceManagerHidePhotosWithoutExifDetailsValueChangedEvent},
    {"shouldHideDeleteAndRemveExifBarOnDetailScreen", SettingKind::Boolean, 0},
    {"isUsingLightFontOnExifDetailsScreen", SettingKind::Boolean, 1, kExifDataListNeedRefresh},
    {"sortByKeyValue", SettingKind::UnsignedInteger, 0},
    {"sortOrderAscending", SettingKind::Boolean, 0},
    {"isDarkModeOn", SettingKind::Boolean, 0},
    {"isUsingMetricUnits", SettingKind::Boolean, 0, kExifDataListNeedRefresh, SettingRule::LocaleMetric},
    {"datePreference24HourFormat", SettingKind::Boolean, 0,
        kPersistanceManagerDateFormatOrPreferenceChangedEvent},
    {"haveSeenShareCrashReportsAlert", SettingKind::Boolean, 0},
    {"userAllowedSharingCrashReports", SettingKind::Boolean, 0},
    {"haveSeenIntroductionScreen", SettingKind::Boolean, 0},
    {"haveSeenYoutubeAppVideo", SettingKind::Boolean, 0},
    {"shouldShowZoomPercentageInFullScreen", SettingKind::Boolean, 1},
    {"haveSeenYoutubeAppExtensionVideo", SettingKind::Boolean, 0},
    {"datePreferenceTimeAgoSinceNow", SettingKind::Boolean, 1},
    // Intended: "YYYY" is the year of the week.
    {"dateFormatString", SettingKind::Text, 0, kPersistanceManagerDateFormatOrPreferenceChangedEvent,
        SettingRule::Stored, "dd-MM-YYYY hh:mm:ss a"},
    {"numberOfExifCardFlips", SettingKind::Integer, 0},
    {"shouldShowExtraInformationOnEXIFCards", SettingKind::Boolean, 1, kExifDataListNeedRefresh},
    {"shouldShowExifDetailsOnGridView", SettingKind::Boolean, 1, kExifDataListNeedRefresh,
        SettingRule::AlwaysDefault},
    {"previousTavolinViewType", SettingKind::UnsignedInteger, 1, {}, SettingRule::AlwaysDefault},
    {"tavolinViewType", SettingKind::UnsignedInteger, 1, kExifDataListNeedRefresh,
        SettingRule::AlwaysDefault},
    {"shouldShowGPSInDecimalValues", SettingKind::Boolean, 1},
    {"shouldShareAPPURLWhileSharing", SettingKind::Boolean, 0},
    {"includeExifAsTextOniMessageApp", SettingKind::Boolean, 1},
    {"showUserCurrentLocationOnMapView", SettingKind::Boolean, 0},
    {"mapType", SettingKind::UnsignedInteger, 0},
    {"selectedTabIndex", SettingKind::UnsignedInteger, 2},
};

/// The row of a key that is known when the program is built; a wrong one does not build.
consteval const Setting& setting(std::string_view key) {
    for (const Setting& row : kSettings) {
        if (row.key == key) {
            return row;
        }
    }
    throw std::logic_error("no such setting");
}

/// The row of a key; null for an unknown one.
const Setting* settingForKey(std::string_view key);

/// What the getter answers while nothing is stored.
Value defaultValue(const Setting& setting);

/// Reads what a user typed as a value of the setting: "true", "yes", "on", "1"
/// and their opposites in any case, whole decimal numbers, any text.
/// @return Nothing when it does not fit the setting's kind.
std::optional<Value> settingValueFromText(const Setting& setting, std::string_view text);

} // namespace exifcard

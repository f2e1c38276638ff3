#include "settings/PersistanceManager.h"

#include "platform/foundation/Identifiers.h"
#include "platform/foundation/Locale.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/NotificationCenter.h"
#include "platform/uivalues/UIAccessibility.h"
#include "settings/SettingsTable.h"
#include "support/TemporaryHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <span>
#include <vector>

namespace exifcard {
namespace {

class PersistanceManagerTest : public testing::Test {
protected:
    PersistanceManagerTest() { PersistanceManager::forgetSharedInstance(); }
    ~PersistanceManagerTest() override {
        PersistanceManager::forgetSharedInstance();
        setInvertColorsEnabled(false);
        captureLog({});
    }

    /// Stores a value as the containing application does.
    static void storeElsewhere(std::string_view key, const Value& value) {
        UserDefaults::initWithSuiteName(kApplicationGroup)->setObjectForKey(value, key);
    }

    static PersistanceManager& settings() { return PersistanceManager::sharedInstance(); }

private:
    TemporaryHome _home;
};

/// The settings' notifications, in the order in which they are posted.
class PostedNotifications {
public:
    explicit PostedNotifications(const void* sender) {
        for (const auto name : {kPersistanceManagerHidePhotosWithoutExifDetailsValueChangedEvent,
                 kPersistanceManagerDateFormatOrPreferenceChangedEvent, kExifDataListNeedRefresh}) {
            _observations.push_back(NotificationCenter::defaultCenter().addObserver(name, sender,
                [this](const Notification& notification) { _names.push_back(notification.name); }));
        }
    }

    std::vector<std::string> take() { return std::exchange(_names, {}); }

private:
    std::vector<std::string> _names;
    std::vector<NotificationCenter::Observation> _observations;
};

using Settings = PersistanceManager;

template<typename T>
struct AccessCase {
    std::string_view key;
    T (Settings::*getter)() const;
    void (Settings::*setter)(T value);
    T value; ///< While nothing is stored.
};

const AccessCase<bool> kBooleans[] = {
    {"automaticallyDownloadCloudPhotos", &Settings::automaticallyDownloadCloudPhotos,
        &Settings::setAutomaticallyDownloadCloudPhotos, false},
    {"overwriteImageForExifChange", &Settings::overwriteImageForExifChange,
        &Settings::setOverwriteImageForExifChange, true},
    {"addToAlbumAfterEditingEXIF", &Settings::addToAlbumAfterEditingEXIF,
        &Settings::setAddToAlbumAfterEditingEXIF, true},
    {"addToAlbumAfterRemovingEXIF", &Settings::addToAlbumAfterRemovingEXIF,
        &Settings::setAddToAlbumAfterRemovingEXIF, true},
    {"shouldUseDeviceLanguage", &Settings::shouldUseDeviceLanguage, &Settings::setShouldUseDeviceLanguage,
        true},
    {"deleteOriginalPhotoAfterCreatingImageWithoutExif",
        &Settings::deleteOriginalPhotoAfterCreatingImageWithoutExif,
        &Settings::setDeleteOriginalPhotoAfterCreatingImageWithoutExif, false},
    {"shouldHidePhotosWithoutExifDetails", &Settings::shouldHidePhotosWithoutExifDetails,
        &Settings::setShouldHidePhotosWithoutExifDetails, false},
    {"shouldHideDeleteAndRemveExifBarOnDetailScreen",
        &Settings::shouldHideDeleteAndRemveExifBarOnDetailScreen,
        &Settings::setShouldHideDeleteAndRemveExifBarOnDetailScreen, false},
    {"isUsingLightFontOnExifDetailsScreen", &Settings::isUsingLightFontOnExifDetailsScreen,
        &Settings::setIsUsingLightFontOnExifDetailsScreen, true},
    {"sortOrderAscending", &Settings::sortOrderAscending, &Settings::setSortOrderAscending, false},
    {"isDarkModeOn", &Settings::isDarkModeOn, &Settings::setIsDarkModeOn, false},
    {"datePreference24HourFormat", &Settings::datePreference24HourFormat,
        &Settings::setDatePreference24HourFormat, false},
    {"haveSeenShareCrashReportsAlert", &Settings::haveSeenShareCrashReportsAlert,
        &Settings::setHaveSeenShareCrashReportsAlert, false},
    {"userAllowedSharingCrashReports", &Settings::userAllowedSharingCrashReports,
        &Settings::setUserAllowedSharingCrashReports, false},
    {"haveSeenIntroductionScreen", &Settings::haveSeenIntroductionScreen,
        &Settings::setHaveSeenIntroductionScreen, false},
    {"haveSeenYoutubeAppVideo", &Settings::haveSeenYoutubeAppVideo, &Settings::setHaveSeenYoutubeAppVideo,
        false},
    {"shouldShowZoomPercentageInFullScreen", &Settings::shouldShowZoomPercentageInFullScreen,
        &Settings::setShouldShowZoomPercentageInFullScreen, true},
    {"haveSeenYoutubeAppExtensionVideo", &Settings::haveSeenYoutubeAppExtensionVideo,
        &Settings::setHaveSeenYoutubeAppExtensionVideo, false},
    {"datePreferenceTimeAgoSinceNow", &Settings::datePreferenceTimeAgoSinceNow,
        &Settings::setDatePreferenceTimeAgoSinceNow, true},
    {"shouldShowExtraInformationOnEXIFCards", &Settings::shouldShowExtraInformationOnEXIFCards,
        &Settings::setShouldShowExtraInformationOnEXIFCards, true},
    {"shouldShowGPSInDecimalValues", &Settings::shouldShowGPSInDecimalValues,
        &Settings::setShouldShowGPSInDecimalValues, true},
    {"shouldShareAPPURLWhileSharing", &Settings::shouldShareAPPURLWhileSharing,
        &Settings::setShouldShareAPPURLWhileSharing, false},
    {"includeExifAsTextOniMessageApp", &Settings::includeExifAsTextOniMessageApp,
        &Settings::setIncludeExifAsTextOniMessageApp, true},
    {"showUserCurrentLocationOnMapView", &Settings::showUserCurrentLocationOnMapView,
        &Settings::setShowUserCurrentLocationOnMapView, false},
};

const AccessCase<std::uint64_t> kUnsignedIntegers[] = {
    {"locationFilter", &Settings::locationFilter, &Settings::setLocationFilter, 0},
    {"sortByKeyValue", &Settings::sortByKeyValue, &Settings::setSortByKeyValue, 0},
    {"mapType", &Settings::mapType, &Settings::setMapType, 0},
    {"selectedTabIndex", &Settings::selectedTabIndex, &Settings::setSelectedTabIndex, 2},
};

const AccessCase<std::int64_t> kIntegers[] = {
    {"imageViewContentMode", &Settings::imageViewContentMode, &Settings::setImageViewContentMode, 2},
    {"numberOfExifCardFlips", &Settings::numberOfExifCardFlips, &Settings::setNumberOfExifCardFlips, 0},
};

/// Each getter first answers the default, and then what its setter stored under the key alone.
template<typename T>
void checkAccess(PersistanceManager& settings, std::span<const AccessCase<T>> cases) {
    for (const AccessCase<T>& c : cases) {
        SCOPED_TRACE(c.key);
        EXPECT_EQ((settings.*c.getter)(), c.value);
        const auto keys = settings.userDefaults->allKeys().size();
        const T other = c.value == T(0) ? T(1) : T(0);
        (settings.*c.setter)(other);
        EXPECT_EQ((settings.*c.getter)(), other);
        EXPECT_EQ(settings.userDefaults->allKeys().size(), keys + 1);
        EXPECT_FALSE(settings.userDefaults->objectForKey(c.key).isNothing());
    }
}

TEST_F(PersistanceManagerTest, EachGetterAnswersWhatItsOwnSetterStored) {
    checkAccess<bool>(settings(), kBooleans);
    checkAccess<std::uint64_t>(settings(), kUnsignedIntegers);
    checkAccess<std::int64_t>(settings(), kIntegers);
    EXPECT_EQ(settings().albumNameAfterEditingEXIF(), "Exif Edited");
    EXPECT_EQ(settings().albumNameAfterRemovingEXIF(), "Exif Removed");
    settings().setAlbumNameAfterEditingEXIF("one");
    settings().setAlbumNameAfterRemovingEXIF("other");
    EXPECT_EQ(settings().albumNameAfterEditingEXIF(), "one");
    EXPECT_EQ(settings().albumNameAfterRemovingEXIF(), "other");
}

TEST_F(PersistanceManagerTest, EverySetterStoresAndPostsWhatTheTableTells) {
    PostedNotifications posted(&settings());
    for (const Setting& row : kSettings) {
        SCOPED_TRACE(row.key);
        const Value other = row.kind == SettingKind::Text      ? Value("other")
                            : row.kind == SettingKind::Boolean ? Value(!defaultValue(row).boolValue())
                                                               : Value(3);
        EXPECT_TRUE(settings().storedValue(row).isNothing());
        settings().setValue(other, row);
        EXPECT_EQ(settings().storedValue(row), other);
        EXPECT_EQ(settings().value(row), row.rule == SettingRule::AlwaysDefault ? defaultValue(row) : other);
        const auto expected = row.notification.empty()
                                  ? std::vector<std::string>()
                                  : std::vector<std::string>{std::string(row.notification)};
        EXPECT_EQ(posted.take(), expected);
    }
}

TEST_F(PersistanceManagerTest, SettersUseTheirOwnKeysAndNotifications) {
    PostedNotifications posted(&settings());
    settings().setDatePreferenceTimeAgoSinceNow(false);
    EXPECT_TRUE(posted.take().empty());
    settings().setLocationFilter(2);
    settings().setShouldHidePhotosWithoutExifDetails(true);
    EXPECT_THAT(
        posted.take(), testing::ElementsAre("PersistanceManagerHidePhotosWithoutExifDetailsValueChangedEvent",
                           "PersistanceManagerHidePhotosWithoutExifDetailsValueChangedEvent"));
    settings().setDateFormatString("yyyy");
    EXPECT_THAT(posted.take(), testing::ElementsAre("PersistanceManagerDateFormatOrPreferenceChangedEvent"));
    settings().setTavolinViewType(0);
    EXPECT_THAT(posted.take(), testing::ElementsAre("ExifDataListNeedRefresh"));
    const auto& suite = *settings().userDefaults;
    EXPECT_EQ(suite.objectForKey("datePreferenceTimeAgoSinceNow"), Value(false));
    EXPECT_EQ(suite.objectForKey("locationFilter"), Value(2));
    EXPECT_EQ(suite.objectForKey("tavolinViewType"), Value(0));
    EXPECT_EQ(settings().locationFilter(), 2U);
    EXPECT_FALSE(settings().datePreferenceTimeAgoSinceNow());
}

TEST_F(PersistanceManagerTest, SomeGettersNeverAnswerWhatIsStored) {
    settings().setAllowNetworkAccessToDownloadPhotos(true);
    settings().setShouldShowExifDetailsOnGridView(false);
    for (const std::uint64_t viewType : {0, 2, 3}) {
        settings().setTavolinViewType(viewType);
        settings().setPreviousTavolinViewType(viewType);
        EXPECT_EQ(settings().tavolinViewType(), 1U);
        EXPECT_EQ(settings().previousTavolinViewType(), 1U);
    }
    EXPECT_FALSE(settings().allowNetworkAccessToDownloadPhotos());
    EXPECT_TRUE(settings().shouldShowExifDetailsOnGridView());
}

TEST_F(PersistanceManagerTest, TheFirstReadOfMetricUnitsStoresTheLocalesFlagAndPosts) {
    PostedNotifications posted(&settings());
    const bool isMetric = Locale::current().usesMetricSystem();
    EXPECT_EQ(settings().isUsingMetricUnits(), isMetric);
    EXPECT_EQ(settings().userDefaults->objectForKey("isUsingMetricUnits"), Value(isMetric));
    EXPECT_EQ(settings().isUsingMetricUnits(), isMetric);
    EXPECT_THAT(posted.take(), testing::ElementsAre("ExifDataListNeedRefresh"));
}

TEST_F(PersistanceManagerTest, DarkModeIsOffWhileColoursAreInverted) {
    EXPECT_FALSE(settings().isDarkModeOn());
    settings().setIsDarkModeOn(true);
    EXPECT_TRUE(settings().isDarkModeOn());
    setInvertColorsEnabled(true);
    EXPECT_FALSE(settings().isDarkModeOn());
}

TEST_F(PersistanceManagerTest, A24HourClockRewritesTheWholeDatePattern) {
    EXPECT_EQ(settings().dateFormatString(), "dd-MM-YYYY hh:mm:ss a");
    settings().setDatePreference24HourFormat(true);
    struct Case {
        const char* stored;
        std::string_view answered;
    };
    constexpr Case cases[] = {
        {"dd-MM-YYYY hh:mm:ss a", "dd-MM-YYYY HH:mm:ss "},
        {"'Saturday, March' hh hhh h aa A", "'Sturdy, Mrch' HH HHh h  A"},
        {"", ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.stored);
        settings().setDateFormatString(c.stored);
        EXPECT_EQ(settings().dateFormatString(), c.answered);
    }
    settings().removeValue(setting("dateFormatString"));
    EXPECT_EQ(settings().dateFormatString(), "dd-MM-YYYY HH:mm:ss ");
}

TEST_F(PersistanceManagerTest, FixedPatternsReadNoSetting) {
    settings().setDatePreference24HourFormat(true);
    EXPECT_EQ(PersistanceManager::exifStandardDateFormatString(), "yyyy:MM:dd HH:mm:ss");
    EXPECT_EQ(PersistanceManager::exifGPSStandardDateFormatString(), "yyyy:MM:dd");
    EXPECT_EQ(PersistanceManager::exifGPSStandardTimeFormatString(), "HH:MM:SS");
}

TEST_F(PersistanceManagerTest, UnknownMapTypesShowTheStandardMap) {
    for (const auto& [stored, shown] : {std::pair(0, 0U), {1, 1U}, {2, 2U}, {3, 0U}, {-1, 0U}}) {
        SCOPED_TRACE(stored);
        storeElsewhere("mapType", stored);
        EXPECT_EQ(settings().mkMapType(), shown);
    }
}

TEST_F(PersistanceManagerTest, AnObjectOfTheWrongKindIsConverted) {
    storeElsewhere("sortOrderAscending", "yes");
    storeElsewhere("selectedTabIndex", "12abc");
    storeElsewhere("numberOfExifCardFlips", 4.9);
    storeElsewhere("shouldUseDeviceLanguage", Data::fromText("data"));
    storeElsewhere("albumNameAfterEditingEXIF", 7);
    EXPECT_TRUE(settings().sortOrderAscending());
    EXPECT_EQ(settings().selectedTabIndex(), 12U);
    EXPECT_EQ(settings().numberOfExifCardFlips(), 4);
    EXPECT_FALSE(settings().shouldUseDeviceLanguage());
    EXPECT_EQ(settings().albumNameAfterEditingEXIF(), "7");
}

TEST_F(PersistanceManagerTest, TheHelpScreenHasNewsUntilBothVideosWereSeen) {
    settings().setContainsNewItemInHelpScreen(false);
    EXPECT_TRUE(settings().containsNewItemInHelpScreen());
    settings().setHaveSeenYoutubeAppVideo(true);
    EXPECT_TRUE(settings().containsNewItemInHelpScreen());
    settings().setHaveSeenYoutubeAppExtensionVideo(true);
    settings().setContainsNewItemInHelpScreen(true);
    EXPECT_FALSE(settings().containsNewItemInHelpScreen());
    settings().setHaveSeenYoutubeAppVideo(false);
    EXPECT_TRUE(settings().containsNewItemInHelpScreen());
}

TEST_F(PersistanceManagerTest, FlagsOfALaunchAreNeverStored) {
    const auto keys = settings().userDefaults->allKeys();
    settings().exifCardDateEnabled = true;
    settings().haveSeenYoutubeiMessageAppVideo = true;
    EXPECT_EQ(settings().userDefaults->allKeys(), keys);
    PersistanceManager::forgetSharedInstance();
    EXPECT_FALSE(settings().exifCardDateEnabled);
    EXPECT_FALSE(settings().haveSeenYoutubeiMessageAppVideo);
}

TEST_F(PersistanceManagerTest, TellsItsStartInTheDebugLog) {
    settings(); // Stores the default lists, so that the next start finds them.
    PersistanceManager::forgetSharedInstance();
    std::vector<std::string> lines;
    captureLog([&lines](std::string_view line) { lines.emplace_back(line); });
    settings();
    EXPECT_THAT(lines, testing::ElementsAre(testing::StartsWith("init userDefaults "), "COUNT___ 2 vs 2",
                           "COUNT___ 21 vs 21"));
}

} // namespace
} // namespace exifcard

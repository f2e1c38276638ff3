#pragma once

#include "platform/foundation/UserDefaults.h"
#include "settings/SharedFieldLists.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace exifcard {

struct Setting;

/// The user's preferences, kept in the suite that all programs of this system share.
///
/// A getter answers what is stored, else the default of SettingsTable.h; a
/// setter stores at once and posts the notification of the table. Both may be
/// called from any thread.
class PersistanceManager : public SharedFieldLists {
public:
    /// The one object; made, and the suite read, on first use.
    static PersistanceManager& sharedInstance();
    /// Drops the one object, so that the next use reads the suite of the present folders; for tests.
    static void forgetSharedInstance();

    PersistanceManager();
    PersistanceManager(const PersistanceManager&) = delete;
    PersistanceManager& operator=(const PersistanceManager&) = delete;

    /// The shared suite. May be replaced while no other thread asks for a setting.
    std::shared_ptr<UserDefaults> userDefaults;

    // Flags of this launch: false at its start and never stored.
    bool didShowFlipExifCardTutorialOnThisLaunch = false;
    bool haveSeenYoutubeiMessageAppVideo = false;
    bool exifCardLocationEnabled = false;
    bool exifCardDateEnabled = false;
    bool exifCardCameraLensEnabled = false;
    bool exifCardArtistsNameEnabled = false;
    bool exifCardTavolinAppPromoTextEnabled = false;

    /// Whether one of the two tutorial videos of the help screen was not seen yet.
    bool containsNewItemInHelpScreen() const;
    /// Intended: sets a flag that nothing reads.
    void setContainsNewItemInHelpScreen(bool value);

    // The settings of the table, in its order; each is stored under the getter's
    // name. A stored object of another kind is read by the platform's conversions.
    bool automaticallyDownloadCloudPhotos() const;
    void setAutomaticallyDownloadCloudPhotos(bool value);
    bool allowNetworkAccessToDownloadPhotos() const;
    void setAllowNetworkAccessToDownloadPhotos(bool value);
    std::int64_t imageViewContentMode() const;
    void setImageViewContentMode(std::int64_t value);
    bool overwriteImageForExifChange() const;
    void setOverwriteImageForExifChange(bool value);
    bool addToAlbumAfterEditingEXIF() const;
    void setAddToAlbumAfterEditingEXIF(bool value);
    bool addToAlbumAfterRemovingEXIF() const;
    void setAddToAlbumAfterRemovingEXIF(bool value);
    std::string albumNameAfterEditingEXIF() const;
    void setAlbumNameAfterEditingEXIF(std::string_view value);
    std::string albumNameAfterRemovingEXIF() const;
    void setAlbumNameAfterRemovingEXIF(std::string_view value);
    bool shouldUseDeviceLanguage() const;
    void setShouldUseDeviceLanguage(bool value);
    bool deleteOriginalPhotoAfterCreatingImageWithoutExif() const;
    void setDeleteOriginalPhotoAfterCreatingImageWithoutExif(bool value);
    std::uint64_t locationFilter() const;
    void setLocationFilter(std::uint64_t value);
    bool shouldHidePhotosWithoutExifDetails() const;
    void setShouldHidePhotosWithoutExifDetails(bool value);
    bool shouldHideDeleteAndRemveExifBarOnDetailScreen() const;
    void setShouldHideDeleteAndRemveExifBarOnDetailScreen(bool value);
    bool isUsingLightFontOnExifDetailsScreen() const;
    void setIsUsingLightFontOnExifDetailsScreen(bool value);
    std::uint64_t sortByKeyValue() const;
    void setSortByKeyValue(std::uint64_t value);
    bool sortOrderAscending() const;
    void setSortOrderAscending(bool value);
    bool isDarkModeOn() const;
    void setIsDarkModeOn(bool value);
    bool isUsingMetricUnits();
    void setIsUsingMetricUnits(bool value);
    bool datePreference24HourFormat() const;
    void setDatePreference24HourFormat(bool value);
    bool haveSeenShareCrashReportsAlert() const;
    void setHaveSeenShareCrashReportsAlert(bool value);
    bool userAllowedSharingCrashReports() const;
    void setUserAllowedSharingCrashReports(bool value);
    bool haveSeenIntroductionScreen() const;
    void setHaveSeenIntroductionScreen(bool value);
    bool haveSeenYoutubeAppVideo() const;
    void setHaveSeenYoutubeAppVideo(bool value);
    bool shouldShowZoomPercentageInFullScreen() const;
    void setShouldShowZoomPercentageInFullScreen(bool value);
    bool haveSeenYoutubeAppExtensionVideo() const;
    void setHaveSeenYoutubeAppExtensionVideo(bool value);
    bool datePreferenceTimeAgoSinceNow() const;
    void setDatePreferenceTimeAgoSinceNow(bool value);
    std::string dateFormatString() const;
    void setDateFormatString(std::string_view value);
    std::int64_t numberOfExifCardFlips() const;
    void setNumberOfExifCardFlips(std::int64_t value);
    bool shouldShowExtraInformationOnEXIFCards() const;
    void setShouldShowExtraInformationOnEXIFCards(bool value);
    bool shouldShowExifDetailsOnGridView() const;
    void setShouldShowExifDetailsOnGridView(bool value);
    std::uint64_t previousTavolinViewType() const;
    void setPreviousTavolinViewType(std::uint64_t value);
    std::uint64_t tavolinViewType() const;
    void setTavolinViewType(std::uint64_t value);
    bool shouldShowGPSInDecimalValues() const;
    void setShouldShowGPSInDecimalValues(bool value);
    bool shouldShareAPPURLWhileSharing() const;
    void setShouldShareAPPURLWhileSharing(bool value);
    bool includeExifAsTextOniMessageApp() const;
    void setIncludeExifAsTextOniMessageApp(bool value);
    bool showUserCurrentLocationOnMapView() const;
    void setShowUserCurrentLocationOnMapView(bool value);
    std::uint64_t mapType() const;
    void setMapType(std::uint64_t value);
    std::uint64_t selectedTabIndex() const;
    void setSelectedTabIndex(std::uint64_t value);

    /// The map style to show: 0 standard, 1 satellite, 2 hybrid.
    std::uint64_t mkMapType() const;
    /// Stores the locale's metric-system flag as the setting and answers it.
    bool defaultShouldShowMetricUnits();

    static std::string exifStandardDateFormatString();
    static std::string exifGPSStandardDateFormatString();
    static std::string exifGPSStandardTimeFormatString();

    // The same by the row of the table.
    Value storedValue(const Setting& setting) const; ///< Nothing while none is stored.
    Value value(const Setting& setting);             ///< What the getter answers, with all it does.
    void setValue(const Value& value, const Setting& setting);
    void removeValue(const Setting& setting);

private:
    Value storedOrDefault(const Setting& setting) const;

    bool _containsNewItemInHelpScreen = false;
};

} // namespace exifcard

#include "settings/PersistanceManager.h"

#include "settings/SettingsTable.h"

namespace exifcard {

void PersistanceManager::setAutomaticallyDownloadCloudPhotos(bool value) {
    setValue(value, setting("automaticallyDownloadCloudPhotos"));
}

void PersistanceManager::setAllowNetworkAccessToDownloadPhotos(bool value) {
    setValue(value, setting("allowNetworkAccessToDownloadPhotos"));
}

void PersistanceManager::setImageViewContentMode(std::int64_t value) {
    setValue(value, setting("imageViewContentMode"));
}

void PersistanceManager::setOverwriteImageForExifChange(bool value) {
    setValue(value, setting("overwriteImageForExifChange"));
}

void PersistanceManager::setAddToAlbumAfterEditingEXIF(bool value) {
    setValue(value, setting("addToAlbumAfterEditingEXIF"));
}

void PersistanceManager::setAddToAlbumAfterRemovingEXIF(bool value) {
    setValue(value, setting("addToAlbumAfterRemovingEXIF"));
}

void PersistanceManager::setAlbumNameAfterEditingEXIF(std::string_view value) {
    setValue(value, setting("albumNameAfterEditingEXIF"));
}

void PersistanceManager::setAlbumNameAfterRemovingEXIF(std::string_view value) {
    setValue(value, setting("albumNameAfterRemovingEXIF"));
}

void PersistanceManager::setShouldUseDeviceLanguage(bool value) {
    setValue(value, setting("shouldUseDeviceLanguage"));
}

void PersistanceManager::setDeleteOriginalPhotoAfterCreatingImageWithoutExif(bool value) {
    setValue(value, setting("deleteOriginalPhotoAfterCreatingImageWithoutExif"));
}

void PersistanceManager::setLocationFilter(std::uint64_t value) {
    setValue(static_cast<std::int64_t>(value), setting("locationFilter"));
}

void PersistanceManager::setShouldHidePhotosWithoutExifDetails(bool value) {
    setValue(value, setting("shouldHidePhotosWithoutExifDetails"));
}

void PersistanceManager::setShouldHideDeleteAndRemveExifBarOnDetailScreen(bool value) {
    setValue(value, setting("shouldHideDeleteAndRemveExifBarOnDetailScreen"));
}

void PersistanceManager::setIsUsingLightFontOnExifDetailsScreen(bool value) {
    setValue(value, setting("isUsingLightFontOnExifDetailsScreen"));
}

void PersistanceManager::setSortByKeyValue(std::uint64_t value) {
    setValue(static_cast<std::int64_t>(value), setting("sortByKeyValue"));
}

void PersistanceManager::setSortOrderAscending(bool value) {
    setValue(value, setting("sortOrderAscending"));
}

void PersistanceManager::setIsDarkModeOn(bool value) {
    setValue(value, setting("isDarkModeOn"));
}

void PersistanceManager::setIsUsingMetricUnits(bool value) {
    setValue(value, setting("isUsingMetricUnits"));
}

void PersistanceManager::setDatePreference24HourFormat(bool value) {
    setValue(value, setting("datePreference24HourFormat"));
}

void PersistanceManager::setHaveSeenShareCrashReportsAlert(bool value) {
    setValue(value, setting("haveSeenShareCrashReportsAlert"));
}

void PersistanceManager::setUserAllowedSharingCrashReports(bool value) {
    setValue(value, setting("userAllowedSharingCrashReports"));
}

void PersistanceManager::setHaveSeenIntroductionScreen(bool value) {
    setValue(value, setting("haveSeenIntroductionScreen"));
}

void PersistanceManager::setHaveSeenYoutubeAppVideo(bool value) {
    setValue(value, setting("haveSeenYoutubeAppVideo"));
}

void PersistanceManager::setShouldShowZoomPercentageInFullScreen(bool value) {
    setValue(value, setting("shouldShowZoomPercentageInFullScreen"));
}

void PersistanceManager::setHaveSeenYoutubeAppExtensionVideo(bool value) {
    setValue(value, setting("haveSeenYoutubeAppExtensionVideo"));
}

void PersistanceManager::setDatePreferenceTimeAgoSinceNow(bool value) {
    setValue(value, setting("datePreferenceTimeAgoSinceNow"));
}

void PersistanceManager::setDateFormatString(std::string_view value) {
    setValue(value, setting("dateFormatString"));
}

void PersistanceManager::setNumberOfExifCardFlips(std::int64_t value) {
    setValue(value, setting("numberOfExifCardFlips"));
}

void PersistanceManager::setShouldShowExtraInformationOnEXIFCards(bool value) {
    setValue(value, setting("shouldShowExtraInformationOnEXIFCards"));
}

void PersistanceManager::setShouldShowExifDetailsOnGridView(bool value) {
    setValue(value, setting("shouldShowExifDetailsOnGridView"));
}

void PersistanceManager::setPreviousTavolinViewType(std::uint64_t value) {
    setValue(static_cast<std::int64_t>(value), setting("previousTavolinViewType"));
}

void PersistanceManager::setTavolinViewType(std::uint64_t value) {
    setValue(static_cast<std::int64_t>(value), setting("tavolinViewType"));
}

void PersistanceManager::setShouldShowGPSInDecimalValues(bool value) {
    setValue(value, setting("shouldShowGPSInDecimalValues"));
}

void PersistanceManager::setShouldShareAPPURLWhileSharing(bool value) {
    setValue(value, setting("shouldShareAPPURLWhileSharing"));
}

void PersistanceManager::setIncludeExifAsTextOniMessageApp(bool value) {
    setValue(value, setting("includeExifAsTextOniMessageApp"));
}

void PersistanceManager::setShowUserCurrentLocationOnMapView(bool value) {
    setValue(value, setting("showUserCurrentLocationOnMapView"));
}

void PersistanceManager::setMapType(std::uint64_t value) {
    setValue(static_cast<std::int64_t>(value), setting("mapType"));
}

void PersistanceManager::setSelectedTabIndex(std::uint64_t value) {
    setValue(static_cast<std::int64_t>(value), setting("selectedTabIndex"));
}

} // namespace exifcard

#include "settings/PersistanceManager.h"

#include "settings/SettingsTable.h"

namespace exifcard {
namespace {

std::uint64_t unsignedInteger(const Value& value) {
    return static_cast<std::uint64_t>(value.integerValue());
}

} // namespace

bool PersistanceManager::automaticallyDownloadCloudPhotos() const {
    return storedOrDefault(setting("automaticallyDownloadCloudPhotos")).boolValue();
}

bool PersistanceManager::allowNetworkAccessToDownloadPhotos() const {
    return storedOrDefault(setting("allowNetworkAccessToDownloadPhotos")).boolValue();
}

std::int64_t PersistanceManager::imageViewContentMode() const {
    return storedOrDefault(setting("imageViewContentMode")).integerValue();
}

bool PersistanceManager::overwriteImageForExifChange() const {
    return storedOrDefault(setting("overwriteImageForExifChange")).boolValue();
}

bool PersistanceManager::addToAlbumAfterEditingEXIF() const {
    return storedOrDefault(setting("addToAlbumAfterEditingEXIF")).boolValue();
}

bool PersistanceManager::addToAlbumAfterRemovingEXIF() const {
    return storedOrDefault(setting("addToAlbumAfterRemovingEXIF")).boolValue();
}

std::string PersistanceManager::albumNameAfterEditingEXIF() const {
    return storedOrDefault(setting("albumNameAfterEditingEXIF")).description();
}

std::string PersistanceManager::albumNameAfterRemovingEXIF() const {
    return storedOrDefault(setting("albumNameAfterRemovingEXIF")).description();
}

bool PersistanceManager::shouldUseDeviceLanguage() const {
    return storedOrDefault(setting("shouldUseDeviceLanguage")).boolValue();
}

bool PersistanceManager::deleteOriginalPhotoAfterCreatingImageWithoutExif() const {
    return storedOrDefault(setting("deleteOriginalPhotoAfterCreatingImageWithoutExif")).boolValue();
}

std::uint64_t PersistanceManager::locationFilter() const {
    return unsignedInteger(storedOrDefault(setting("locationFilter")));
}

bool PersistanceManager::shouldHidePhotosWithoutExifDetails() const {
    return storedOrDefault(setting("shouldHidePhotosWithoutExifDetails")).boolValue();
}

bool PersistanceManager::shouldHideDeleteAndRemveExifBarOnDetailScreen() const {
    return storedOrDefault(setting("shouldHideDeleteAndRemveExifBarOnDetailScreen")).boolValue();
}

bool PersistanceManager::isUsingLightFontOnExifDetailsScreen() const {
    return storedOrDefault(setting("isUsingLightFontOnExifDetailsScreen")).boolValue();
}

std::uint64_t PersistanceManager::sortByKeyValue() const {
    return unsignedInteger(storedOrDefault(setting("sortByKeyValue")));
}

bool PersistanceManager::sortOrderAscending() const {
    return storedOrDefault(setting("sortOrderAscending")).boolValue();
}

bool PersistanceManager::datePreference24HourFormat() const {
    return storedOrDefault(setting("datePreference24HourFormat")).boolValue();
}

bool PersistanceManager::haveSeenShareCrashReportsAlert() const {
    return storedOrDefault(setting("haveSeenShareCrashReportsAlert")).boolValue();
}

bool PersistanceManager::userAllowedSharingCrashReports() const {
    return storedOrDefault(setting("userAllowedSharingCrashReports")).boolValue();
}

bool PersistanceManager::haveSeenIntroductionScreen() const {
    return storedOrDefault(setting("haveSeenIntroductionScreen")).boolValue();
}

bool PersistanceManager::haveSeenYoutubeAppVideo() const {
    return storedOrDefault(setting("haveSeenYoutubeAppVideo")).boolValue();
}

bool PersistanceManager::shouldShowZoomPercentageInFullScreen() const {
    return storedOrDefault(setting("shouldShowZoomPercentageInFullScreen")).boolValue();
}

bool PersistanceManager::haveSeenYoutubeAppExtensionVideo() const {
    return storedOrDefault(setting("haveSeenYoutubeAppExtensionVideo")).boolValue();
}

bool PersistanceManager::datePreferenceTimeAgoSinceNow() const {
    return storedOrDefault(setting("datePreferenceTimeAgoSinceNow")).boolValue();
}

std::int64_t PersistanceManager::numberOfExifCardFlips() const {
    return storedOrDefault(setting("numberOfExifCardFlips")).integerValue();
}

bool PersistanceManager::shouldShowExtraInformationOnEXIFCards() const {
    return storedOrDefault(setting("shouldShowExtraInformationOnEXIFCards")).boolValue();
}

bool PersistanceManager::shouldShowExifDetailsOnGridView() const {
    return storedOrDefault(setting("shouldShowExifDetailsOnGridView")).boolValue();
}

std::uint64_t PersistanceManager::previousTavolinViewType() const {
    return unsignedInteger(storedOrDefault(setting("previousTavolinViewType")));
}

std::uint64_t PersistanceManager::tavolinViewType() const {
    return unsignedInteger(storedOrDefault(setting("tavolinViewType")));
}

bool PersistanceManager::shouldShowGPSInDecimalValues() const {
    return storedOrDefault(setting("shouldShowGPSInDecimalValues")).boolValue();
}

bool PersistanceManager::shouldShareAPPURLWhileSharing() const {
    return storedOrDefault(setting("shouldShareAPPURLWhileSharing")).boolValue();
}

bool PersistanceManager::includeExifAsTextOniMessageApp() const {
    return storedOrDefault(setting("includeExifAsTextOniMessageApp")).boolValue();
}

bool PersistanceManager::showUserCurrentLocationOnMapView() const {
    return storedOrDefault(setting("showUserCurrentLocationOnMapView")).boolValue();
}

std::uint64_t PersistanceManager::mapType() const {
    return unsignedInteger(storedOrDefault(setting("mapType")));
}

std::uint64_t PersistanceManager::selectedTabIndex() const {
    return unsignedInteger(storedOrDefault(setting("selectedTabIndex")));
}

} // namespace exifcard

#include "settings/PersistanceManager.h"

#include "platform/foundation/Identifiers.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/NotificationCenter.h"
#include "platform/uivalues/UIAccessibility.h"
#include "settings/SettingsTable.h"
#include "settings/SharedInstance.h"

#include <algorithm>
#include <iterator>

namespace exifcard {
namespace {

constexpr std::uint64_t kStandardMap = 0;
constexpr std::uint64_t kSatelliteMap = 1;
constexpr std::uint64_t kHybridMap = 2;

/// A setting whose getter does more than the table tells.
struct OwnGetter {
    std::string_view key;
    Value (*answer)(PersistanceManager& settings);
};

constexpr OwnGetter kOwnGetters[] = {
    {"isDarkModeOn", [](PersistanceManager& settings) { return Value(settings.isDarkModeOn()); }},
    {"isUsingMetricUnits", [](PersistanceManager& settings) { return Value(settings.isUsingMetricUnits()); }},
    {"dateFormatString", [](PersistanceManager& settings) { return Value(settings.dateFormatString()); }},
};

SharedInstance<PersistanceManager>& shared() {
    // Never destroyed: threads may still ask for a setting while the program ends.
    static auto& instance = *new SharedInstance<PersistanceManager>();
    return instance;
}

/// Intended: both replacements reach into the pattern's quoted words too.
std::string in24Hours(std::string pattern) {
    constexpr std::string_view kHours = "hh";
    for (auto found = pattern.find(kHours); found != std::string::npos; found = pattern.find(kHours, found)) {
        pattern.replace(found, kHours.size(), "HH");
    }
    std::erase(pattern, 'a');
    return pattern;
}

} // namespace

PersistanceManager& PersistanceManager::sharedInstance() {
    return shared().get();
}

void PersistanceManager::forgetSharedInstance() {
    shared().forget();
}

PersistanceManager::PersistanceManager() : userDefaults(UserDefaults::initWithSuiteName(kApplicationGroup)) {
    if (isDebugLogWanted()) {
        debugLog("init userDefaults " + userDefaults->path());
    }
    loadFieldLists(*userDefaults);
}

bool PersistanceManager::isDarkModeOn() const {
    return !UIAccessibilityIsInvertColorsEnabled() && storedOrDefault(setting("isDarkModeOn")).boolValue();
}

bool PersistanceManager::isUsingMetricUnits() {
    const Value stored = storedValue(setting("isUsingMetricUnits"));
    return stored.isNothing() ? defaultShouldShowMetricUnits() : stored.boolValue();
}

bool PersistanceManager::defaultShouldShowMetricUnits() {
    const bool isMetric = defaultValue(setting("isUsingMetricUnits")).boolValue();
    setIsUsingMetricUnits(isMetric);
    return isMetric;
}

std::string PersistanceManager::dateFormatString() const {
    auto pattern = storedOrDefault(setting("dateFormatString")).description();
    return sharedInstance().datePreference24HourFormat() ? in24Hours(std::move(pattern)) : pattern;
}

std::uint64_t PersistanceManager::mkMapType() const {
    const auto style = mapType();
    return style == kHybridMap || style == kSatelliteMap ? style : kStandardMap;
}

bool PersistanceManager::containsNewItemInHelpScreen() const {
    return !haveSeenYoutubeAppVideo() || !haveSeenYoutubeAppExtensionVideo();
}

void PersistanceManager::setContainsNewItemInHelpScreen(bool value) {
    _containsNewItemInHelpScreen = value;
}

std::string PersistanceManager::exifStandardDateFormatString() {
    return "yyyy:MM:dd HH:mm:ss";
}

std::string PersistanceManager::exifGPSStandardDateFormatString() {
    return "yyyy:MM:dd";
}

std::string PersistanceManager::exifGPSStandardTimeFormatString() {
    // Intended: the letters of the month and of a second's fraction.
    return "HH:MM:SS";
}

Value PersistanceManager::storedValue(const Setting& setting) const {
    return userDefaults->objectForKey(setting.key);
}

Value PersistanceManager::value(const Setting& setting) {
    const auto* const own = std::ranges::find(kOwnGetters, setting.key, &OwnGetter::key);
    if (own != std::end(kOwnGetters)) {
        return own->answer(*this);
    }
    switch (setting.kind) {
    case SettingKind::Boolean:
        return storedOrDefault(setting).boolValue();
    case SettingKind::Text:
        return storedOrDefault(setting).description();
    default:
        return storedOrDefault(setting).integerValue();
    }
}

void PersistanceManager::setValue(const Value& value, const Setting& setting) {
    userDefaults->setObjectForKey(value, setting.key);
    userDefaults->synchronize();
    if (!setting.notification.empty()) {
        NotificationCenter::defaultCenter().postNotificationName(setting.notification, this);
    }
}

void PersistanceManager::removeValue(const Setting& setting) {
    setValue({}, setting);
}

Value PersistanceManager::storedOrDefault(const Setting& setting) const {
    if (setting.rule == SettingRule::AlwaysDefault) {
        return defaultValue(setting);
    }
    auto stored = storedValue(setting);
    return stored.isNothing() ? defaultValue(setting) : stored;
}

} // namespace exifcard

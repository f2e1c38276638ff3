#include "settings/OutsideSettings.h"

#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/NotificationCenter.h"
#include "platform/foundation/UserDefaults.h"
#include "settings/AppSettings.h"
#include "settings/PersistanceManager.h"
#include "settings/SettingsTable.h"

#include <algorithm>
#include <iterator>
#include <mutex>
#include <string_view>
#include <utility>
#include <vector>

namespace exifcard {
namespace {

/// Where the field lists are stored.
constexpr std::string_view kListKeys[] = {"exifKeysOrderedArray", "exifKeysOrderedArray_Video",
    "exifKeysOrderedArray_FOR_SHARE", "editExifKeysOrderedArray", "editExifKeysOrderedArrayVideo"};

/// What a setter posts nothing for, though lists show it. Inside one program only the screen that shows it
/// changes it.
struct SilentSetting {
    std::string_view key;
    std::string_view notification;
};
constexpr SilentSetting kSilentSettings[] = {
    {"sortByKeyValue", kListSortingChangedEvent},
    {"sortOrderAscending", kListSortingChangedEvent},
    {"datePreferenceTimeAgoSinceNow", kExifDataListNeedRefresh},
    {"imageViewContentMode", kExifDataListNeedRefresh},
    {"isDarkModeOn", kExifDataListNeedRefresh},
    {"shouldShowGPSInDecimalValues", kExifDataListNeedRefresh},
};

std::string_view notificationOf(const Setting& setting) {
    const auto* const silent = std::ranges::find(kSilentSettings, setting.key, &SilentSetting::key);
    return silent == std::end(kSilentSettings) ? setting.notification : silent->notification;
}

} // namespace

class OutsideSettings::Follower : public std::enable_shared_from_this<Follower> {
public:
    Follower()
        : _defaults(PersistanceManager::sharedInstance().userDefaults)
        , _settings(storedSettings())
        , _lists(storedLists()) {}

    void follow() {
        auto& center = NotificationCenter::defaultCenter();
        for (const std::string_view own : {kPersistanceManagerHidePhotosWithoutExifDetailsValueChangedEvent,
                 kPersistanceManagerDateFormatOrPreferenceChangedEvent, kExifDataListNeedRefresh}) {
            // At once: a look at what the setter has stored is on its way.
            _observations.push_back(center.addObserver(
                own, /*object=*/nullptr, [weak = weak_from_this(), own](const Notification&) {
                    if (const auto self = weak.lock()) {
                        self->rememberThoseThatPost(own);
                    }
                }));
        }
        _observations.push_back(center.addObserver(kUserDefaultsDidChangeNotification, _defaults.get(),
            [weak = weak_from_this()](const Notification&) {
                DispatchQueue::mainQueue().async([weak] {
                    if (const auto self = weak.lock()) {
                        self->look();
                    }
                });
            }));
        _defaults->watchForOutsideChanges();
        _defaults->synchronize();
        look();
    }

private:
    std::vector<Value> storedSettings() const {
        std::vector<Value> values;
        std::ranges::transform(kSettings, std::back_inserter(values),
            [this](const Setting& setting) { return _defaults->objectForKey(setting.key); });
        return values;
    }

    std::vector<Value> storedLists() const {
        std::vector<Value> values;
        std::ranges::transform(kListKeys, std::back_inserter(values),
            [this](std::string_view key) { return _defaults->objectForKey(key); });
        return values;
    }

    /// What this program sets itself has been told.
    void rememberThoseThatPost(std::string_view notification) {
        const std::lock_guard lock(_mutex);
        for (std::size_t row = 0; row < std::size(kSettings); ++row) {
            if (notificationOf(kSettings[row]) == notification) {
                _settings[row] = _defaults->objectForKey(kSettings[row].key);
            }
        }
    }

    void look() {
        const auto now = storedSettings();
        auto settings = now;
        {
            const std::lock_guard lock(_mutex);
            _settings.swap(settings);
        }
        const auto lists = std::exchange(_lists, storedLists());
        std::vector<std::string_view> due;
        const auto addDue = [&due](std::string_view notification) {
            if (!notification.empty() && std::ranges::find(due, notification) == due.end()) {
                due.push_back(notification);
            }
        };
        if (!(lists == _lists)) {
            PersistanceManager::sharedInstance().reloadFieldLists();
            AppSettings::sharedInstance().reloadFieldLists();
            addDue(kExifDataListNeedRefresh);
        }
        for (std::size_t row = 0; row < std::size(kSettings); ++row) {
            if (!(settings[row] == now[row])) {
                addDue(notificationOf(kSettings[row]));
            }
        }
        for (const std::string_view notification : due) {
            NotificationCenter::defaultCenter().postNotificationName(
                notification, &PersistanceManager::sharedInstance());
        }
    }

    std::shared_ptr<UserDefaults> _defaults;
    // As they were last looked at.
    std::mutex _mutex;
    std::vector<Value> _settings; // Under the rows of the table; guarded by _mutex, as setters run anywhere.
    std::vector<Value> _lists;
    std::vector<NotificationCenter::Observation> _observations;
};

OutsideSettings::OutsideSettings() : _follower(std::make_shared<Follower>()) {
}

OutsideSettings::~OutsideSettings() = default;

void OutsideSettings::follow() {
    _follower->follow();
}

} // namespace exifcard

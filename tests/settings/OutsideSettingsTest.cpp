#include "settings/OutsideSettings.h"

#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/Identifiers.h"
#include "platform/foundation/NotificationCenter.h"
#include "settings/AppSettings.h"
#include "settings/PersistanceManager.h"
#include "settings/SettingsNotifications.h"
#include "support/ChildProcess.h"
#include "support/TemporaryHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <utility>
#include <vector>

namespace exifcard {
namespace {

using testing::ElementsAre;

class OutsideSettingsTest : public testing::Test {
protected:
    OutsideSettingsTest() {
        forget();
        for (const auto name : {kPersistanceManagerHidePhotosWithoutExifDetailsValueChangedEvent,
                 kPersistanceManagerDateFormatOrPreferenceChangedEvent, kExifDataListNeedRefresh,
                 kListSortingChangedEvent}) {
            _observations.push_back(NotificationCenter::defaultCenter().addObserver(
                name, &settings(), [this](const Notification& notification) {
                    posted.push_back(notification.name);
                    MainRunLoop::stop();
                }));
        }
        AppSettings::sharedInstance(); // Stores its lists when it is first used.
    }
    ~OutsideSettingsTest() override { forget(); }

    static PersistanceManager& settings() { return PersistanceManager::sharedInstance(); }
    static void changeElsewhere(const std::function<void(PersistanceManager&)>& change) {
        ChildProcess other([&change] {
            change(settings());
            return true;
        });
        ASSERT_TRUE(other.succeeded());
    }
    std::vector<std::string> takePosted() { return std::exchange(posted, {}); }

    std::vector<std::string> posted;

private:
    static void forget() {
        PersistanceManager::forgetSharedInstance();
        AppSettings::forgetSharedInstance();
    }

    TemporaryHome _home;
    std::vector<NotificationCenter::Observation> _observations;
};

TEST_F(OutsideSettingsTest, AreToldFromTheMomentTheyWereRememberedOn) {
    OutsideSettings outside;
    const auto fields = settings().sharedExifVisibleKeysOrderedArray()->size();
    changeElsewhere([](PersistanceManager& others) {
        others.setSortOrderAscending(true);
        others.setDatePreferenceTimeAgoSinceNow(false);
        others.setDateFormatString("yyyy");
        ExifKeys keys = *others.sharedExifVisibleKeysOrderedArray();
        keys.pop_back();
        others.setSharedExifVisibleKeysOrderedArray(std::move(keys));
    });
    outside.follow();
    EXPECT_THAT(takePosted(), ElementsAre(kExifDataListNeedRefresh, kListSortingChangedEvent,
                                  kPersistanceManagerDateFormatOrPreferenceChangedEvent));
    EXPECT_EQ(settings().dateFormatString(), "yyyy");
    EXPECT_EQ(settings().sharedExifVisibleKeysOrderedArray()->size(), fields - 1);
}

TEST_F(OutsideSettingsTest, AreToldAsTheyChangeAndOnesOwnOnce) {
    OutsideSettings outside;
    outside.follow();
    changeElsewhere([](PersistanceManager& others) { others.setLocationFilter(2); });
    MainRunLoop::runUntilStopped();
    EXPECT_THAT(takePosted(), ElementsAre(kPersistanceManagerHidePhotosWithoutExifDetailsValueChangedEvent));
    settings().setShouldShowExtraInformationOnEXIFCards(false);
    MainRunLoop::drain();
    changeElsewhere([](PersistanceManager& others) { others.setDatePreference24HourFormat(true); });
    while (posted.size() < 2) {
        MainRunLoop::runUntilStopped();
    }
    EXPECT_THAT(takePosted(),
        ElementsAre(kExifDataListNeedRefresh, kPersistanceManagerDateFormatOrPreferenceChangedEvent));
}

} // namespace
} // namespace exifcard

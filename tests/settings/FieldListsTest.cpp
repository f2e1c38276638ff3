#include "platform/foundation/Identifiers.h"
#include "platform/foundation/Log.h"
#include "settings/AppSettings.h"
#include "settings/PersistanceManager.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fstream>

#include <sys/stat.h>

namespace exifcard {
namespace {

using Names = std::vector<std::string>;

Names namesOf(const ExifKeys& keys) {
    Names names;
    for (const auto& key : keys) {
        names.push_back(key ? key->key : "(none)");
    }
    return names;
}

ExifKeys keysOf(std::initializer_list<const char*> names) {
    return visibleKeysNamed(std::span(names.begin(), names.size()));
}

ExifKeys without(ExifKeys keys, std::initializer_list<std::string_view> names) {
    std::erase_if(keys, [names](const auto& key) { return std::ranges::count(names, key->key) > 0; });
    return keys;
}

Data archiveOf(const ExifKeys& keys) {
    std::vector<ArchivedObject> objects(keys.size());
    for (std::size_t index = 0; index < keys.size(); ++index) {
        keys[index]->encodeWithCoder(objects[index]);
    }
    return keyedarchive::archivedDataWithRootArray(objects);
}

class FieldListsTest : public testing::Test {
protected:
    ~FieldListsTest() override {
        captureLog({});
        setFieldTest(nullptr);
    }

    std::shared_ptr<UserDefaults> suite() const { return UserDefaults::initWithSuiteName(kApplicationGroup); }

    void storeElsewhere(std::string_view key, const ExifKeys& keys) const {
        suite()->setObjectForKey(archiveOf(keys), key);
    }

private:
    TemporaryHome _home;
};

TEST_F(FieldListsTest, AnEmptySuiteGetsTheDefaultLists) {
    const PersistanceManager settings;
    const AppSettings cards;
    EXPECT_EQ(suite()->allKeys(),
        (Names{"editExifKeysOrderedArray", "editExifKeysOrderedArrayVideo", "exifKeysOrderedArray",
            "exifKeysOrderedArray_FOR_SHARE", "exifKeysOrderedArray_Video"}));
    struct Case {
        std::shared_ptr<const ExifKeys> keys;
        std::shared_ptr<const ExifKeys> visible;
        std::size_t count;
        std::string_view first;
        std::string_view last;
    };
    const Case cases[] = {
        {cards.exifKeysOrderedArray(), cards.exifVisibleKeysOrderedArray(), 62, "ApertureValue", "MapView"},
        {cards.exifKeysOrderedArray_Video(), cards.exifVisibleKeysOrderedArray_Video(), 13, "DateTaken",
            "MapView"},
        {settings.sharedExifVisibleKeysOrderedArray(), settings.allSharedExifVisibleKeysOrderedArray(), 25,
            "ApertureValue", "GPS"},
        {settings.sharedEditEXIFVisibleKeysOrderedArray(),
            settings.allSharedEditEXIFVisibleKeysOrderedArray(), 21, "DateTaken", "GPS"},
        {settings.sharedEditEXIFVisibleKeysOrderedArrayForVideo(),
            settings.allSharedEditEXIFVisibleKeysOrderedArrayForVideo(), 2, "DateTaken", "GPS"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.count);
        EXPECT_EQ(c.keys->size(), c.count);
        EXPECT_EQ(namesOf(*c.visible), namesOf(*c.keys));
        EXPECT_EQ(c.keys->front()->key, c.first);
        EXPECT_EQ(c.keys->back()->key, c.last);
    }
}

TEST_F(FieldListsTest, TheListsThatNoPhotoShowsAreInOrder) {
    EXPECT_EQ(namesOf(AppSettings::exifKeysDefaultOrderedArrayForVideos()),
        (Names{"DateTaken", "FramesPerSecond", "GPSSpeed", "GPSAltitude", "GPS", "Duration", "FileSize",
            "Artist", "Copyright", "Make", "Model", "Software", "MapView"}));
    EXPECT_EQ(namesOf(PersistanceManager::sharedEDITExifKeysDefaultOrderedArray()),
        (Names{"DateTaken", "Caption", "Title", "FocalLength", "Copyright", "Artist", "Make", "Model",
            "Software", "LensMake", "LensModel", "ApertureValue", "ISOSpeedValue", "ShutterSpeedStringValue",
            "UserComment", "Keywords", "Headline", "StarRating", "GPSAltitude", "GPSSpeed", "GPS"}));
}

TEST_F(FieldListsTest, ASecondStartChangesNoByteAndNoTime) {
    const auto start = [] {
        const PersistanceManager settings;
        const AppSettings cards;
    };
    const auto trace = [this] {
        struct stat status = {};
        EXPECT_EQ(stat(suite()->path().c_str(), &status), 0);
        return std::array{
            static_cast<std::int64_t>(status.st_ino), status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
    };
    start();
    const auto before = trace();
    start();
    EXPECT_EQ(trace(), before);
}

TEST_F(FieldListsTest, MissingKeysAreFoundByASubstringTest) {
    struct Case {
        ExifKeys stored;
        ExifKeys defaults;
        Names missing;
    };
    const Case cases[] = {
        {keysOf({"GPSSpeed"}), keysOf({"GPS", "MapView"}), {"MapView"}},
        {keysOf({"LensModel", "LensMake", "FlashPixVersion"}), keysOf({"Model", "Make", "Flash"}), {}},
        {keysOf({"GPS"}), keysOf({"GPSSpeed", "GPS", "GPSAltitude"}), {"GPSSpeed", "GPSAltitude"}},
        {keysOf({"Mod", "el"}), keysOf({"Model"}), {"Model"}}, // Keys do not run together.
        {{nullptr, ExifKey::exifWithKey("GPS")}, {nullptr, ExifKey::exifWithKey("GPS")}, {"(none)"}},
        {{}, keysOf({"A", "B"}), {"A", "B"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.missing));
        EXPECT_EQ(namesOf(PersistanceManager::missingExifKeysIn(c.stored, c.defaults)), c.missing);
    }
    EXPECT_EQ(AppSettings::missingExifOrderedKeysIn({}, /*forVideo=*/true).size(), 13U);
    EXPECT_EQ(AppSettings::missingExifOrderedKeysIn({}, /*forVideo=*/false).size(), 62U);
}

TEST_F(FieldListsTest, AShorterStoredListGetsTheMissingFieldsAtItsEnd) {
    auto stored = without(AppSettings::exifKeysDefaultOrderedArray(), {"GPSDirection", "MapView"});
    std::swap(stored.front(), stored.back());
    stored.front()->isHidden = true;
    auto expected = namesOf(stored);
    expected.insert(expected.end(), {"GPSDirection", "MapView"});
    storeElsewhere("exifKeysOrderedArray", stored);
    const AppSettings cards;
    EXPECT_EQ(namesOf(*cards.exifKeysOrderedArray()), expected);
    EXPECT_TRUE(cards.exifKeysOrderedArray()->front()->isHidden.boolValue());
    EXPECT_EQ(cards.exifVisibleKeysOrderedArray()->size(), 61U);
    EXPECT_EQ(unarchivedKeys(suite()->objectForKey("exifKeysOrderedArray"))->size(), 62U);
}

TEST_F(FieldListsTest, MergingLeavesOutWhatTheTestTakesForPresentAndLongLists) {
    storeElsewhere(
        "exifKeysOrderedArray", without(AppSettings::exifKeysDefaultOrderedArray(), {"Model", "MapView"}));
    auto longList = without(AppSettings::exifKeysDefaultOrderedArrayForVideos(), {"MapView"});
    longList.push_back(ExifKey::exifWithKey("Retired"));
    storeElsewhere("exifKeysOrderedArray_Video", longList);
    storeElsewhere("exifKeysOrderedArray_FOR_SHARE", keysOf({"GPS", "Make"}));
    storeElsewhere("editExifKeysOrderedArrayVideo", keysOf({"GPS"}));
    const AppSettings cards;
    const PersistanceManager settings;
    EXPECT_EQ(cards.exifKeysOrderedArray()->size(), 61U); // "Model" is part of "LensModel".
    EXPECT_EQ(cards.exifKeysOrderedArray()->back()->key, "MapView");
    EXPECT_EQ(namesOf(*cards.exifKeysOrderedArray_Video()), namesOf(longList));
    EXPECT_EQ(namesOf(*settings.sharedExifVisibleKeysOrderedArray()), (Names{"GPS", "Make"}));
    EXPECT_EQ(
        namesOf(*settings.sharedEditEXIFVisibleKeysOrderedArrayForVideo()), (Names{"GPS", "DateTaken"}));
}

TEST_F(FieldListsTest, AListOfTheProgramsOwnCountsOnlyBesideOneInTheSuite) {
    const auto own = UserDefaults::standardUserDefaults();
    const auto list = keysOf({"GPS", "DateTaken"});
    own->setObjectForKey(archiveOf(list), "exifKeysOrderedArray");
    own->setObjectForKey(archiveOf(list), "exifKeysOrderedArray_Video");
    storeElsewhere("exifKeysOrderedArray_Video", keysOf({"Artist"}));
    const AppSettings cards;
    EXPECT_EQ(cards.exifKeysOrderedArray()->front()->key, "ApertureValue");
    EXPECT_EQ(own->allKeys(), Names{"exifKeysOrderedArray"}); // The one that was taken over is gone.
    EXPECT_EQ(cards.exifKeysOrderedArray_Video()->front()->key, "GPS");
    EXPECT_EQ(cards.exifKeysOrderedArray_Video()->size(), 13U);
}

TEST_F(FieldListsTest, HidingAFieldTakesItFromTheVisibleOnesAtOnce) {
    AppSettings cards;
    ExifKeys keys = *cards.exifKeysOrderedArray();
    keys[2] = ExifKey::initWithKey(keys[2]->key, /*isHidden=*/true);
    const auto shown = cards.exifVisibleKeysOrderedArray();
    cards.setExifKeysOrderedArray(keys);
    EXPECT_EQ(shown->size(), 62U); // Who holds a list keeps it.
    EXPECT_EQ(cards.exifVisibleKeysOrderedArray()->size(), 61U);
    EXPECT_EQ((*cards.exifVisibleKeysOrderedArray())[2]->key, keys[3]->key);
    EXPECT_EQ((*cards.exifKeysOrderedArray())[2]->key, "FocalLength");
    EXPECT_EQ(
        namesOf(*AppSettings().exifVisibleKeysOrderedArray()), namesOf(*cards.exifVisibleKeysOrderedArray()));
}

TEST_F(FieldListsTest, ListsGoToTheSharedSuiteWhateverSuiteTheSettingsUse) {
    PersistanceManager settings;
    settings.userDefaults = UserDefaults::initWithSuiteName("another");
    settings.setSharedExifVisibleKeysOrderedArray(keysOf({"GPS"}));
    settings.setSortByKeyValue(1);
    EXPECT_EQ(unarchivedKeys(suite()->objectForKey("exifKeysOrderedArray_FOR_SHARE"))->size(), 1U);
    EXPECT_TRUE(suite()->objectForKey("sortByKeyValue").isNothing());
    EXPECT_EQ(settings.userDefaults->allKeys(), Names{"sortByKeyValue"});
}

TEST_F(FieldListsTest, UnreadableDataGivesALineAndAListWithoutEntries) {
    suite()->setObjectForKey(Data::fromText("no archive"), "exifKeysOrderedArray_FOR_SHARE");
    suite()->setObjectForKey(Data::fromText("no archive"), "editExifKeysOrderedArray");
    suite()->setObjectForKey("no data", "editExifKeysOrderedArrayVideo");
    int lines = 0;
    captureLog(
        [&lines](std::string_view line) { lines += line.find("cannot be read") != line.npos ? 1 : 0; });
    const PersistanceManager settings;
    EXPECT_EQ(lines, 2);
    EXPECT_TRUE(settings.sharedExifVisibleKeysOrderedArray()->empty()); // This list is never merged.
    const PersistanceManager later; // The list was stored without entries.
    EXPECT_EQ(lines, 2);
    EXPECT_EQ(settings.sharedEditEXIFVisibleKeysOrderedArray()->size(), 21U);
    EXPECT_EQ(settings.sharedEditEXIFVisibleKeysOrderedArrayForVideo()->size(), 2U);
}

TEST_F(FieldListsTest, EntriesOfAnotherClassAreNeverShown) {
    std::vector<ArchivedObject> objects = {{"Other", {}}, {"", {{"", "text"}}}, {}};
    ExifKey::exifWithKey("GPS")->encodeWithCoder(objects[2]);
    suite()->setObjectForKey(
        keyedarchive::archivedDataWithRootArray(objects), "exifKeysOrderedArray_FOR_SHARE");
    const PersistanceManager settings;
    EXPECT_EQ(namesOf(*settings.sharedExifVisibleKeysOrderedArray()), (Names{"(none)", "(none)", "GPS"}));
    EXPECT_EQ(namesOf(*settings.allSharedExifVisibleKeysOrderedArray()), Names{"GPS"});
    EXPECT_EQ(namesOf(*PersistanceManager().sharedExifVisibleKeysOrderedArray()),
        (Names{"(none)", "(none)", "GPS"}));
}

TEST_F(FieldListsTest, WhatIsNoFieldIsKeptAndNotShown) {
    storeElsewhere("exifKeysOrderedArray_FOR_SHARE", keysOf({"OfANewerProgram", "GPS", ""}));
    auto hidden = keysOf({"OfANewerProgram", "GPS"});
    hidden.front()->isHidden = true;
    storeElsewhere("editExifKeysOrderedArrayVideo", hidden);
    EXPECT_EQ(PersistanceManager().allSharedExifVisibleKeysOrderedArray()->size(), 3U);
    setFieldTest([](std::string_view key) { return key != "OfANewerProgram" && !key.empty(); });
    Names lines;
    captureLog([&lines](std::string_view line) {
        if (line.find("list of fields") != line.npos) {
            lines.emplace_back(line);
        }
    });
    PersistanceManager settings;
    EXPECT_EQ(lines, Names{"a stored list of fields names 2 that are none; they are left out"});
    EXPECT_EQ(namesOf(*settings.allSharedExifVisibleKeysOrderedArray()), Names{"GPS"});
    ExifKeys keys = *settings.sharedExifVisibleKeysOrderedArray();
    std::swap(keys[0], keys[1]);
    settings.setSharedExifVisibleKeysOrderedArray(keys);
    EXPECT_EQ(namesOf(*settings.allSharedExifVisibleKeysOrderedArray()), Names{"GPS"});
    EXPECT_EQ(namesOf(*unarchivedKeys(suite()->objectForKey("exifKeysOrderedArray_FOR_SHARE"))),
        (Names{"GPS", "OfANewerProgram", ""}));
}

TEST_F(FieldListsTest, ReloadingTakesWhatAnotherProgramStored) {
    PersistanceManager settings;
    AppSettings cards;
    storeElsewhere("exifKeysOrderedArray", keysOf({"GPS"}));
    storeElsewhere("exifKeysOrderedArray_FOR_SHARE", keysOf({"Make"}));
    EXPECT_EQ(cards.exifVisibleKeysOrderedArray()->size(), 62U);
    cards.reloadFieldLists();
    settings.reloadFieldLists();
    EXPECT_EQ(namesOf(*cards.exifVisibleKeysOrderedArray()), Names{"GPS"});
    EXPECT_EQ(namesOf(*settings.allSharedExifVisibleKeysOrderedArray()), Names{"Make"});
    EXPECT_EQ(settings.sharedEditEXIFVisibleKeysOrderedArray()->size(), 21U);
}

} // namespace
} // namespace exifcard

#include "library/AssetLibrary.h"
#include "library/CombinedProgress.h"
#include "metadata/ExifInformation.h"
#include "platform/foundation/Log.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <mutex>
#include <utility>
#include <vector>

namespace exifcard {
namespace {

using Records = ExifManager::Records;

constexpr const char* kCanon = "canon-40d-northwest-rating5.jpg";
constexpr const char* kSony = "sony-ilce7m3.jpg";

class ExifManagerBatchTest : public AssetLibrary {
protected:
    ~ExifManagerBatchTest() override {
        captureLog({});
        setDebugLogTarget(LogTarget::Nowhere);
    }

    void addManyWithoutFiles(int count) const {
        CatalogueWriter writer(catalogue());
        for (int number = 0; number < count; ++number) {
            writer.storeAsset(photo(std::to_string(number) + ".jpg", {.creationDate = Date{number * 1.0}}));
        }
        writer.commit();
    }

    static Records allRecords(std::string_view predicate, bool ascending) {
        Records records;
        bool isDone = false;
        ExifManager::allExifDataArrayInPHFetchResult(PHAsset::fetchAssetsWithOptions(), predicate,
            /*sortBy=*/0, ascending, [&](const Records& built) {
                EXPECT_FALSE(isDone);
                records = built;
                isDone = true;
            });
        runUntil([&isDone] { return isDone; });
        return records;
    }

    static std::string namesOf(const Records& records) {
        std::vector<PHAssetPtr> assets;
        for (const auto& record : records) {
            assets.push_back(record->phAsset);
        }
        return namesInOrder(assets);
    }
};

TEST_F(ExifManagerBatchTest, ARangeGivesItsRecordsInOrder) {
    add(kCanon, {.creationDate = Date{1}});
    add(kSony, {.creationDate = Date{2}});
    addElsewhere("leica-q2.jpg", {.creationDate = Date{3}});
    const auto assets = PHAsset::fetchAssetsWithOptions();
    struct Case {
        AssetRange range;
        std::string names;
    };
    const Case cases[] = {
        {{0, 3}, "canon-40d-northwest-rating5.jpg sony-ilce7m3.jpg leica-q2.jpg"},
        {{1, 2}, "sony-ilce7m3.jpg leica-q2.jpg"},
        {{2, 2}, "leica-q2.jpg null"},
        {{3, 0}, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.names);
        std::optional<std::string> names;
        std::vector<std::pair<bool, float>> progress;
        ExifManager::exifDataArrayInPHFetchResults(
            assets, c.range,
            [&progress](bool isDownloading, float mean) { progress.emplace_back(isDownloading, mean); },
            [&names](const Records& records) { names = namesOf(records); });
        EXPECT_EQ(names, c.names);
        ASSERT_EQ(progress.size(), c.range.length);
        for (std::size_t done = 1; done <= progress.size(); ++done) {
            EXPECT_FALSE(progress[done - 1].first);
            EXPECT_FLOAT_EQ(
                progress[done - 1].second, static_cast<float>(done) / static_cast<float>(c.range.length));
        }
    }
}

TEST(CombinedProgressTest, IsTheMeanAndTellsWhetherAnyIsPartWay) {
    struct Step {
        std::size_t slot;
        double fraction;
        bool isDownloading;
        float mean;
    };
    constexpr Step kSteps[] = {{0, 0, false, 0}, {0, 0.5, true, 0.25F}, {1, 0.125, true, 0.3125F},
        {0, 1, true, 0.5625F}, {1, 1, false, 1}};
    CombinedProgress progress(2);
    for (const Step& step : kSteps) {
        SCOPED_TRACE(step.mean);
        const auto state = progress.update(step.slot, step.fraction);
        EXPECT_EQ(state.isDownloading, step.isDownloading);
        EXPECT_FLOAT_EQ(state.mean, step.mean);
    }
}

TEST_F(ExifManagerBatchTest, AWholeResultIsReadInChunksUpToAThousand) {
    addManyWithoutFiles(1100);
    std::mutex mutex;
    std::vector<std::string> ranges;
    setDebugLogTarget(LogTarget::StandardError);
    captureLog([&](std::string_view line) {
        const std::lock_guard lock(mutex);
        if (line.starts_with("RANGE")) {
            ranges.emplace_back(line);
        }
    });
    const auto records = allRecords("", /*ascending=*/true);
    EXPECT_THAT(ranges,
        testing::ElementsAre("RANGE {0, 300}", "RANGE {300, 300}", "RANGE {600, 300}", "RANGE {900, 100}"));
    ASSERT_EQ(records.size(), 1000U);
    EXPECT_EQ(records.front()->dateCreated, Date{999}); // The newest of those that were read.
    EXPECT_EQ(records.back()->dateCreated, Date{0});
}

TEST_F(ExifManagerBatchTest, AWholeResultIsFilteredAndSorted) {
    add(kCanon, {.creationDate = Date{3}});
    add(kSony, {.creationDate = Date{2}, .location = CLLocation{.coordinate = {1, 2}}});
    add("leica-q2.jpg");
    struct Case {
        const char* predicate;
        bool ascending;
        std::string names;
    };
    const Case cases[] = {
        {"", true, "canon-40d-northwest-rating5.jpg sony-ilce7m3.jpg leica-q2.jpg"},
        {"", false, "leica-q2.jpg sony-ilce7m3.jpg canon-40d-northwest-rating5.jpg"},
        {"cameraModel = 'Canon EOS 40D'", true, "canon-40d-northwest-rating5.jpg"},
        {"location != NULL AND location.latitude = 1", true, "sony-ilce7m3.jpg"},
        {"tifDic.Make BEGINSWITH[c] 'leica'", true, "leica-q2.jpg"},
        {"iSOSpeed < 0 OR unknown = 1", true, ""},
        {"no predicate at all", true, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.predicate);
        captureLog([](std::string_view) {});
        EXPECT_EQ(namesOf(allRecords(c.predicate, c.ascending)), c.names);
    }
}

TEST_F(ExifManagerBatchTest, AnEmptyLibraryGivesNoRecords) {
    EXPECT_TRUE(allRecords("", true).empty());
}

TEST_F(ExifManagerBatchTest, HidesWhatTheSettingsSay) {
    const auto record = [](bool hasPlace, bool hasExif, bool isInCloud) {
        auto made = ExifInformation::init();
        made->location = hasPlace ? std::optional(CLLocation{}) : std::nullopt;
        made->exifInfoAvailable = hasExif;
        made->imageResultIsInCloud = isInCloud;
        return made;
    };
    const Records all = {record(true, true, false), record(false, true, false), record(true, false, false),
        record(false, false, true)};
    struct Case {
        std::uint64_t locationFilter;
        bool hidesWithoutExif;
        Records shown;
    };
    const Case cases[] = {
        {0, false, all},
        {0, true, {all[0], all[1], all[3]}},
        {1, false, {all[0], all[2]}},
        {2, false, {all[1], all[3]}},
        {1, true, {all[0]}},
        {2, true, {all[1], all[3]}},
        {7, false, all},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.locationFilter << c.hidesWithoutExif);
        PersistanceManager::sharedInstance().setLocationFilter(c.locationFilter);
        PersistanceManager::sharedInstance().setShouldHidePhotosWithoutExifDetails(c.hidesWithoutExif);
        EXPECT_EQ(ExifManager::exifDataItemsArrayAndFilterFromExifArray(all), c.shown);
    }
}

} // namespace
} // namespace exifcard

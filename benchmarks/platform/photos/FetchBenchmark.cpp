#include "platform/photos/AssetReader.h"
#include "platform/photos/CatalogueConnections.h"
#include "platform/photos/CatalogueSchema.h"
#include "platform/photos/PHAsset.h"
#include "platform/photos/PHPhotoLibrary.h"
#include "platform/photos/PhotoCatalogue.h"

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <sqlite3.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace exifcard {
namespace {

constexpr std::int64_t kAssets = 1'000'000;

/// The library of a million assets, which is made where there is none yet: the folder is the value of
/// EXIFCARD_BENCHMARK_LIBRARY or one below the folder of temporary files. Every tenth is a video, every
/// hundredth a favourite, every third has a place; dates are spread over thirty years in no order.
const std::string& largeLibrary() {
    static const std::string folder = [] {
        const char* const given = std::getenv("EXIFCARD_BENCHMARK_LIBRARY");
        const std::string path =
            given != nullptr ? given : (std::filesystem::temp_directory_path() / "exifcard-million").string();
        std::filesystem::create_directories(path);
        SQLiteDatabase database(path + "/library.sqlite", catalogueMigrations());
        auto count = database.query("SELECT COUNT(*) FROM assets");
        if (count.step() && count.integer(0) >= kAssets) {
            return path;
        }
        database.beginImmediate();
        database.execute("INSERT INTO roots VALUES (1, CAST('/photos' AS BLOB), 'folder', 1)");
        database.execute("INSERT INTO folders VALUES (1, 1, CAST('' AS BLOB))");
        database.execute(
            "WITH RECURSIVE number (n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM number WHERE n < ?)"
            " INSERT INTO assets (uuid, folder, name, media_type, subtypes, playback, source_type, width, height,"
            " created, modified, added, duration, located, latitude, longitude, favorite, hidden,"
            " represents_burst, burst_selection, traits, user_fields, vanished, trashed, changed)"
            " SELECT printf('%08X-0000-4000-8000-%012X', n * 2654435761 % 4294967296, n), 1,"
            " CAST(printf('IMG_%07d.JPG', n) AS BLOB), CASE n % 10 WHEN 0 THEN 2 ELSE 1 END,"
            " CASE n % 50 WHEN 0 THEN 8 ELSE 0 END, 1, 1, 4032, 3024, n * 7919 % 946684800 + 0.25,"
            " n * 7919 % 946684800 + 0.5, n, 0, n % 3 = 0, CASE n % 3 WHEN 0 THEN n % 90 END,"
            " CASE n % 3 WHEN 0 THEN n % 180 END, n % 100 = 0, 0, 0, 0, 0, 0, 0, 0, 1 FROM number",
            {kAssets});
        database.commit();
        return path;
    }();
    return folder;
}

PHFetchOptions newestFirst() {
    PHFetchOptions options;
    options.sortDescriptors = {{"creationDate", false}, {"modificationDate", false}};
    options.includeAssetSourceTypes = kPHAssetSourceTypeUserLibrary | kPHAssetSourceTypeiTunesSynced;
    return options;
}

void beginAnew() {
    PHPhotoLibrary::grantForThisProcess();
    PhotoCatalogue::setShared(PhotoCatalogue::inFolder(largeLibrary()));
}

/// The yardstick of a first page: what nobody can do without.
void opensAndSelectsOne(benchmark::State& state) {
    const std::string file = largeLibrary() + "/library.sqlite";
    for ([[maybe_unused]] auto _ : state) {
        SQLiteDatabase database(file, catalogueMigrations());
        benchmark::DoNotOptimize(database.query("SELECT 1").step());
    }
}
BENCHMARK(opensAndSelectsOne);

/// The same yardstick with one asset in place of the number one, for which the schema has to be read.
void opensAndReadsOneAsset(benchmark::State& state) {
    const std::string file = largeLibrary() + "/library.sqlite";
    for ([[maybe_unused]] auto _ : state) {
        SQLiteDatabase database(file, catalogueMigrations());
        AssetReader reader(database);
        benchmark::DoNotOptimize(reader.asset(kAssets / 2));
    }
}
BENCHMARK(opensAndReadsOneAsset);

/// Decides whether a list shows its first photos at once: to stay within 1.25 of the yardstick.
void showsTheFirstPage(benchmark::State& state) {
    const auto length = static_cast<std::size_t>(state.range(0));
    for ([[maybe_unused]] auto _ : state) {
        beginAnew();
        benchmark::DoNotOptimize(PHAsset::fetchAssetsWithOptions(newestFirst())->objectsInRange(0, length));
    }
}
BENCHMARK(showsTheFirstPage)->Arg(50)->Arg(100);

/// Decides whether scrolling stays as quick as it began: a page anywhere costs what the first one does.
void showsAPage(benchmark::State& state) {
    beginAnew();
    const auto result = PHAsset::fetchAssetsWithOptions(newestFirst());
    const std::size_t first = result->count() / 100 * static_cast<std::size_t>(state.range(0));
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(result->objectsInRange(first, 50));
    }
}
BENCHMARK(showsAPage)->Arg(0)->Arg(50)->Arg(99);

/// The yardstick of a page: as many single reads.
void readsFiftyAssetsOneByOne(benchmark::State& state) {
    SQLiteDatabase database(largeLibrary() + "/library.sqlite", catalogueMigrations());
    AssetReader reader(database);
    std::vector<std::int64_t> numbers;
    auto rows =
        database.query("SELECT id FROM assets WHERE shown = 1 ORDER BY created DESC, modified DESC LIMIT 50");
    while (rows.step()) {
        numbers.push_back(rows.integer(0));
    }
    for ([[maybe_unused]] auto _ : state) {
        for (const std::int64_t number : numbers) {
            benchmark::DoNotOptimize(reader.asset(number));
        }
    }
}
BENCHMARK(readsFiftyAssetsOneByOne);

/// The yardstick of a whole result: SQLite's own loop over the numbers in order.
void loopsOverAllNumbers(benchmark::State& state) {
    sqlite3* database = nullptr;
    sqlite3_open((largeLibrary() + "/library.sqlite").c_str(), &database);
    for ([[maybe_unused]] auto _ : state) {
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(database,
            "SELECT id FROM assets WHERE shown = 1 AND source_type & 5 ORDER BY created DESC, modified DESC, id DESC",
            -1, &statement, nullptr);
        std::int64_t sum = 0;
        while (sqlite3_step(statement) == SQLITE_ROW) {
            sum += sqlite3_column_int64(statement, 0);
        }
        benchmark::DoNotOptimize(sum);
        sqlite3_finalize(statement);
    }
    sqlite3_close(database);
}
BENCHMARK(loopsOverAllNumbers)->Unit(benchmark::kMillisecond);

/// Decides whether a result may know its count at once: to stay within 1.2 of the loop and 12 MB.
void fetchesEverything(benchmark::State& state) {
    beginAnew();
    std::size_t bytes = 0;
    for ([[maybe_unused]] auto _ : state) {
        const std::size_t before = mallinfo2().uordblks;
        const auto result = PHAsset::fetchAssetsWithOptions(newestFirst());
        benchmark::DoNotOptimize(result->count());
        bytes = mallinfo2().uordblks - before;
    }
    state.counters["MB"] = static_cast<double>(bytes) / 1e6;
}
BENCHMARK(fetchesEverything)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace exifcard

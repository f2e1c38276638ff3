#include "platform/foundation/Log.h"
#include "platform/photos/CatalogueBackup.h"
#include "platform/photos/CatalogueConnections.h"
#include "platform/photos/CatalogueSchema.h"
#include "platform/photos/Library.h"
#include "platform/photos/ListDifference.h"
#include "platform/photos/PHAssetChangeRequest.h"
#include "platform/photos/PHAssetCollectionChangeRequest.h"
#include "platform/photos/PHAssetResource.h"
#include "platform/sqlite/SQLiteDatabase.h"
#include "support/ReducedRights.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <fstream>
#include <random>

namespace exifcard {
namespace {

namespace fs = std::filesystem;

class PhotoCatalogueTest : public Library {
protected:
    PhotoCatalogueTest() {
        captureLog([this](std::string_view line) { lines.emplace_back(line); });
    }
    ~PhotoCatalogueTest() override { captureLog({}); }

    static fs::path file() { return catalogue()->file(); }
    /// As if the program began anew.
    static void reopen() { PhotoCatalogue::setShared(nullptr); }
    /// Changes the database behind the library's back.
    static void tamper(const std::string& sql) {
        sqlite3* database = nullptr;
        ASSERT_EQ(sqlite3_open(file().c_str(), &database), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(database);
        sqlite3_close(database);
    }
    /// Where the table lies in the file.
    static std::int64_t firstByteOfAssets() {
        SQLiteDatabase database(file(), catalogueMigrations());
        auto page = database.query("SELECT rootpage FROM sqlite_schema WHERE name = 'assets'");
        return page.step() ? (page.integer(0) - 1) * 4096 : 0;
    }
    /// Two photos, one of them a favourite in an album.
    void fill() {
        store("a.jpg");
        store("b.jpg");
        ASSERT_EQ(PHPhotoLibrary::sharedPhotoLibrary().performChangesAndWait([] {
            PHAssetChangeRequest::changeRequestForAsset(*assetNamed("a.jpg")).setFavorite(true);
            PHAssetCollectionChangeRequest::creationRequestForAssetCollectionWithTitle("Trip").addAssets(
                std::vector{assetNamed("a.jpg")});
        }),
            std::nullopt);
    }

    std::vector<std::string> lines;
};

TEST_F(PhotoCatalogueTest, BringsBackWhatOnlyItKnewWhenItIsLost) {
    enum class Loss { Deleted, Emptied, Garbage, PageOverwritten, AssetsOverwritten };
    for (const Loss loss :
        {Loss::Deleted, Loss::Emptied, Loss::Garbage, Loss::PageOverwritten, Loss::AssetsOverwritten}) {
        SCOPED_TRACE(static_cast<int>(loss));
        fs::remove_all(home.path() / "data");
        reopen();
        CatalogueWriter(catalogue()).storeRoot({.path = photos.string()});
        folder = CatalogueWriter(catalogue()).storeFolder(1, "");
        fill();
        const std::string identifier = assetNamed("a.jpg")->localIdentifier;
        const std::int64_t startOfAssets = firstByteOfAssets();
        reopen();
        if (loss == Loss::Deleted) {
            fs::remove(file());
        } else if (loss == Loss::Emptied) {
            fs::resize_file(file(), 0);
        } else {
            std::fstream damaged(file(), std::ios::in | std::ios::out | std::ios::binary);
            damaged.seekp(loss == Loss::Garbage ? 0 : loss == Loss::PageOverwritten ? 100 : startOfAssets);
            damaged << std::string(loss == Loss::AssetsOverwritten ? 4096 : 5000, '\x5a');
        }
        EXPECT_EQ(assetNamed("b.jpg"), nullptr);
        EXPECT_EQ(PHAsset::fetchAssetsWithOptions()->count(), 0U);
        EXPECT_TRUE(catalogue()->needsRebuild());
        CatalogueWriter writer(catalogue());
        const auto roots = writer.roots();
        ASSERT_EQ(roots.size(), 1U);
        EXPECT_EQ(roots.front().path, photos.string());
        // The import finds the files again.
        auto again = photo("a.jpg");
        again.files.front().folder = writer.storeFolder(roots.front().number, "");
        writer.storeAsset(again);
        writer.commit();
        catalogue()->finishRebuild();
        EXPECT_FALSE(catalogue()->needsRebuild());
        const auto asset = assetNamed("a.jpg");
        ASSERT_NE(asset, nullptr);
        EXPECT_TRUE(asset->isFavorite);
        EXPECT_EQ(asset->localIdentifier, identifier);
        const auto albums = PHAssetCollection::fetchAssetCollectionsWithType(
            PHAssetCollectionType::Album, PHAssetCollectionSubtype::AlbumRegular);
        ASSERT_EQ(albums->count(), 1U);
        EXPECT_EQ(names(PHAsset::fetchAssetsInAssetCollection(*albums->firstObject())), "a.jpg");
    }
}

/// All rows of a database, each as a line.
std::string contentOf(const std::string& path) {
    std::string content;
    sqlite3* database = nullptr;
    sqlite3_open(path.c_str(), &database);
    const auto addRow = [](void* text, int count, char** values, char**) {
        for (int column = 0; column < count; ++column) {
            *static_cast<std::string*>(text) += values[column] != nullptr ? values[column] : "null";
            *static_cast<std::string*>(text) += column + 1 < count ? '|' : '\n';
        }
        return 0;
    };
    for (const char* const table :
        {"roots", "folders", "albums", "album_assets", "assets", "files", "state"}) {
        const std::string sql = fmt::format("SELECT '{0}', * FROM {0} ORDER BY 2, 3", table);
        EXPECT_EQ(sqlite3_exec(database, sql.c_str(), addRow, &content, nullptr), SQLITE_OK);
    }
    sqlite3_close(database);
    return content;
}

TEST_F(PhotoCatalogueTest, ABackupKeptUpToDateIsTheOneWrittenAnew) {
    for (char name = 'a'; name <= 'h'; ++name) {
        store(std::string(1, name));
    }
    std::mt19937 chance(5);
    const auto anyAsset = [&chance] {
        return assetNamed(std::string(1, static_cast<char>('a' + chance() % 8)));
    };
    const auto anyAlbum = [&chance]() -> PHAssetCollectionPtr {
        const auto albums = PHAssetCollection::fetchAssetCollectionsWithType(
            PHAssetCollectionType::Album, PHAssetCollectionSubtype::AlbumRegular);
        return albums->count() > 0 ? albums->objectAtIndex(chance() % albums->count()) : nullptr;
    };
    const auto change = [&](const PHAssetPtr& asset, const PHAssetCollectionPtr& album, unsigned kind) {
        using AlbumChange = PHAssetCollectionChangeRequest;
        if (kind < 2 || !album) {
            PHAssetChangeRequest::changeRequestForAsset(*asset).setFavorite(kind == 0);
            AlbumChange::creationRequestForAssetCollectionWithTitle("Trip").addAssets(std::vector{asset});
        } else if (kind == 2) {
            AlbumChange::changeRequestForAssetCollection(*album).addAssets(std::vector{asset});
        } else if (kind == 3) {
            AlbumChange::changeRequestForAssetCollection(*album).removeAssets(std::vector{asset});
        } else {
            AlbumChange::deleteAssetCollections(std::vector{album});
        }
    };
    const std::string backup = catalogue()->folder() + "/library-backup.sqlite";
    const std::string anew = (home.path() / "anew.sqlite").string();
    const auto inode = fileNumberOf(backup);
    for (int round = 0; round < 60; ++round) {
        SCOPED_TRACE(round);
        const auto asset = anyAsset();
        const auto album = anyAlbum();
        ASSERT_EQ(PHPhotoLibrary::sharedPhotoLibrary().performChangesAndWait(
                      [&, kind = static_cast<unsigned>(chance() % 5)] { change(asset, album, kind); }),
            std::nullopt);
        if (round % 7 == 0) { // A file was edited.
            auto edited = CatalogueWriter(catalogue()).asset(static_cast<std::int64_t>(chance() % 8 + 1));
            edited->files.front().quickFingerprint = round + 1;
            store(*edited);
            catalogue()->connections().writeBackup();
        }
        fs::remove(anew);
        ASSERT_TRUE(writeCatalogueBackup(file(), anew));
        ASSERT_EQ(contentOf(backup), contentOf(anew));
    }
    EXPECT_EQ(fileNumberOf(backup), inode) << "it was written anew";
}

TEST_F(PhotoCatalogueTest, IsEmptyWithoutAFileAndMakesNoneByReading) {
    fs::remove_all(home.path() / "data");
    reopen();
    EXPECT_EQ(PHAsset::fetchAssetsWithOptions()->count(), 0U);
    EXPECT_EQ(PHAssetCollection::fetchAssetCollectionsWithType(
                  PHAssetCollectionType::SmartAlbum, PHAssetCollectionSubtype::Any)
                  ->count(),
        0U);
    EXPECT_FALSE(fs::exists(file()));
    EXPECT_EQ(catalogue()->error(), std::nullopt);
}

TEST_F(PhotoCatalogueTest, LeavesALibraryOfANewerProgramAlone) {
    fill();
    reopen();
    tamper("PRAGMA user_version = 1000");
    EXPECT_EQ(PHAsset::fetchAssetsWithOptions()->count(), 0U);
    ASSERT_TRUE(catalogue()->error().has_value());
    EXPECT_NE(catalogue()->error()->find("newer version"), std::string::npos);
    tamper(fmt::format("PRAGMA user_version = {}", catalogueMigrations().size()));
    EXPECT_EQ(PHAsset::fetchAssetsWithOptions()->count(), 2U);
}

TEST_F(PhotoCatalogueTest, TellsThatItMayNotLookForItsFile) {
    fill();
    reopen();
    fs::permissions(file().parent_path(), fs::perms::none);
    {
        const ReducedRights rights;
        EXPECT_THAT(catalogue()->error().value_or(""), testing::HasSubstr("(Permission denied)"));
    }
    fs::permissions(file().parent_path(), fs::perms::owner_all);
    EXPECT_EQ(PHAsset::fetchAssetsWithOptions()->count(), 2U);
}

TEST_F(PhotoCatalogueTest, AFailureIsToldByWhoAskedOrWritesAndElseLoggedOnce) {
    fill();
    reopen();
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open(file().c_str(), &other), SQLITE_OK);
    ASSERT_EQ(
        sqlite3_exec(other, "PRAGMA locking_mode = EXCLUSIVE; BEGIN EXCLUSIVE", nullptr, nullptr, nullptr),
        SQLITE_OK);
    PhotoCatalogue::setShared(PhotoCatalogue::inFolder(file().parent_path(), std::chrono::milliseconds(1)));
    const std::string failure =
        file().string() + " is in use by another program; try again (database is locked)";
    EXPECT_EQ(catalogue()->error(), failure);
    EXPECT_EQ(CatalogueWriter(catalogue()).error(), failure);
    EXPECT_EQ(lines, std::vector<std::string>());
    EXPECT_EQ(PHAsset::fetchAssetsWithOptions()->count(), 0U);
    EXPECT_EQ(assetNamed("a.jpg"), nullptr);
    EXPECT_EQ(lines, std::vector{failure});
    sqlite3_close(other);
    EXPECT_NE(assetNamed("a.jpg"), nullptr);
}

TEST_F(PhotoCatalogueTest, AFavouriteThatCannotBeStoredIsLoggedWhereNobodyAsks) {
    fill();
    const PHAssetPtr asset = assetNamed("a.jpg");
    tamper("PRAGMA user_version = 1000");
    reopen();
    PHPhotoLibrary::sharedPhotoLibrary().performChanges(
        [&asset] { PHAssetChangeRequest::changeRequestForAsset(*asset).setFavorite(false); }, nullptr);
    const auto error = PHPhotoLibrary::sharedPhotoLibrary().performChangesAndWait(
        [&asset] { PHAssetChangeRequest::changeRequestForAsset(*asset).setFavorite(false); });
    ASSERT_TRUE(error.has_value());
    EXPECT_EQ(lines, std::vector{error->localizedDescription});
}

TEST_F(PhotoCatalogueTest, TakesOverACatalogueAndABackupOfTheFirstVersion) {
    fill();
    reopen();
    tamper("ALTER TABLE folders DROP COLUMN is_mount_point; PRAGMA user_version = 1");
    const fs::path backup = file().parent_path() / "library-backup.sqlite";
    fs::copy_file(file(), backup, fs::copy_options::overwrite_existing);
    EXPECT_TRUE(assetNamed("a.jpg") && assetNamed("a.jpg")->isFavorite);
    {
        CatalogueWriter writer(catalogue());
        EXPECT_FALSE(writer.foldersOfRoot(root).front().isMountPoint);
        writer.markMountPoint(folder, true);
    }
    catalogue()->connections().writeBackup();
    fs::remove(file());
    reopen();
    EXPECT_TRUE(CatalogueWriter(catalogue()).foldersOfRoot(root).front().isMountPoint);
    EXPECT_EQ(lines, std::vector<std::string>());
}

TEST_F(PhotoCatalogueTest, TakesNoHarmFromHostileValues) {
    fill();
    tamper(
        "UPDATE assets SET media_type = 99, subtypes = -1, playback = -5, width = 9e18, height = -3, created = 1e300,"
        " modified = 'soon', duration = -1e308, located = 1, latitude = 1e9, longitude = 'x', burst = zeroblob(100),"
        " represents_burst = 1, uuid = hex(randomblob(500)), name = x'ff2e2e2f' WHERE id = 1;"
        "UPDATE files SET name = '../../etc/passwd', type = 1 WHERE asset = 1;"
        "UPDATE roots SET kind = 'nobody' WHERE id = 2;");
    reopen();
    const auto result = PHAsset::fetchAssetsWithOptions();
    ASSERT_EQ(result->count(), 2U);
    for (const PHAssetPtr& asset : result->objectsInRange(0, 2)) {
        EXPECT_LE(asset->localIdentifier.size(), 80U);
        EXPECT_GE(asset->duration, 0);
        for (const PHAssetResource& resource : PHAssetResource::assetResourcesForAsset(*asset)) {
            EXPECT_EQ(resource.originalFilename, "b.jpg");
        }
    }
}

TEST_F(PhotoCatalogueTest, KnowsFilesByPlaceAndContentAndKeepsVanishedOnes) {
    CatalogueWriter writer(catalogue());
    auto asset = photo("\xff.jpg");
    asset.title = "A title";
    asset.rating = -1;
    asset.files.front().stamp = {.sizeInBytes = 5, .modified = 6, .changed = 7, .inode = 8};
    asset.files.front().quickFingerprint = -9;
    asset.files.front().contentIdentifier = "pair";
    const std::int64_t number = writer.storeAsset(asset);
    const auto known = writer.fileInFolder(folder, "\xff.jpg");
    ASSERT_TRUE(known.has_value());
    EXPECT_EQ(known->stamp, asset.files.front().stamp);
    EXPECT_EQ(known->asset, number);
    EXPECT_FALSE(known->isVanished);
    EXPECT_EQ(writer.filesWithQuickFingerprint(-9).size(), 1U);
    EXPECT_EQ(writer.filesWithQuickFingerprint(0).size(), 0U);
    EXPECT_EQ(writer.filesWithContentIdentifier(folder, "pair").size(), 1U);
    EXPECT_EQ(writer.asset(number)->title, "A title");
    EXPECT_EQ(writer.asset(number)->rating, -1);
    EXPECT_EQ(writer.asset(77), std::nullopt);

    writer.markVanished(std::vector{number});
    writer.commit();
    EXPECT_EQ(PHAsset::fetchAssetsWithOptions()->count(), 0U);
    EXPECT_TRUE(writer.filesInFolder(folder).front().isVanished);
    EXPECT_EQ(writer.storeAsset(asset), number) << "it is back";
    // A renamed file is the same asset.
    auto moved = *writer.fileInFolder(folder, "\xff.jpg");
    moved.folder = writer.storeFolder(root, "sub");
    moved.name = "new.jpg";
    writer.storeFile(moved);
    writer.commit();
    EXPECT_EQ(names(PHAsset::fetchAssetsWithOptions()), "new.jpg");
    EXPECT_NE(assetNamed("new.jpg"), nullptr);
    writer.removeRoot(root);
    writer.commit();
    EXPECT_EQ(PHAsset::fetchAssetsWithOptions()->count(), 0U);
    EXPECT_EQ(writer.error(), std::nullopt);
}

TEST_F(PhotoCatalogueTest, LetsAnotherPictureStandForABurst) {
    CatalogueWriter writer(catalogue());
    std::vector<std::int64_t> numbers;
    for (const std::string name : {"1.jpg", "2.jpg", "3.jpg"}) {
        numbers.push_back(
            writer.storeAsset(photo(name, {.burstIdentifier = "b", .representsBurst = name == "1.jpg"})));
    }
    struct Case {
        std::vector<std::int64_t> vanished;
        const char* shown;
    };
    const Case cases[] = {{{numbers[2]}, "1.jpg"}, {{numbers[0]}, "2.jpg"}, {{numbers[1]}, ""}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.shown);
        writer.markVanished(c.vanished);
        writer.commit();
        EXPECT_EQ(names(PHAsset::fetchAssetsWithOptions()), c.shown);
    }
    // The one that comes back in its place stands for nothing any more.
    EXPECT_FALSE(writer.asset(numbers[0])->properties.representsBurst);
}

TEST_F(PhotoCatalogueTest, CommitsWholeBatches) {
    CatalogueWriter writer(catalogue());
    for (std::size_t index = 0; index < CatalogueWriter::kChangesATransaction + 1; ++index) {
        writer.storeAsset(photo(std::to_string(index)));
    }
    EXPECT_EQ(PHAsset::fetchAssetsWithOptions()->count(), CatalogueWriter::kChangesATransaction);
    writer.commit();
    EXPECT_EQ(PHAsset::fetchAssetsWithOptions()->count(), CatalogueWriter::kChangesATransaction + 1);
}

TEST(ListDifferenceTest, TurnsOneListIntoTheOther) {
    std::mt19937 random(1); // NOLINT(cert-msc51-cpp): the same lists each time.
    for (int round = 0; round < 300; ++round) {
        std::vector<std::int64_t> all(1 + random() % 12);
        std::iota(all.begin(), all.end(), 1);
        const auto pick = [&all, &random] {
            std::vector<std::int64_t> chosen = all;
            std::shuffle(chosen.begin(), chosen.end(), random);
            chosen.resize(random() % (all.size() + 1));
            return chosen;
        };
        auto list = pick();
        const auto wanted = pick();
        NumberList before;
        NumberList after;
        std::ranges::for_each(list, [&before](std::int64_t n) { before.append(n); });
        std::ranges::for_each(wanted, [&after](std::int64_t n) { after.append(n); });
        const auto difference = differenceOfLists(before, after);
        ASSERT_TRUE(difference.has_value());
        for (auto index = difference->removed.rbegin(); index != difference->removed.rend(); ++index) {
            list.erase(list.begin() + static_cast<std::ptrdiff_t>(*index));
        }
        for (const std::size_t index : difference->inserted) {
            list.insert(list.begin() + static_cast<std::ptrdiff_t>(index), wanted[index]);
        }
        for (const auto& [from, to] : difference->moves) {
            const std::int64_t number = list.at(from);
            list.erase(list.begin() + static_cast<std::ptrdiff_t>(from));
            list.insert(list.begin() + static_cast<std::ptrdiff_t>(to), number);
        }
        ASSERT_EQ(list, wanted);
    }
}

} // namespace
} // namespace exifcard

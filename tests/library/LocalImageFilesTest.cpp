#include "library/LocalImageFiles.h"

#include "library/AssetLibrary.h"
#include "metadata/ExifInformation.h"
#include "platform/foundation/Dictionary.h"
#include "platform/foundation/Log.h"
#include "platform/photos/PHImageInfoKeys.h"
#include "platform/uivalues/UIDevice.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace exifcard {
namespace {

const CLLocation kPlace{.coordinate = {48.8584, 2.2945}};

class LocalImageFilesTest : public AssetLibrary {
protected:
    ~LocalImageFilesTest() override { setSystemVersion("13.0"); }

    /// Assets that differ in what the questions ask.
    void addSome() const {
        store("a", {.creationDate = Date{10}, .modificationDate = Date{30}, .location = kPlace});
        store("b", {.creationDate = Date{20}, .modificationDate = Date{10}, .isFavorite = true});
        store("c",
            {.creationDate = Date{30}, .modificationDate = Date{10}, .location = kPlace, .isFavorite = true});
        auto movie = photo("d", {.mediaType = PHAssetMediaType::Video, .creationDate = Date{40}});
        movie.files.front().type = PHAssetResourceType::Video;
        store(movie);
        store("e", {.mediaType = PHAssetMediaType::Audio, .creationDate = Date{50}, .isFavorite = true});
    }

    static std::string namesThat(const PredicatePtr& predicate) {
        PHFetchOptions options;
        options.predicate = predicate;
        return names(PHAsset::fetchAssetsWithOptions(options));
    }

    static std::string nameOrNone(const PHAssetPtr& asset) { return asset ? nameOf(*asset) : ""; }
};

TEST_F(LocalImageFilesTest, ThePredicateFollowsTheLocationFilter) {
    addSome();
    struct Case {
        std::uint64_t filter;
        bool favoritesOnly;
        bool isThere;
        std::string names;
    };
    const Case cases[] = {
        {0, false, false, "a b c d e"},
        {0, true, true, "b c"},
        {1, false, true, "a c"},
        {1, true, true, "c"},
        {2, false, true, "b d"},
        {2, true, true, "b"},
        {3, false, false, "a b c d e"},
        {3, true, false, "a b c d e"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.filter << c.favoritesOnly);
        PersistanceManager::sharedInstance().setLocationFilter(c.filter);
        const auto predicate = LocalImageFiles::predicateWithFavoritesOnly(c.favoritesOnly);
        EXPECT_EQ(predicate != nullptr, c.isThere);
        EXPECT_EQ(namesThat(predicate), c.names);
    }
}

TEST_F(LocalImageFilesTest, TheWholeLibraryIsSortedByTheChosenDate) {
    addSome();
    PersistanceManager::sharedInstance().setLocationFilter(1); // Does not count here.
    struct Case {
        bool favoritesOnly;
        std::uint64_t sortBy;
        bool ascending;
        std::string names;
    };
    const Case cases[] = {
        {false, 0, true, "a b c d e"},
        {false, 2, false, "e d c b a"},
        {false, 1, true, "d e b c a"},
        {false, 1, false, "a c b e d"},
        {true, 0, false, "c b"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.names);
        std::optional<std::string> found;
        LocalImageFiles::getPHFetchResultFromPhotosSource(1, 7, c.favoritesOnly, c.sortBy, c.ascending,
            [&found](const auto& result) { found = names(result); });
        EXPECT_EQ(found, c.names);
    }
}

TEST_F(LocalImageFilesTest, AnAlbumIsSortedAndCutToItsFavorites) {
    addSome();
    const auto albums = LocalImageFiles::getCameraRollAssetCollection();
    ASSERT_EQ(albums.size(), 1U);
    EXPECT_EQ(albums.front()->assetCollectionSubtype, PHAssetCollectionSubtype::SmartAlbumUserLibrary);
    for (const bool favoritesOnly : {false, true}) {
        std::optional<std::string> found;
        LocalImageFiles::getPHFetchResultFromPHAssetCollection(*albums.front(), favoritesOnly,
            /*ascending=*/false, [&found](const auto& result) { found = names(result); });
        EXPECT_EQ(found, favoritesOnly ? "e c b" : "e d c b a");
    }
}

TEST_F(LocalImageFilesTest, ALibraryThatMayNotBeReadIsEmpty) {
    addSome();
    PHPhotoLibrary::setAuthorization(PHAuthorizationStatus::Denied);
    EXPECT_TRUE(LocalImageFiles::getCameraRollAssetCollection().empty());
    EXPECT_EQ(LocalImageFiles::assetWithCreationDate(Date{10}), nullptr);
    std::optional<std::size_t> count;
    LocalImageFiles::getPHFetchResultFromPhotosSource(
        1, 7, false, 0, true, [&count](const auto& result) { count = result->count(); });
    EXPECT_EQ(count, 0U);
    LocalImageFiles::allAlbumsFromPhotosSource(
        2, 209, [&count](const auto& albums) { count = albums.size() + 1; });
    EXPECT_EQ(count, 1U);
}

TEST_F(LocalImageFilesTest, FindsAlbumsOfTheirKind) {
    addSome();
    std::vector<PHAssetCollectionPtr> found;
    LocalImageFiles::allAlbumsFromPhotosSource(2, 203, [&found](const auto& albums) { found = albums; });
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found.front()->assetCollectionSubtype, PHAssetCollectionSubtype::SmartAlbumFavorites);
}

TEST_F(LocalImageFilesTest, FindsWhatWasCreatedLessThanASecondApart) {
    for (const auto& [name, date] : {std::pair("a", 99.0), std::pair("b", 99.5), std::pair("c", 100.0),
             std::pair("d", 100.5), std::pair("e", 101.0)}) {
        store(name, {.creationDate = Date{date}});
    }
    EXPECT_EQ(namesInOrder(*LocalImageFiles::assetsWithCreationDate(Date{100})), "b c d");
    EXPECT_EQ(nameOrNone(LocalImageFiles::assetWithCreationDate(Date{100})), "d");
    EXPECT_EQ(LocalImageFiles::assetWithCreationDate(Date{200}), nullptr);
    EXPECT_EQ(LocalImageFiles::assetWithCreationDate(std::nullopt), nullptr);
    EXPECT_EQ(LocalImageFiles::assetsWithCreationDate(std::nullopt), std::nullopt);
}

TEST_F(LocalImageFilesTest, TellsInDebugLinesWhatWasCreatedThen) {
    store("a", {.creationDate = Date{100}});
    std::vector<std::string> lines;
    setDebugLogTarget(LogTarget::StandardError);
    captureLog([&lines](std::string_view line) { lines.emplace_back(line); });
    const auto asset = LocalImageFiles::assetWithCreationDate(Date{100.5});
    const std::vector<std::string> linesOfOne = std::exchange(lines, {});
    LocalImageFiles::assetsWithCreationDate(Date{100});
    captureLog({});
    setDebugLogTarget(LogTarget::Nowhere);
    ASSERT_NE(asset, nullptr);
    std::string found = "ASSET_LOCAL_ID ";
    found += asset->localIdentifier;
    EXPECT_EQ(linesOfOne, std::vector{found});
    EXPECT_EQ(lines, (std::vector<std::string>{"__ 1970-01-01 00:01:40 +0000 and 1",
                         "1970-01-01 00:01:39 +0000 and 1970-01-01 00:01:41 +0000"}));
}

TEST_F(LocalImageFilesTest, FindsAnAssetByPartOfItsIdentifier) {
    addSome();
    const std::string identifier = assetNamed("a")->localIdentifier;
    const auto found = [](const std::string& part) {
        return nameOrNone(LocalImageFiles::assetWithPartialLocalIdentifier(part));
    };
    EXPECT_EQ(found(identifier), "a");
    EXPECT_EQ(found(identifier.substr(0, identifier.find('/'))), "a");
    EXPECT_EQ(found(identifier.substr(0, 20)), "");  // Four groups.
    EXPECT_EQ(found("----------"), "");              // 10 characters.
    EXPECT_EQ(found("-----------------------"), ""); // Long enough, but no such asset.
}

TEST_F(LocalImageFilesTest, NamesTheFileOfAnAsset) {
    addSome();
    const auto info = Dictionary::make({{kPHImageFileURLKey.data(), "file:///x/from%20info.jpg"}});
    const auto other = std::make_shared<PHAsset>(PHAsset{.localIdentifier = "unknown"});
    EXPECT_EQ(LocalImageFiles::fileNameForPHAsset(assetNamed("a"), info), "a");
    EXPECT_EQ(LocalImageFiles::fileNameForPHAsset(assetNamed("d"), info), "d");
    EXPECT_EQ(LocalImageFiles::fileNameForPHAsset(other, info), "from%20info.jpg");
    EXPECT_EQ(LocalImageFiles::fileNameForPHAsset(nullptr, info), "from%20info.jpg");
    EXPECT_EQ(LocalImageFiles::fileNameForPHAsset(nullptr, nullptr), std::nullopt);
    setSystemVersion("8.4");
    EXPECT_EQ(LocalImageFiles::fileNameForPHAsset(assetNamed("a"), info), "from%20info.jpg");
}

TEST_F(LocalImageFilesTest, ReadsTheRecordOfAnIdentifier) {
    const auto asset = add("canon-40d-northwest-rating5.jpg");
    EXPECT_EQ(LocalImageFiles::exifInfoOfPHAssetWithID(asset->localIdentifier)->cameraModel, "Canon EOS 40D");
    EXPECT_EQ(LocalImageFiles::exifInfoOfPHAssetWithID("none"), nullptr);
}

} // namespace
} // namespace exifcard

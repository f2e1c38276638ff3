#include "platform/foundation/FilePaths.h"
#include "platform/foundation/PlatformException.h"
#include "platform/foundation/Predicate.h"
#include "platform/photos/Library.h"
#include "platform/photos/PHAssetChangeRequest.h"
#include "platform/photos/PHAssetCollectionChangeRequest.h"
#include "platform/photos/PHChange.h"
#include "support/ChildProcess.h"

#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <mutex>

namespace exifcard {
namespace {

class Observer final : public PHPhotoLibraryChangeObserver {
public:
    explicit Observer(PHAssetFetchResultPtr result) : _result(std::move(result)) {}

    void photoLibraryDidChange(const PHChange& change) override {
        const std::scoped_lock lock(_mutex);
        if (auto details = change.changeDetailsForFetchResult(_result)) {
            _result = details->fetchResultAfterChanges;
            _details.push_back(std::move(*details));
            _told.notify_all();
        }
    }
    /// Waits until the result has come to hold so many.
    std::vector<PHAssetChangeDetails> detailsUntilCount(std::size_t count) {
        std::unique_lock lock(_mutex);
        _told.wait(lock, [this, count] { return _result->count() == count; });
        return std::exchange(_details, {});
    }

private:
    std::mutex _mutex;
    std::condition_variable _told;
    PHAssetFetchResultPtr _result;              // Guarded by _mutex.
    std::vector<PHAssetChangeDetails> _details; // Guarded by _mutex.
};

class PHPhotoLibraryTest : public Library {
protected:
    static std::optional<PHError> perform(const std::function<void()>& changes) {
        return PHPhotoLibrary::sharedPhotoLibrary().performChangesAndWait(changes);
    }
    static PHAssetCollectionPtr albumTitled(const std::string& title) {
        PHFetchOptions options;
        options.predicate = Predicate::predicateWithFormat("title = %@", {title});
        return PHAssetCollection::fetchAssetCollectionsWithType(
            PHAssetCollectionType::Album, PHAssetCollectionSubtype::Any, options)
            ->firstObject();
    }
    static std::string contents(const std::string& album) {
        return names(PHAsset::fetchAssetsInAssetCollection(*albumTitled(album)));
    }
    static PHChange change() { return PHChange(catalogue()); }
};

TEST_F(PHPhotoLibraryTest, ChangesAssetsAllTogetherOrNotAtAll) {
    store("a.jpg", {.modificationDate = Date{5}});
    store("b.jpg");
    const auto asset = assetNamed("a.jpg");
    ASSERT_EQ(perform([&asset] { PHAssetChangeRequest::changeRequestForAsset(*asset).setFavorite(true); }),
        std::nullopt);
    EXPECT_TRUE(assetNamed("a.jpg")->isFavorite);
    EXPECT_GT(assetNamed("a.jpg")->modificationDate, Date{5});
    EXPECT_FALSE(asset->isFavorite) << "an asset is a snapshot";

    const auto error = perform([] {
        PHAssetChangeRequest::changeRequestForAsset(*assetNamed("b.jpg")).setFavorite(true);
        PHAssetChangeRequest::changeRequestForAsset(PHAsset{.localIdentifier = "none/L0/001"})
            .setFavorite(true);
    });
    ASSERT_TRUE(error.has_value());
    EXPECT_EQ(error->code, PHErrorCode::IdentifierNotFound);
    EXPECT_FALSE(assetNamed("b.jpg")->isFavorite);

    EXPECT_THROW(PHAssetChangeRequest::changeRequestForAsset(*asset), PlatformException);
    EXPECT_THROW(
        PHAssetCollectionChangeRequest::creationRequestForAssetCollectionWithTitle("x"), PlatformException);
    PHPhotoLibrary::setAuthorization(PHAuthorizationStatus::Denied);
    EXPECT_EQ(perform([] {})->code, PHErrorCode::AccessUserDenied);
}

TEST_F(PHPhotoLibraryTest, KeepsWhatTheUserSetWhenAFileIsReadAgain) {
    const std::int64_t number =
        store("a.jpg", {.creationDate = Date{5}, .location = CLLocation{.coordinate = {1, 2}}});
    ASSERT_EQ(perform([] {
        auto request = PHAssetChangeRequest::changeRequestForAsset(*assetNamed("a.jpg"));
        request.setCreationDate(Date{77});
        request.setLocation(std::nullopt);
        request.setFavorite(true);
    }),
        std::nullopt);
    auto again = photo(
        "a.jpg", {.pixelWidth = 9, .creationDate = Date{6}, .location = CLLocation{.coordinate = {3, 4}}});
    again.number = number;
    store(again);
    const auto asset = assetNamed("a.jpg");
    EXPECT_EQ(asset->pixelWidth, 9);
    EXPECT_EQ(asset->creationDate, Date{77});
    EXPECT_EQ(asset->location, std::nullopt);
    EXPECT_TRUE(asset->isFavorite);
}

TEST_F(PHPhotoLibraryTest, KeepsAlbumsInTheOrderOfTheUser) {
    for (const char* const name : {"a", "b", "c", "d"}) {
        store(name);
    }
    std::string identifier;
    ASSERT_EQ(perform([&identifier] {
        auto album = PHAssetCollectionChangeRequest::creationRequestForAssetCollectionWithTitle("Trip");
        identifier = album.placeholderForCreatedAssetCollection().localIdentifier;
        album.addAssets(std::vector{assetNamed("c"), assetNamed("a")});
        PHAssetCollectionChangeRequest::creationRequestForAssetCollectionWithTitle("Alps");
    }),
        std::nullopt);
    EXPECT_EQ(albumTitled("Trip")->localIdentifier, identifier);
    EXPECT_TRUE(identifier.ends_with("/L0/040"));
    EXPECT_EQ(contents("Trip"), "c a");
    const auto edit = [](const std::function<void(PHAssetCollectionChangeRequest&)>& steps) {
        return perform([&steps] {
            const auto album = albumTitled("Trip");
            auto request = PHAssetCollectionChangeRequest::changeRequestForAssetCollection(
                *album, PHAsset::fetchAssetsInAssetCollection(*album));
            steps(request);
        });
    };
    EXPECT_EQ(edit([](auto& album) {
        album.addAssets(std::vector{assetNamed("a"), assetNamed("d"), assetNamed("d")});
    }),
        std::nullopt);
    EXPECT_EQ(contents("Trip"), "c a d");
    EXPECT_EQ(edit([](auto& album) { album.insertAssets(std::vector{assetNamed("b")}, 1); }), std::nullopt);
    EXPECT_EQ(contents("Trip"), "c b a d");
    EXPECT_EQ(albumTitled("Trip")->estimatedAssetCount, 4);
    EXPECT_EQ(edit([](auto& album) {
        album.removeAssetsAtIndexes(std::vector<std::size_t>{0, 2});
    }),
        std::nullopt);
    EXPECT_EQ(contents("Trip"), "b d");
    EXPECT_EQ(edit([](auto& album) { album.removeAssetsAtIndexes(std::vector<std::size_t>{2}); })->code,
        PHErrorCode::ChangeNotSupported);
    EXPECT_EQ(PHAssetCollection::fetchAssetCollectionsContainingAsset(
                  *assetNamed("b"), PHAssetCollectionType::Album)
                  ->firstObject()
                  ->localizedTitle,
        "Trip");
    EXPECT_EQ(PHAssetCollection::fetchAssetCollectionsContainingAsset(
                  *assetNamed("b"), PHAssetCollectionType::SmartAlbum)
                  ->count(),
        0U);
    EXPECT_EQ(perform([] {
        PHAssetCollectionChangeRequest::deleteAssetCollections(std::vector{albumTitled("Alps")});
    }),
        std::nullopt);
    EXPECT_EQ(albumTitled("Alps"), nullptr);
    EXPECT_EQ(PHAsset::fetchAssetsWithOptions()->count(), 4U);
}

TEST_F(PHPhotoLibraryTest, AnswersTheSmartAlbumsAndThoseOfFolders) {
    using Subtype = PHAssetCollectionSubtype;
    CatalogueWriter writer(catalogue());
    auto raw = photo("raw.dng", {.creationDate = Date{4}});
    raw.traits = kAssetTraitRAW;
    writer.storeAsset(raw);
    writer.storeAsset(
        photo("live.heic", {.mediaSubtypes = kPHAssetMediaSubtypePhotoLive, .creationDate = Date{1}}));
    writer.storeAsset(photo(
        "both.heic", {.mediaSubtypes = kPHAssetMediaSubtypePhotoLive | kPHAssetMediaSubtypePhotoPanorama,
                         .creationDate = Date{2},
                         .isFavorite = true}));
    writer.storeAsset(
        photo("gif.gif", {.creationDate = Date{3}, .playbackStyle = PHAssetPlaybackStyle::ImageAnimated}));
    writer.storeAsset(photo("slow.mov", {.mediaType = PHAssetMediaType::Video,
                                            .mediaSubtypes = kPHAssetMediaSubtypeVideoHighFrameRate,
                                            .creationDate = Date{5}}));
    writer.storeAsset(photo("hidden.jpg", {.isHidden = true}));
    writer.showFolderAsAlbum(folder, "Pictures");
    writer.showFolderAsAlbum(folder, "Photos");
    writer.commit();
    struct Case {
        Subtype subtype;
        std::string_view names;
    };
    const Case cases[] = {
        {Subtype::SmartAlbumUserLibrary, "live.heic both.heic gif.gif raw.dng slow.mov"},
        {Subtype::SmartAlbumFavorites, "both.heic"},
        {Subtype::SmartAlbumVideos, "slow.mov"},
        {Subtype::SmartAlbumSlomoVideos, "slow.mov"},
        {Subtype::SmartAlbumTimelapses, ""},
        {Subtype::SmartAlbumLivePhotos, "live.heic both.heic"},
        {Subtype::SmartAlbumPanoramas, "both.heic"},
        {Subtype::SmartAlbumAnimated, "gif.gif"},
        {Subtype::SmartAlbumRAW, "raw.dng"},
        {Subtype::SmartAlbumAllHidden, "hidden.jpg"},
        {Subtype::SmartAlbumRecentlyAdded, "raw.dng live.heic both.heic gif.gif slow.mov"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(static_cast<std::int64_t>(c.subtype));
        const auto albums =
            PHAssetCollection::fetchAssetCollectionsWithType(PHAssetCollectionType::SmartAlbum, c.subtype);
        ASSERT_EQ(albums->count(), 1U);
        EXPECT_EQ(names(PHAsset::fetchAssetsInAssetCollection(*albums->firstObject())), c.names);
        EXPECT_EQ(albums->firstObject()->estimatedAssetCount, kPHCollectionCountNotFound);
        const std::string identifiers[] = {albums->firstObject()->localIdentifier};
        EXPECT_EQ(PHAssetCollection::fetchAssetCollectionsWithLocalIdentifiers(identifiers)
                      ->firstObject()
                      ->assetCollectionSubtype,
            c.subtype);
    }
    const auto folders = PHAssetCollection::fetchAssetCollectionsWithType(
        PHAssetCollectionType::Album, Subtype::AlbumSyncedAlbum);
    ASSERT_EQ(folders->count(), 1U);
    const auto album = folders->firstObject();
    EXPECT_EQ(album->localizedTitle, "Photos");
    EXPECT_EQ(album->estimatedAssetCount, 5);
    EXPECT_EQ(album->startDate, Date{1});
    EXPECT_EQ(album->endDate, Date{5});
    EXPECT_EQ(
        names(PHAsset::fetchAssetsInAssetCollection(*album)), "live.heic both.heic gif.gif raw.dng slow.mov");
    EXPECT_EQ(names(PHAsset::fetchKeyAssetsInAssetCollection(*album)), "slow.mov raw.dng gif.gif");
    EXPECT_EQ(perform([&album] {
        PHAssetCollectionChangeRequest::changeRequestForAssetCollection(*album).setTitle("x");
    })->code,
        PHErrorCode::ChangeNotSupported);
    EXPECT_EQ(
        PHAsset::fetchKeyAssetsInAssetCollection(PHAssetCollection{.localIdentifier = "none"}), nullptr);
}

TEST_F(PHPhotoLibraryTest, TellsTheDetailsOfAChange) {
    for (int index = 0; index < 6; ++index) {
        store(std::string(1, static_cast<char>('a' + index)), {.creationDate = Date{index * 10.0}});
    }
    const auto before = PHAsset::fetchAssetsWithOptions();
    PHFetchOptions coarse;
    coarse.wantsIncrementalChangeDetails = false;
    const auto coarseBefore = PHAsset::fetchAssetsWithOptions(coarse);
    EXPECT_EQ(change().changeDetailsForFetchResult(before), std::nullopt);

    store("new", {.creationDate = Date{15}});
    ASSERT_EQ(perform([] {
        PHAssetChangeRequest::changeRequestForAsset(*assetNamed("d")).setFavorite(true);
        PHAssetChangeRequest::deleteAssets(std::vector{assetNamed("a"), assetNamed("e")});
        PHAssetChangeRequest::changeRequestForAsset(*assetNamed("f")).setCreationDate(Date{5});
    }),
        std::nullopt);
    const auto details = change().changeDetailsForFetchResult(before);
    ASSERT_TRUE(details.has_value());
    EXPECT_EQ(names(details->fetchResultBeforeChanges), "a b c d e f");
    EXPECT_EQ(names(details->fetchResultAfterChanges), "f b new c d");
    EXPECT_TRUE(details->hasIncrementalChanges);
    EXPECT_EQ(details->removedIndexes, (std::vector<std::size_t>{0, 4}));
    EXPECT_EQ(details->insertedIndexes, (std::vector<std::size_t>{2}));
    EXPECT_EQ(details->changedIndexes, (std::vector<std::size_t>{0, 4}));
    EXPECT_EQ(namesInOrder(details->insertedObjects), "new");
    EXPECT_EQ(namesInOrder(details->removedObjects), "a e");
    EXPECT_EQ(namesInOrder(details->changedObjects), "f d");
    EXPECT_EQ(details->moves, (std::vector<PHAssetChangeDetails::Move>{{4, 0}, {2, 3}}));
    EXPECT_EQ(change().changeDetailsForFetchResult(details->fetchResultAfterChanges), std::nullopt);

    const auto coarseDetails = change().changeDetailsForFetchResult(coarseBefore);
    ASSERT_TRUE(coarseDetails.has_value());
    EXPECT_FALSE(coarseDetails->hasIncrementalChanges);

    const auto albums = PHAssetCollection::fetchAssetCollectionsWithType(
        PHAssetCollectionType::Album, PHAssetCollectionSubtype::Any);
    ASSERT_EQ(
        perform([] { PHAssetCollectionChangeRequest::creationRequestForAssetCollectionWithTitle("A"); }),
        std::nullopt);
    EXPECT_EQ(change().changeDetailsForFetchResult(details->fetchResultAfterChanges), std::nullopt)
        << "only albums changed";
    const auto albumDetails = change().changeDetailsForFetchResult(albums);
    ASSERT_TRUE(albumDetails.has_value());
    EXPECT_EQ(albumDetails->insertedIndexes, (std::vector<std::size_t>{0}));
}

TEST_F(PHPhotoLibraryTest, TellsObserversWhatThisProgramAndOthersChange) {
    // The other program waits until it is let go.
    int gate[2];
    ASSERT_EQ(pipe(gate), 0);
    ChildProcess other([&gate, this] {
        char signal = 0;
        return read(gate[0], &signal, 1) == 1 &&
               CatalogueWriter(PhotoCatalogue::inFolder(dataFolder())).storeAsset(photo("other")) != 0;
    });
    const auto observer = std::make_shared<Observer>(PHAsset::fetchAssetsWithOptions());
    auto& library = PHPhotoLibrary::sharedPhotoLibrary();
    library.registerChangeObserver(observer);
    store("own");
    const auto own = observer->detailsUntilCount(1);
    ASSERT_EQ(own.size(), 1U);
    EXPECT_EQ(namesInOrder(own.front().insertedObjects), "own");
    ASSERT_EQ(write(gate[1], "!", 1), 1);
    EXPECT_EQ(namesInOrder(observer->detailsUntilCount(2).back().insertedObjects), "other");
    EXPECT_TRUE(other.succeeded());
    library.unregisterChangeObserver(*observer);
    close(gate[0]);
    close(gate[1]);
}

TEST_F(PHPhotoLibraryTest, AsksOnceAndRemembersTheAnswer) {
    PHPhotoLibrary::setAuthorization(PHAuthorizationStatus::NotDetermined);
    std::atomic<int> asked = 0;
    PHPhotoLibrary::setAuthorizationQuestion([&asked] {
        ++asked;
        return PHAuthorizationStatus::Denied;
    });
    for (int time = 0; time < 2; ++time) {
        std::atomic<int> status = -1;
        PHPhotoLibrary::requestAuthorization(
            [&status](PHAuthorizationStatus answer) { status = static_cast<int>(answer); });
        while (status < 0) {}
        EXPECT_EQ(status, 2);
    }
    EXPECT_EQ(asked, 1);
    PHPhotoLibrary::setAuthorizationQuestion({});
}

} // namespace
} // namespace exifcard

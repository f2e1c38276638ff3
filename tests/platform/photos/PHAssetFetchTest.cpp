#include "platform/foundation/Array.h"
#include "platform/foundation/PlatformException.h"
#include "platform/foundation/Predicate.h"
#include "platform/photos/Library.h"
#include "platform/photos/PHAssetChangeRequest.h"

#include <gtest/gtest.h>

namespace exifcard {
namespace {

PHFetchOptions withPredicate(std::string_view format, const std::vector<Value>& arguments = {}) {
    PHFetchOptions options;
    options.predicate = Predicate::predicateWithFormat(format, arguments);
    return options;
}

/// Five assets that differ in what can be asked for.
class PHAssetFetchTest : public Library {
protected:
    PHAssetFetchTest() {
        store("a.jpg", {.pixelWidth = 4000,
                           .pixelHeight = 3000,
                           .creationDate = Date{100.25},
                           .modificationDate = Date{9}});
        store("b.mov", {.mediaType = PHAssetMediaType::Video,
                           .creationDate = Date{300},
                           .modificationDate = Date{5},
                           .duration = 12.5});
        store("C.jpg", {.mediaSubtypes = kPHAssetMediaSubtypePhotoScreenshot,
                           .creationDate = Date{200},
                           .modificationDate = Date{7},
                           .location = CLLocation{.coordinate = {48.5, 2.25}}});
        store("d.jpg", {.creationDate = Date{200}, .modificationDate = Date{8}, .isFavorite = true});
        auto undated = photo("é 1.jpg", {.burstIdentifier = "burst", .representsBurst = true});
        undated.title = "Élan vital";
        undated.rating = 4;
        store(undated);
    }
};

TEST_F(PHAssetFetchTest, SortsByEveryDescriptorInTurnWithAbsentValuesSmallest) {
    struct Case {
        std::vector<SortDescriptor> order;
        std::string_view names;
    };
    const Case cases[] = {
        {{}, "é 1.jpg a.jpg C.jpg d.jpg b.mov"},
        {{{"creationDate", true}, {"modificationDate", true}}, "é 1.jpg a.jpg C.jpg d.jpg b.mov"},
        {{{"creationDate", false}, {"modificationDate", false}}, "b.mov d.jpg C.jpg a.jpg é 1.jpg"},
        {{{"modificationDate", false}, {"creationDate", false}}, "a.jpg d.jpg C.jpg b.mov é 1.jpg"},
        {{{"creationDate", true}, {"modificationDate", false}}, "é 1.jpg a.jpg d.jpg C.jpg b.mov"},
        {{{"filename", true}}, "C.jpg a.jpg b.mov d.jpg é 1.jpg"},
        {{{"favorite", false}, {"duration", false}, {"pixelWidth", false}, {"filename", true}},
            "d.jpg b.mov a.jpg C.jpg é 1.jpg"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.names);
        PHFetchOptions options;
        options.sortDescriptors = c.order;
        EXPECT_EQ(names(PHAsset::fetchAssetsWithOptions(options)), c.names);
    }
}

TEST_F(PHAssetFetchTest, AnswersPredicates) {
    struct Case {
        std::string_view format;
        std::vector<Value> arguments;
        std::string_view names;
    };
    const Case cases[] = {
        {"favorite = YES && (mediaType == %d || mediaType == %d)", {1, 2}, "d.jpg"},
        {"location != NULL && (mediaType == %d || mediaType == %d) ", {1, 2}, "C.jpg"},
        {"location == NULL && favorite = YES && (mediaType == %d || mediaType == %d)", {1, 2}, "d.jpg"},
        {"(creationDate > %@) AND (creationDate < %@)", {Date{99.25}, Date{101.25}}, "a.jpg"},
        {"(creationDate > %@) AND (creationDate < %@)", {Date{100.25}, Date{200}}, ""},
        {"creationDate = NULL", {}, "é 1.jpg"},
        {"NOT creationDate > %@", {Date{150}}, "é 1.jpg a.jpg"},
        {"creationDate != %@", {Date{200}}, "é 1.jpg a.jpg b.mov"},
        {"creationDate < 1000", {}, ""},
        {"creationDate != 200", {}, "é 1.jpg a.jpg C.jpg d.jpg b.mov"},
        {"creationDate BETWEEN %@", {Array::make({Date{200}, Date{300}})}, "C.jpg d.jpg b.mov"},
        {"200 > pixelWidth AND mediaType IN {1, 'x'}", {}, "é 1.jpg C.jpg d.jpg"},
        {"filename CONTAINS 'c'", {}, ""},
        {"filename CONTAINS[c] 'c'", {}, "C.jpg"},
        {"filename BEGINSWITH[cd] 'E'", {}, "é 1.jpg"},
        {"filename LIKE '?.mov' OR duration > 12", {}, "b.mov"},
        {"filename MATCHES '[ab]\\\\.(jpg|mov)'", {}, "a.jpg b.mov"},
        {"title ==[cd] 'elan VITAL' AND rating >= 4", {}, "é 1.jpg"},
        {"NOT title CONTAINS[d] 'Elan'", {}, "a.jpg C.jpg d.jpg b.mov"},
        {"mediaSubtypes = 4 AND latitude > 48", {}, "C.jpg"},
        {"burstIdentifier = 'burst'", {}, "é 1.jpg"},
        {"isHidden = YES", {}, ""},
        {"TRUEPREDICATE", {}, "é 1.jpg a.jpg C.jpg d.jpg b.mov"},
        {"FALSEPREDICATE", {}, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.format);
        EXPECT_EQ(names(PHAsset::fetchAssetsWithOptions(withPredicate(c.format, c.arguments))), c.names);
    }
}

TEST_F(PHAssetFetchTest, FindsByIdentifierAndItsParts) {
    const std::string identifier = assetNamed("d.jpg")->localIdentifier;
    EXPECT_TRUE(identifier.ends_with("/L0/001"));
    const std::string piece = identifier.substr(3, 20);
    const std::string uuid = identifier.substr(0, identifier.find('/'));
    struct Case {
        std::string_view format;
        Value argument;
        std::string_view names;
    };
    const Case cases[] = {
        {"localIdentifier = %@", identifier, "d.jpg"},
        {"localIdentifier = %@", uuid, ""},
        {"(localIdentifier contains %@)", piece, "d.jpg"},
        {"(localIdentifier contains %@)", uuid + "/L0", "d.jpg"},
        {"SELF IN %@", Array::make({identifier, "x"}), "d.jpg"},
        {"localIdentifier ENDSWITH '/L0/002'", {}, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.format);
        EXPECT_EQ(names(PHAsset::fetchAssetsWithOptions(withPredicate(c.format, {c.argument}))), c.names);
    }
    const std::string asked[] = {"nonsense", identifier, "\"]' OR 1 --/L0/001"};
    EXPECT_EQ(names(PHAsset::fetchAssetsWithLocalIdentifiers(asked)), "d.jpg");
}

TEST_F(PHAssetFetchTest, RaisesForWhatCannotBeAsked) {
    for (const std::string_view format :
        {"colour = 1", "location > 3", "location.latitude = 3", "5 = location"}) {
        SCOPED_TRACE(format);
        try {
            PHAsset::fetchAssetsWithOptions(withPredicate(format));
            ADD_FAILURE() << "it was not refused";
        } catch (const PlatformException& exception) {
            EXPECT_NE(std::string(exception.what()).find("Unsupported predicate in fetch options"),
                std::string::npos);
        }
    }
    PHFetchOptions options;
    options.sortDescriptors = {{"location", true}};
    EXPECT_THROW(PHAsset::fetchAssetsWithOptions(options), PlatformException);
}

TEST_F(PHAssetFetchTest, ShowsHiddenAssetsBurstsAndSourcesAsTheOptionsSay) {
    store("hidden.jpg", {.isHidden = true});
    store("burst2.jpg", {.burstIdentifier = "burst"});
    store("picked.jpg",
        {.burstIdentifier = "burst", .burstSelectionTypes = kPHAssetBurstSelectionTypeUserPick});
    store("trashed.jpg");
    const auto trashed = assetNamed("trashed.jpg");
    ASSERT_EQ(PHPhotoLibrary::sharedPhotoLibrary().performChangesAndWait(
                  [&trashed] { PHAssetChangeRequest::deleteAssets(std::vector{trashed}); }),
        std::nullopt);
    const auto count = [](const PHFetchOptions& options) {
        return PHAsset::fetchAssetsWithOptions(options)->count();
    };
    EXPECT_EQ(count({}), 6U);
    EXPECT_EQ(count({.includeHiddenAssets = true}), 7U);
    EXPECT_EQ(count({.includeAllBurstAssets = true}), 7U);
    EXPECT_EQ(count({.includeHiddenAssets = true, .includeAllBurstAssets = true}), 8U);
    EXPECT_EQ(count({.includeAssetSourceTypes = 5}), 6U);
    EXPECT_EQ(count({.includeAssetSourceTypes = 4}), 0U);
    EXPECT_EQ(count({.fetchLimit = 2}), 2U);
    EXPECT_EQ(PHAsset::fetchAssetsWithBurstIdentifier("burst", {.includeAllBurstAssets = true})->count(), 3U);
    const std::string hidden[] = {assetNamed("hidden.jpg")->localIdentifier};
    EXPECT_EQ(PHAsset::fetchAssetsWithLocalIdentifiers(hidden)->count(), 1U);
}

TEST_F(PHAssetFetchTest, KeepsWhatItIsWhileTheLibraryChanges) {
    const auto whole = PHAsset::fetchAssetsWithOptions();
    const auto partly = PHAsset::fetchAssetsWithOptions();
    EXPECT_EQ(whole->count(), 5U);
    EXPECT_EQ(partly->countUpTo(2), 2U);
    store("new.jpg", {.creationDate = Date{150}});
    CatalogueWriter(catalogue()).markVanished(std::vector<std::int64_t>{1, 2});
    EXPECT_EQ(names(whole), "é 1.jpg a.jpg C.jpg d.jpg b.mov");
    EXPECT_EQ(names(partly), names(whole));
    EXPECT_EQ(names(PHAsset::fetchAssetsWithOptions()), "é 1.jpg new.jpg C.jpg d.jpg");
}

TEST_F(PHAssetFetchTest, CountsAndFindsAndRaisesBeyondItsEnd) {
    const auto result = PHAsset::fetchAssetsWithOptions();
    EXPECT_EQ(result->countUpTo(3), 3U);
    EXPECT_EQ(nameOf(*result->objectAtIndex(4)), "b.mov");
    EXPECT_EQ(nameOf(*result->lastObject()), "b.mov");
    EXPECT_EQ(result->indexOfObject(*assetNamed("C.jpg")), 2U);
    EXPECT_FALSE(result->containsObject(PHAsset{.localIdentifier = "x"}));
    EXPECT_EQ(namesInOrder(result->objectsInRange(3, 2)), "d.jpg b.mov");
    EXPECT_TRUE(result->objectsInRange(5, 0).empty());
    constexpr std::size_t kMost = std::numeric_limits<std::size_t>::max();
    EXPECT_THROW(result->objectAtIndex(5), PlatformException);
    EXPECT_THROW(result->objectAtIndex(kMost), PlatformException);
    EXPECT_THROW(result->objectsInRange(4, 2), PlatformException);
    EXPECT_THROW(result->objectsInRange(2, kMost), PlatformException);
    EXPECT_EQ(PHAsset::fetchAssetsWithOptions(withPredicate("FALSEPREDICATE"))->firstObject(), nullptr);
}

TEST_F(PHAssetFetchTest, GivesBackWhatWasStored) {
    const CLLocation place{.coordinate = {-33.5, 151.25},
        .altitude = 35.5,
        .horizontalAccuracy = 5,
        .verticalAccuracy = 7,
        .course = 90,
        .speed = 1.5,
        .timestamp = Date{77}};
    const PHAsset stored{.mediaType = PHAssetMediaType::Video,
        .mediaSubtypes = 0x20000,
        .pixelWidth = 1920,
        .pixelHeight = 1080,
        .creationDate = Date{-5.5},
        .modificationDate = Date{6.25},
        .location = place,
        .duration = 3.5,
        .isFavorite = true,
        .playbackStyle = PHAssetPlaybackStyle::Video,
        .burstIdentifier = "b",
        .representsBurst = true,
        .burstSelectionTypes = 3};
    store("full.mov", stored);
    const auto fetched = assetNamed("full.mov");
    EXPECT_EQ(fetched->mediaType, stored.mediaType);
    EXPECT_EQ(fetched->mediaSubtypes, stored.mediaSubtypes);
    EXPECT_EQ(fetched->pixelWidth, stored.pixelWidth);
    EXPECT_EQ(fetched->pixelHeight, stored.pixelHeight);
    EXPECT_EQ(fetched->creationDate, stored.creationDate);
    EXPECT_EQ(fetched->modificationDate, stored.modificationDate);
    EXPECT_EQ(fetched->location, stored.location);
    EXPECT_EQ(fetched->duration, stored.duration);
    EXPECT_TRUE(fetched->isFavorite);
    EXPECT_FALSE(fetched->isHidden);
    EXPECT_EQ(fetched->playbackStyle, stored.playbackStyle);
    EXPECT_EQ(fetched->sourceType, kPHAssetSourceTypeUserLibrary);
    EXPECT_EQ(fetched->burstIdentifier, stored.burstIdentifier);
    EXPECT_TRUE(fetched->representsBurst);
    EXPECT_EQ(fetched->burstSelectionTypes, 3U);
}

TEST_F(PHAssetFetchTest, IsEmptyWhereTheUserDoesNotAllowMore) {
    CatalogueWriter writer(catalogue());
    auto inner = photo("inner.jpg");
    inner.files.front().folder = writer.storeFolder(root, "trip/day 1");
    writer.storeAsset(inner);
    auto sibling = photo("sibling.jpg");
    sibling.files.front().folder = writer.storeFolder(root, "tripod");
    writer.storeAsset(sibling);
    writer.commit();
    struct Case {
        PHAuthorizationStatus status;
        std::vector<std::string> folders;
        std::size_t count;
    };
    const Case cases[] = {
        {PHAuthorizationStatus::Authorized, {}, 7},
        {PHAuthorizationStatus::Denied, {}, 0},
        {PHAuthorizationStatus::Restricted, {}, 0},
        {PHAuthorizationStatus::NotDetermined, {}, 0},
        {PHAuthorizationStatus::Limited, {(photos / "trip").string()}, 1},
        {PHAuthorizationStatus::Limited, {photos.string()}, 7},
        {PHAuthorizationStatus::Limited, {}, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(static_cast<int>(c.status));
        PHPhotoLibrary::setAuthorization(c.status, c.folders);
        EXPECT_EQ(PHAsset::fetchAssetsWithOptions()->count(), c.count);
        const bool isReadable =
            c.status == PHAuthorizationStatus::Authorized || c.status == PHAuthorizationStatus::Limited;
        EXPECT_EQ(PHAssetCollection::fetchAssetCollectionsWithType(
                      PHAssetCollectionType::SmartAlbum, PHAssetCollectionSubtype::SmartAlbumUserLibrary)
                      ->count(),
            isReadable ? 1U : 0U);
    }
}

} // namespace
} // namespace exifcard

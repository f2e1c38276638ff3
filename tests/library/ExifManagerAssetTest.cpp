#include "library/AssetLibrary.h"
#include "library/QueueManager.h"
#include "metadata/ExifInformation.h"
#include "platform/foundation/Dictionary.h"
#include "platform/imageio/ImageProperties.h"
#include "platform/photos/PHAssetResource.h"
#include "platform/photos/PHAssetResourceManager.h"
#include "platform/photos/PHImageInfoKeys.h"

#include <gtest/gtest.h>

#include <future>
#include <tuple>
#include <vector>

namespace exifcard {
namespace {

/// A photo of a Canon EOS 40D, taken 2008-05-30 15:56:01, with a place in its metadata.
constexpr const char* kCanon = "canon-40d-northwest-rating5.jpg";
constexpr Date kLibraryDate{1500000000.5};
const CLLocation kLibraryPlace{.coordinate = {48.8584, 2.2945}};

class ExifManagerAssetTest : public AssetLibrary {
protected:
    /// Fraction, error and whether a download is under way, of every call.
    using Calls = std::vector<std::tuple<double, std::optional<PHErrorCode>, bool>>;

    ExifManager::AssetProgressHandler noting() {
        return [this](double progress, const auto& error, bool& stop, const auto&, bool isDownloading) {
            calls.emplace_back(progress, error ? std::optional(error->code) : std::nullopt, isDownloading);
            stop = progress == stopAt;
        };
    }

    /// An asset with a file of each type.
    PHAssetPtr addLivePhoto(std::uint64_t subtypes, const std::vector<PHAssetResourceType>& types) {
        const std::string name = "live" + std::to_string(++livePhotos);
        auto asset = photo(name, {.mediaSubtypes = subtypes});
        const CatalogueFile original = asset.files.front();
        asset.files.clear();
        for (const auto type : types) {
            CatalogueFile file = original;
            file.type = type;
            file.name += asset.files.empty() ? "" : "." + std::to_string(asset.files.size());
            std::filesystem::copy_file(
                std::filesystem::path(EXIFCARD_TEST_DATA) / kCanon, photos / file.name);
            asset.files.push_back(file);
        }
        store(asset);
        return assetNamed(name);
    }

    /// Waits until what was asked of resources before has been answered.
    static void awaitResources(const PHAsset& asset) {
        std::promise<void> answered;
        PHAssetResourceManager::defaultManager().requestDataForAssetResource(
            PHAssetResource::assetResourcesForAsset(asset).front(), {}, [](const Data&) {},
            [&answered](const auto&) { answered.set_value(); });
        answered.get_future().wait();
    }

    static ExifManager::Record forciblyCompleted(const ExifManager::Record& record) {
        std::promise<ExifManager::Record> complete;
        ExifManager::fetchCompleteExifInformationsFor(record, /*forceDownload=*/true,
            [&complete](const auto& fetched) { complete.set_value(fetched); });
        return complete.get_future().get();
    }

    /// The type of the bytes, as the library told it with them.
    static std::string typeIn(const ExifInformation& record) {
        const auto& info = record.cachedPHAssetInfoDictionary;
        return info ? info->objectForKey(kPHImageFileUTIKey).description() : "no info";
    }

    Calls calls;
    int livePhotos = 0;
    double stopAt = -1;
};

TEST_F(ExifManagerAssetTest, APhotoHereHasWhatItsFileAndTheLibraryTell) {
    const auto asset = add(kCanon, {.mediaSubtypes = kPHAssetMediaSubtypePhotoScreenshot,
                                       .creationDate = kLibraryDate,
                                       .location = kLibraryPlace});
    const auto record = ExifManager::exifInformationFromPHAssett(asset, noting());
    EXPECT_EQ(record->phAsset, asset);
    EXPECT_EQ(record->cameraModel, "Canon EOS 40D");
    EXPECT_TRUE(record->exifInfoAvailable);
    EXPECT_EQ(record->location, kLibraryPlace);
    EXPECT_EQ(record->dateTaken, kLibraryDate);
    EXPECT_EQ(record->dateCreated, std::nullopt);
    EXPECT_EQ(
        record->fileSizeInBytes, static_cast<std::int64_t>(std::filesystem::file_size(photos / kCanon)));
    EXPECT_FALSE(record->imageResultIsInCloud);
    EXPECT_TRUE(record->isScreenShot);
    EXPECT_FALSE(record->isRAWFile);
    EXPECT_EQ(typeIn(*record), "public.jpeg");
    EXPECT_TRUE(record->hasFetchedFromPHAsset);
    EXPECT_TRUE(record->hasFetchedEXIFInformation);
    EXPECT_EQ(calls, (Calls{{1, std::nullopt, false}}));
}

TEST_F(ExifManagerAssetTest, APhotoElsewhereIsLeftThereUnlessForced) {
    const auto asset = addElsewhere(kCanon, {.creationDate = kLibraryDate, .location = kLibraryPlace});
    const auto record = ExifManager::exifInformationFromPHAssett(asset, noting());
    EXPECT_TRUE(record->imageResultIsInCloud);
    EXPECT_EQ(record->cameraModel, std::nullopt);
    EXPECT_FALSE(record->exifORTiffInfoAvailable);
    EXPECT_EQ(record->fileSizeInBytes, 0);
    EXPECT_EQ(record->dateTaken, kLibraryDate);
    EXPECT_EQ(record->location, kLibraryPlace);
    EXPECT_TRUE(record->hasFetchedEXIFInformation);
    EXPECT_EQ(calls, (Calls{{1, std::nullopt, false}}));
}

TEST_F(ExifManagerAssetTest, AForcedDownloadTellsItsWayAndItsEnd) {
    struct Case {
        const char* name;
        bool isBroken;
        double stopAt;
        bool isInCloud;
        Calls firstCalls;
    };
    const Case cases[] = {
        {"broken", true, -1, true,
            {{0.25, std::nullopt, true}, {0.5, std::nullopt, true}, {0.5, PHErrorCode::NetworkError, true}}},
        {"stopped", false, 0.25, true, {{0.25, std::nullopt, true}}},
        {"brought", false, -1, false, {{0.25, std::nullopt, true}, {0.5, std::nullopt, true}}},
    };
    const auto asset = addElsewhere(kCanon);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        slowFolder->isBroken = c.isBroken;
        stopAt = c.stopAt;
        calls.clear();
        const auto record = ExifManager::exifInformationFromPHAssett(asset, /*forceDownload=*/true, noting());
        EXPECT_EQ(record->imageResultIsInCloud, c.isInCloud);
        EXPECT_EQ(record->cameraModel.has_value(), !c.isInCloud);
        ASSERT_GE(calls.size(), c.firstCalls.size() + 1);
        for (std::size_t call = 0; call < c.firstCalls.size(); ++call) {
            if (std::get<1>(c.firstCalls[call])) {
                EXPECT_EQ(std::get<1>(calls[call]), std::get<1>(c.firstCalls[call]));
            } else {
                EXPECT_EQ(calls[call], c.firstCalls[call]);
            }
        }
        EXPECT_EQ(calls.back(), (Calls::value_type{1, std::nullopt, false}));
    }
}

TEST_F(ExifManagerAssetTest, NoAssetGivesARecordOfNothing) {
    const auto record = ExifManager::exifInformationFromPHAssett(nullptr);
    EXPECT_EQ(record->phAsset, nullptr);
    EXPECT_TRUE(record->imageResultIsInCloud);
    EXPECT_FALSE(record->exifORTiffInfoAvailable);
}

TEST_F(ExifManagerAssetTest, ARawPhotoIsReadFromItsWholeFile) {
    const auto asset =
        add("nikon-d1.nef", {.creationDate = kLibraryDate, .location = kLibraryPlace}, "com.nikon.raw-image");
    const auto record = ExifManager::exifInformationFromPHAssett(asset);
    EXPECT_TRUE(record->isRAWFile);
    EXPECT_TRUE(record->didFetchedFullInfo);
    EXPECT_TRUE(record->hasFetchedFromPHAsset);
    EXPECT_TRUE(record->hasFetchedEXIFInformation);
    EXPECT_FALSE(record->imageResultIsInCloud);
    EXPECT_EQ(record->imageFilePathURL.lastPathComponent(), "nikon-d1.nef");
    EXPECT_EQ(typeIn(*record), "com.nikon.raw-image");
    EXPECT_EQ(record->cameraModel, "NIKON D1 "); // As the camera wrote it.
    EXPECT_EQ(record->phAsset, asset);
    EXPECT_EQ(record->dateTaken, kLibraryDate);
    EXPECT_EQ(record->location, kLibraryPlace);
}

TEST_F(ExifManagerAssetTest, ADNGHasTheDimensionsOfThePictureThatItDevelopsTo) {
    const auto asset = add("raw/corners-turned-right.dng", {}, "com.adobe.raw-image");
    const auto record = ExifManager::exifInformationFromPHAssett(asset);
    EXPECT_TRUE(record->isRAWFile);
    EXPECT_TRUE(record->didFetchedFullInfo);
    EXPECT_EQ(record->dimensions, (CGSize{96, 128})); // Stored as 128 × 96, to be turned.
}

TEST_F(ExifManagerAssetTest, MeasuresTheVideoOfALivePhotoOfTwoFiles) {
    using Type = PHAssetResourceType;
    struct Case {
        std::uint64_t subtypes;
        std::vector<Type> types;
        bool isMeasured;
    };
    const Case cases[] = {
        {kPHAssetMediaSubtypePhotoLive, {Type::Photo, Type::PairedVideo}, true},
        {kPHAssetMediaSubtypePhotoLive, {Type::Photo, Type::FullSizePhoto, Type::PairedVideo}, false},
        {kPHAssetMediaSubtypePhotoLive, {Type::Photo}, false},
        {kPHAssetMediaSubtypePhotoLive | kPHAssetMediaSubtypePhotoHDR, {Type::Photo, Type::PairedVideo},
            false},
    };
    const auto size = static_cast<std::int64_t>(
        std::filesystem::file_size(std::filesystem::path(EXIFCARD_TEST_DATA) / kCanon));
    for (const Case& c : cases) {
        SCOPED_TRACE(std::to_string(c.subtypes) + " with " + std::to_string(c.types.size()));
        const auto asset = addLivePhoto(c.subtypes, c.types);
        ASSERT_EQ(PHAssetResource::assetResourcesForAsset(*asset).size(), c.types.size());
        const auto record = ExifManager::exifInformationFromPHAssett(asset);
        awaitResources(*asset);
        EXPECT_EQ(record->liveVideoFileSizeInBytes, c.isMeasured ? size : 0);
    }
}

TEST_F(ExifManagerAssetTest, AVideoHasWhatItsFileAndTheLibraryTell) {
    const auto asset = add("videos/synthetic-keys.mov",
        {.mediaType = PHAssetMediaType::Video,
            .pixelWidth = 640,
            .pixelHeight = 480,
            .modificationDate = kLibraryDate,
            .location = kLibraryPlace,
            .duration = 2.5},
        "com.apple.quicktime-movie");
    const auto record = ExifManager::exifInformationFromPHAssett(asset);
    EXPECT_EQ(record->mediaType(), 2);
    EXPECT_EQ(record->dimensions, (CGSize{640, 480}));
    EXPECT_EQ(record->duration, 2.5);
    EXPECT_EQ(record->location, kLibraryPlace);
    EXPECT_EQ(record->dateCreated, kLibraryDate);
    EXPECT_EQ(record->dateTaken, std::nullopt);
    EXPECT_FALSE(record->imageResultIsInCloud);
    EXPECT_TRUE(record->exifORTiffInfoAvailable);
    EXPECT_FALSE(record->exifInfoAvailable);
    EXPECT_EQ(record->cameraModel, *record->tifDic->objectForKey(kCGImagePropertyTIFFModel).text());
    EXPECT_GT(record->framesPerSecondValue, 0);
    EXPECT_EQ(record->fileSizeInBytes,
        static_cast<std::int64_t>(std::filesystem::file_size(photos / "synthetic-keys.mov")));
    EXPECT_TRUE(record->hasFetchedEXIFInformation);

    std::filesystem::remove(photos / "synthetic-keys.mov");
    EXPECT_TRUE(ExifManager::exifInformationFromPHAssett(asset)->imageResultIsInCloud);
}

TEST_F(ExifManagerAssetTest, TheLighterRecordKeepsTheDateOfTheFile) {
    struct Case {
        PHAssetPtr asset;
        bool isFilesDate;
    };
    const Case cases[] = {
        {add(kCanon, {.creationDate = kLibraryDate, .location = kLibraryPlace}), true},
        {addElsewhere("sony-ilce7m3.jpg", {.creationDate = kLibraryDate, .location = kLibraryPlace}), false},
    };
    for (const auto& [asset, isFilesDate] : cases) {
        SCOPED_TRACE(isFilesDate);
        std::shared_ptr<ExifInformation> record;
        ExifManager::exifInformationFromPHAssettWithCompletionBlock(
            asset, [&record](const auto& built) { record = built; });
        runUntil([&record] { return record != nullptr; });
        EXPECT_EQ(record->dateTaken == kLibraryDate, !isFilesDate);
        EXPECT_EQ(record->dateCreated, kLibraryDate);
        EXPECT_EQ(record->location, kLibraryPlace);
        EXPECT_EQ(record->phAsset, asset);
        EXPECT_EQ(record->exifInfoAvailable, isFilesDate);
        EXPECT_NE(record->cachedPHAssetInfoDictionary, nullptr);
    }
}

TEST_F(ExifManagerAssetTest, TheCompleteFetchStopsAtOnceWhereTheFileIsOutOfReach) {
    const auto asset = addElsewhere(kCanon);
    const auto record = ExifManager::exifInformationFromPHAssett(asset);
    std::shared_ptr<ExifInformation> same;
    ExifManager::fetchCompleteExifInformationsFor(record, [&same](const auto& fetched) { same = fetched; });
    EXPECT_EQ(same, record);
    EXPECT_TRUE(record->isFetchingFullInfo);
    EXPECT_FALSE(record->didFetchedFullInfo);

    slowFolder->isBroken = true;
    EXPECT_EQ(forciblyCompleted(record), record);
    EXPECT_TRUE(record->didFetchedFullInfo);

    slowFolder->isBroken = false;
    const auto fetched = forciblyCompleted(record);
    EXPECT_NE(fetched, record);
    EXPECT_TRUE(fetched->didFetchedFullInfo);
    EXPECT_EQ(fetched->cameraModel, "Canon EOS 40D");
    EXPECT_EQ(fetched->phAsset, asset);
}

TEST_F(ExifManagerAssetTest, TracesAFileOfTheDeviceToItsAsset) {
    const auto first = add(kCanon, {.creationDate = kLibraryDate});
    add("sony-ilce7m3.jpg", {.creationDate = Date{kLibraryDate.secondsSince1970 + 100}});
    const std::string identifier = first->localIdentifier.substr(0, first->localIdentifier.find('/'));
    const Date otherDate{kLibraryDate.secondsSince1970 + 100.5};
    struct Case {
        std::string path;
        std::optional<Date> date;
        std::string name;
    };
    const Case cases[] = {
        {"/var/mobile/Media/DCIM/" + identifier + "_4_5005_c.jpeg", otherDate, kCanon},
        {"/var/mobile/Media/DCIM/IMG_1.jpeg", otherDate, "sony-ilce7m3.jpg"},
        {"/x/CoreSimulator/Devices/IMG_1.jpeg", kLibraryDate, kCanon},
        {"/var/mobile/Media/DCIM/IMG_1.jpeg", Date{0}, ""},
        {"/var/mobile/Media/DCIM/" + identifier + ".jpeg", std::nullopt, ""},
        {"/photos/" + identifier + ".jpeg", kLibraryDate, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.path);
        const auto url = URL::fileURLWithPath(c.path);
        const auto asset = ExifManager::assetInPhotosAppForFileWithURL(url, c.date);
        EXPECT_EQ(asset ? nameOf(*asset) : "", c.name);
    }
    PHPhotoLibrary::setAuthorization(PHAuthorizationStatus::Denied);
    EXPECT_EQ(ExifManager::assetInPhotosAppForFileWithURL(URL::fileURLWithPath(cases[0].path), kLibraryDate),
        nullptr);
}

TEST(QueueManagerTest, EachQueueHasItsLimit) {
    auto& queues = QueueManager::sharedInstance();
    EXPECT_EQ(queues.completeEXIFFetchingQueue->label(), "org.exifcard.completeEXIFFetchingQueue");
    EXPECT_EQ(queues.rawFileProcessingQueue->label(), "org.exifcard.rawFileProcessingQueue");
    const std::pair<const OperationQueue*, int> limits[] = {{&queues.imageTransferOperationQueue, 8},
        {&queues.imageScaleDownOperationQueue, 16}, {&queues.prefetchImageScaleDownOperationQueue, 10},
        {&queues.fileNamePHAssetResourceSerialOperationQueue, 1},
        {&queues.albumImageTransferOperationQueue, 8}, {&queues.fullScreenImageLoadingOperationQueue, 1},
        {&queues.iCloudImageDownloadOperationQueue, 1}, {&queues.exifCardTVImageFetchOperationQueue, 5},
        {&queues.exifCardTVEXIFFetchOperationQueue, 5}, {&queues.exifFetchingOperationQueueForAppleTV, 5}};
    for (const auto& [queue, limit] : limits) {
        EXPECT_EQ(queue->maxConcurrentOperationCount(), limit);
    }
}

} // namespace
} // namespace exifcard

#include "platform/photos/PHImageManager.h"

#include "platform/avfoundation/AVAsset.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/imageio/ImageDrawing.h"
#include "platform/photos/Library.h"
#include "platform/photos/PHAssetResource.h"
#include "platform/photos/PHAssetResourceManager.h"
#include "platform/photos/PHCachingImageManager.h"
#include "platform/photos/PHContentEditingInput.h"
#include "platform/photos/PHImageInfoKeys.h"
#include "platform/photos/SlowFolder.h"
#include "platform/uivalues/Bitmap.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <functional>

namespace exifcard {
namespace {

namespace fs = std::filesystem;

/// A picture of 100 × 68 pixels, upright.
constexpr const char* kCanon = "canon-40d-northwest-rating5.jpg";

/// What a request's handler was told, in the order of its calls.
struct Answer {
    std::shared_ptr<UIImage> image;
    std::optional<Data> data;
    DictionaryPtr info;

    std::int64_t flag(std::string_view key) const { return info->objectForKey(key).integerValue(); }
};

class PHImageManagerTest : public Library {
protected:
    /// An asset over a copy of a test picture.
    PHAssetPtr add(const std::string& sample, const std::string& name, PHAsset properties = {}) const {
        fs::copy_file(fs::path(EXIFCARD_TEST_DATA) / sample, photos / name);
        store(name, properties);
        return assetNamed(name);
    }

    std::vector<Answer> imagesOf(const PHAsset& asset,
        CGSize size,
        const PHImageRequestOptions& options,
        PHImageContentMode mode = PHImageContentMode::AspectFit) {
        std::vector<Answer> answers;
        bool isFinal = false;
        PHImageManager::defaultManager().requestImageForAsset(
            asset, size, mode, options, [&](const auto& image, const auto& info) {
                answers.push_back({image, std::nullopt, info});
                isFinal = answers.back().flag(kPHImageResultIsDegradedKey) == 0 ||
                          options.deliveryMode != PHImageRequestOptionsDeliveryMode::Opportunistic;
            });
        runUntil([&isFinal] { return isFinal; });
        return answers;
    }

    static Answer dataOf(const PHAsset& asset, const PHImageRequestOptions& options) {
        Answer answer;
        std::atomic<int> calls = 0;
        PHImageManager::defaultManager().requestImageDataForAsset(
            asset, options, [&](const auto& data, const auto&, auto, const auto& info) {
                answer = {nullptr, data, info};
                ++calls;
            });
        runUntil([&calls] { return calls > 0; });
        EXPECT_EQ(calls, 1);
        return answer;
    }
};

const PHImageRequestOptions kSynchronous{.synchronous = true};

TEST_F(PHImageManagerTest, DeliversPicturesUprightInTheWantedSizeAndNeverEnlarged) {
    using Mode = PHImageContentMode;
    using Resize = PHImageRequestOptionsResizeMode;
    // Stored 100 × 68 and upright.
    const auto asset = add(kCanon, "a.jpg", {.pixelWidth = 100, .pixelHeight = 68});
    struct Case {
        CGSize target;
        Mode mode;
        Resize resize;
        CGRect crop;
        CGSize size;
    };
    const Case cases[] = {
        {{50, 50}, Mode::AspectFit, Resize::Fast, {}, {50, 34}},
        {{50, 50}, Mode::AspectFill, Resize::Exact, {}, {74, 50}},
        {{500, 500}, Mode::AspectFit, Resize::Exact, {}, {100, 68}},
        {kPHImageManagerMaximumSize, Mode::AspectFit, Resize::Fast, {}, {100, 68}},
        {{10, 10}, Mode::AspectFit, Resize::None, {}, {100, 68}},
        {{25, 34}, Mode::AspectFit, Resize::Exact, {{0.5, 0}, {0.5, 1}}, {25, 34}},
        {{1, 1}, Mode::AspectFit, Resize::Exact, {}, {1, 1}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.target.width));
        PHImageRequestOptions options = kSynchronous;
        options.resizeMode = c.resize;
        options.normalizedCropRect = c.crop;
        int calls = 0;
        const auto request = PHImageManager::defaultManager().requestImageForAsset(
            *asset, c.target, c.mode, options, [&](const auto& image, const auto& info) {
                ++calls;
                ASSERT_NE(image, nullptr);
                EXPECT_EQ(image->size(), c.size);
                EXPECT_EQ(image->scale(), 1);
                EXPECT_EQ(image->orientation(), UIImageOrientation::Up);
                EXPECT_EQ(info->objectForKey(kPHImageResultIsDegradedKey).integerValue(), 0);
            });
        EXPECT_GT(request, 0);
        EXPECT_EQ(calls, 1);
    }
}

TEST_F(PHImageManagerTest, GivesADegradedPictureFirstOnceAThumbnailIsThere) {
    const auto grey =
        std::make_shared<Bitmap>(Bitmap{1500, 1000, 3, std::vector<std::uint8_t>(4'500'000, 0x80), {}});
    const Data jpeg = UIImageJPEGRepresentation(*UIImage::imageWithBitmap(grey), 0.9);
    std::ofstream(photos / "big.jpg", std::ios::binary) << jpeg.text();
    store("big.jpg", {.pixelWidth = 1500, .pixelHeight = 1000});
    const auto asset = assetNamed("big.jpg");
    PHImageRequestOptions options;
    const auto first = imagesOf(*asset, {1200, 1200}, options);
    ASSERT_EQ(first.size(), 1U);
    const auto second = imagesOf(*asset, {1100, 1100}, options);
    ASSERT_EQ(second.size(), 2U);
    EXPECT_EQ(second[0].flag(kPHImageResultIsDegradedKey), 1);
    EXPECT_EQ(std::max(second[0].image->size().width, second[0].image->size().height), 512);
    EXPECT_EQ(second[1].flag(kPHImageResultIsDegradedKey), 0);
    EXPECT_GE(std::max(second[1].image->size().width, second[1].image->size().height), 1000);
    options.deliveryMode = PHImageRequestOptionsDeliveryMode::FastFormat;
    const auto fast = imagesOf(*asset, {1050, 1050}, options);
    ASSERT_EQ(fast.size(), 1U);
    EXPECT_EQ(fast[0].flag(kPHImageResultIsDegradedKey), 1);
    options.deliveryMode = PHImageRequestOptionsDeliveryMode::HighQualityFormat;
    EXPECT_EQ(imagesOf(*asset, {1060, 1060}, options).size(), 1U);
    // A tile is made from the thumbnail alone: the file may be gone.
    fs::remove(photos / "big.jpg");
    const auto tile = imagesOf(*asset, {200, 200}, {});
    ASSERT_EQ(tile.size(), 1U);
    ASSERT_NE(tile[0].image, nullptr);
    EXPECT_EQ(std::max(tile[0].image->size().width, tile[0].image->size().height), 200);
}

TEST_F(PHImageManagerTest, HandsOutTheBytesOfTheRenditionThatIsAskedFor) {
    for (const char* const name : {"a.jpg", "a.edited.jpg"}) {
        std::ofstream(photos / name) << name;
    }
    auto edited = photo("a.jpg");
    edited.files.push_back(edited.files.front());
    edited.files[1].name = "a.edited.jpg";
    edited.files[1].type = PHAssetResourceType::FullSizePhoto;
    edited.files[0].orientation = 6;
    store(edited);
    const auto asset = assetNamed("a.jpg");
    for (const bool isSynchronous : {true, false}) {
        PHImageRequestOptions options;
        options.synchronous = isSynchronous;
        EXPECT_EQ(dataOf(*asset, options).data->text(), "a.edited.jpg");
        options.version = PHImageRequestOptionsVersion::Original;
        const Answer original = dataOf(*asset, options);
        EXPECT_EQ(original.data->text(), "a.jpg");
        EXPECT_EQ(original.flag(kPHImageResultIsInCloudKey), 0);
        EXPECT_EQ(original.flag(kPHImageFileOrientationKey), static_cast<int>(UIImageOrientation::Right));
        EXPECT_EQ(*original.info->objectForKey(kPHImageFileUTIKey).text(), "public.jpeg");
        EXPECT_EQ(
            URL::withString(*original.info->objectForKey(kPHImageFileURLKey).text()).lastPathComponent(),
            "a.jpg");
    }
    fs::remove(photos / "a.edited.jpg");
    const Answer gone = dataOf(*asset, kSynchronous);
    EXPECT_EQ(gone.data, std::nullopt);
    EXPECT_EQ(gone.flag(kPHImageResultIsInCloudKey), 0);
    EXPECT_TRUE(gone.info->containsKey(kPHImageErrorKey));
    PHPhotoLibrary::setAuthorization(PHAuthorizationStatus::Denied);
    EXPECT_EQ(dataOf(*asset, {.version = PHImageRequestOptionsVersion::Original, .synchronous = true}).data,
        std::nullopt);
}

TEST_F(PHImageManagerTest, BringsWhatLiesElsewhereOnlyWhenItMay) {
    const auto source = std::make_shared<SlowFolder>();
    const auto asset = addElsewhere(source, kCanon);
    const Answer refused = dataOf(*asset, kSynchronous);
    EXPECT_EQ(refused.data, std::nullopt);
    EXPECT_EQ(refused.flag(kPHImageResultIsInCloudKey), 1);
    EXPECT_FALSE(refused.info->containsKey(kPHImageErrorKey));

    std::vector<double> fractions;
    std::optional<PHError> told;
    PHImageRequestOptions options{.networkAccessAllowed = true, .synchronous = true};
    options.progressHandler = [&](double fraction, const auto& error, bool& stop, const auto& /*info*/) {
        fractions.push_back(fraction);
        told = error;
        stop = fractions.size() == 2;
    };
    const Answer stopped = dataOf(*asset, options);
    EXPECT_EQ(stopped.data, std::nullopt);
    EXPECT_EQ(stopped.flag(kPHImageCancelledKey), 1);
    EXPECT_EQ(fractions, (std::vector{0.25, 0.5}));

    source->isBroken = true;
    fractions = {0, 0};
    const Answer failed = dataOf(*asset, options);
    EXPECT_EQ(failed.flag(kPHImageResultIsInCloudKey), 1);
    ASSERT_TRUE(told.has_value());
    EXPECT_EQ(told->code, PHErrorCode::NetworkError);
    EXPECT_EQ(
        failed.info->objectForKey(kPHImageErrorKey).dictionary()->objectForKey("code").integerValue(), 3169);

    source->isBroken = false;
    const Answer brought = dataOf(*asset, options);
    ASSERT_TRUE(brought.data.has_value());
    EXPECT_EQ(brought.flag(kPHImageResultIsInCloudKey), 0);
    EXPECT_EQ(fractions.back(), 1);
}

TEST_F(PHImageManagerTest, TellsACancelledRequestOnceWithoutResult) {
    const auto source = std::make_shared<SlowFolder>();
    const auto asset = addElsewhere(source, kCanon);
    PHImageRequestID request = 0;
    DispatchSemaphore known(0);
    source->beforeStep = [&] {
        known.wait();
        PHImageManager::defaultManager().cancelImageRequest(request);
        known.signal();
    };
    std::vector<Answer> answers;
    request =
        PHImageManager::defaultManager().requestImageForAsset(*asset, {50, 50}, PHImageContentMode::AspectFit,
            {.networkAccessAllowed = true}, [&](const auto& image, const auto& info) {
                answers.push_back({image, std::nullopt, info});
            });
    known.signal();
    runUntil([&answers] { return !answers.empty(); });
    EXPECT_EQ(answers.front().image, nullptr);
    EXPECT_EQ(answers.front().flag(kPHImageCancelledKey), 1);
    PHImageManager::defaultManager().cancelImageRequest(request); // Finished: nothing.
    PHImageManager::defaultManager().cancelImageRequest(0);
}

TEST_F(PHImageManagerTest, RunsManyRequestsBesideEachOther) {
    const auto asset = add(kCanon, "a.jpg", {.pixelWidth = 100, .pixelHeight = 68});
    constexpr int kRequests = 40;
    PHCachingImageManager manager;
    manager.startCachingImagesForAssets(std::vector{asset}, {30, 30}, PHImageContentMode::AspectFit, {});
    int pictures = 0;
    int cancelled = 0;
    for (int index = 0; index < kRequests; ++index) {
        const auto request = manager.requestImageForAsset(*asset, {30.0 + index % 3, 30},
            PHImageContentMode::AspectFit, {}, [&](const auto& image, const auto& info) {
                pictures += image ? 1 : 0;
                cancelled += info->containsKey(kPHImageCancelledKey) ? 1 : 0;
            });
        if (index % 4 == 0) {
            manager.cancelImageRequest(request);
        }
    }
    manager.stopCachingImagesForAllAssets();
    runUntil([&] { return pictures + cancelled == kRequests; });
    EXPECT_EQ(cancelled, kRequests / 4);
}

TEST_F(PHImageManagerTest, OpensVideos) {
    const auto asset =
        add("videos/corners-turned-right.mov", "v.mov", {.mediaType = PHAssetMediaType::Video});
    auto video = photo("v.mov", {.mediaType = PHAssetMediaType::Video});
    video.number = 1;
    video.files.front().type = PHAssetResourceType::Video;
    store(video);
    std::atomic<bool> isDone = false;
    PHImageManager::defaultManager().requestAVAssetForVideo(
        *asset, {}, [&](const auto& opened, const auto& info) {
            EXPECT_NE(opened, nullptr);
            EXPECT_EQ(info->objectForKey(kPHImageResultIsInCloudKey).integerValue(), 0);
            isDone = true;
        });
    runUntil([&isDone] { return isDone.load(); });
    const auto frame = imagesOf(*asset, kPHImageManagerMaximumSize, {});
    ASSERT_NE(frame.back().image, nullptr);
    EXPECT_LT(frame.back().image->size().width, frame.back().image->size().height);
}

TEST_F(PHImageManagerTest, GivesTheFileForEditing) {
    const auto asset = add(kCanon, "a b.jpg");
    const auto source = std::make_shared<SlowFolder>();
    const auto far = addElsewhere(source, kCanon);
    struct Case {
        PHAssetPtr asset;
        bool mayUseNetwork;
        std::string name;
        bool isInCloud;
    };
    const Case cases[] = {
        {asset, false, "a b.jpg", false}, {far, false, "", true}, {far, true, kCanon, false}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        std::atomic<bool> isDone = false;
        requestContentEditingInputWithOptions(
            *c.asset, {.networkAccessAllowed = c.mayUseNetwork}, [&](const auto& input, const auto& info) {
                EXPECT_EQ(input ? input->fullSizeImageURL->lastPathComponent() : "", c.name);
                EXPECT_EQ(
                    info->objectForKey(kPHContentEditingInputResultIsInCloudKey).boolValue(), c.isInCloud);
                isDone = true;
            });
        runUntil([&isDone] { return isDone.load(); });
    }
}

TEST_F(PHImageManagerTest, HandsOutResourcesInTheirOrderAndInChunks) {
    const std::string moving(700'000, 'm');
    std::ofstream(photos / "live.mov", std::ios::binary) << moving;
    std::ofstream(photos / "live.heic", std::ios::binary) << "still"
                                                          << "moving"
                                                          << "rest";
    auto live = photo("live.mov");
    live.files.front().type = PHAssetResourceType::PairedVideo;
    auto still = live.files.front();
    still.name = "live.heic";
    still.type = PHAssetResourceType::Photo;
    still.embeddedVideoOffset = 5;
    still.embeddedVideoLength = 6;
    live.files.push_back(still);
    store(live);
    const auto resources = PHAssetResource::assetResourcesForAsset(*assetNamed("live.mov"));
    ASSERT_EQ(resources.size(), 3U);
    EXPECT_EQ(resources[0].originalFilename, "live.heic");
    EXPECT_EQ(resources[1].type, PHAssetResourceType::PairedVideo);
    const std::string wanted[] = {"stillmovingrest", "moving", moving};
    for (std::size_t index = 0; index < 3; ++index) {
        std::string received;
        std::atomic<int> completions = 0;
        PHAssetResourceManager::defaultManager().requestDataForAssetResource(
            resources[index], {}, [&](const Data& chunk) { received += chunk.text(); },
            [&](const auto& error) {
                EXPECT_FALSE(error.has_value());
                ++completions;
            });
        runUntil([&completions] { return completions > 0; });
        EXPECT_TRUE(received == wanted[index]) << index;
    }
    const auto far = addElsewhere(std::make_shared<SlowFolder>(), kCanon);
    std::atomic<int> code = 0;
    PHAssetResourceManager::defaultManager().requestDataForAssetResource(
        PHAssetResource::assetResourcesForAsset(*far).front(), {}, [](const Data&) { ADD_FAILURE(); },
        [&](const auto& error) { code = static_cast<int>(error->code); });
    runUntil([&code] { return code != 0; });
    EXPECT_EQ(code, 3164);
}

} // namespace
} // namespace exifcard

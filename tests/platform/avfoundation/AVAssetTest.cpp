#include "platform/avfoundation/AVAsset.h"

#include "platform/avfoundation/AVAssetImageGenerator.h"
#include "platform/avfoundation/VideoModule.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/imageio/Corners.h"
#include "platform/uivalues/Bitmap.h"
#include "platform/uivalues/UIImage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <string>
#include <vector>

namespace exifcard {
namespace {

using Bytes = std::vector<std::uint8_t>;
using testing::ElementsAre;

std::shared_ptr<const AVURLAsset> assetOf(const std::string& name) {
    return AVURLAsset::assetWithURL(URL::fileURLWithPath(EXIFCARD_TEST_DATA "/videos/" + name));
}

Bytes bytesOf(const std::string& name) {
    const auto data = Data::mappedFile(EXIFCARD_TEST_DATA "/videos/" + name);
    return {data->bytes().begin(), data->bytes().end()};
}

struct Picture {
    std::shared_ptr<UIImage> image;
    AVAssetImageGeneratorResult result = AVAssetImageGeneratorResult::Cancelled;
    std::optional<std::string> error;
};

Picture firstPicture(AVAssetImageGenerator generator) {
    Picture picture;
    DispatchSemaphore isMade(0);
    generator.generateCGImagesAsynchronouslyForTimes(
        {{0, 30}}, [&](CMTime, const std::shared_ptr<UIImage>& image, CMTime,
                       AVAssetImageGeneratorResult result, const std::optional<std::string>& error) {
            picture = {image, result, error};
            isMade.signal();
        });
    isMade.wait();
    return picture;
}

std::string textFor(const AVURLAsset& asset, std::string_view commonKey, std::string_view keySpace) {
    for (const AVMetadataItem& item : asset.metadata()) {
        if (item.commonKey == commonKey && item.keySpace == keySpace) {
            return item.stringValue().value_or("");
        }
    }
    return "missing";
}

TEST(AVAssetTest, TellsTracksAsAnIndependentReaderDoes) {
    struct Case {
        const char* name;
        double duration;
        CGSize size;
        float frameRate;
        std::size_t soundTracks;
    };
    const Case cases[] = {
        // As ffprobe tells them.
        {"corners-turned-right.mov", 0.5, {64, 48}, 10, 0},
        {"synthetic-keys.mov", 2, {320, 240}, 15, 0},
        {"sample.3gp", 4.933375, {176, 144}, 15, 1},
        {"sony-a7-xavc.mp4", 1.44, {1920, 1080}, 50, 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const auto asset = assetOf(c.name);
        ASSERT_TRUE(asset);
        EXPECT_NEAR(CMTimeGetSeconds(asset->duration()), c.duration, 1e-4);
        const auto video = asset->tracksWithMediaType(AVMediaTypeVideo);
        ASSERT_EQ(video.size(), 1U);
        EXPECT_EQ(video.front().naturalSize, c.size);
        EXPECT_NEAR(video.front().nominalFrameRate, c.frameRate, 1e-3);
        EXPECT_EQ(asset->tracksWithMediaType(AVMediaTypeAudio).size(), c.soundTracks);
    }
    EXPECT_TRUE(std::isnan(CMTimeGetSeconds(CMTime())));
}

TEST(AVAssetTest, NamesMetadataByCommonKeys) {
    const auto keys = assetOf("synthetic-keys.mov");
    const auto userData = assetOf("corners-turned-right.mov");
    ASSERT_TRUE(keys && userData);
    struct Case {
        std::string_view commonKey;
        std::string_view quickTime;
        std::string_view userData;
    };
    const Case cases[] = {
        {AVMetadataCommonKeyMake, "Apple", "Maker"},
        {AVMetadataCommonKeyModel, "iPhone 12 mini", "Model 1"},
        {AVMetadataCommonKeySoftware, "15.4", "Firmware 1.10"},
        {AVMetadataCommonKeyLocation, "-22.9519-043.2105+038.4/", "+48.8583+002.2945/"},
        {AVMetadataCommonKeyCreationDate, "2022-04-16T18:22:33-0300", "2020-01-02"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.commonKey);
        EXPECT_EQ(textFor(*keys, c.commonKey, AVMetadataKeySpaceQuickTimeMetadata), c.quickTime);
        EXPECT_EQ(textFor(*userData, c.commonKey, AVMetadataKeySpaceQuickTimeUserData), c.userData);
    }
    ASSERT_TRUE(keys->creationDate());
    EXPECT_FALSE(keys->creationDate()->startDate);
}

TEST(AVAssetImageGeneratorTest, TurnsAndFitsAFrame) {
    AVAssetImageGenerator generator(assetOf("corners-turned-right.mov"));
    const auto asStored = firstPicture(generator);
    ASSERT_TRUE(asStored.image);
    EXPECT_EQ(asStored.result, AVAssetImageGeneratorResult::Succeeded);
    EXPECT_EQ(asStored.image->size(), (CGSize{64, 48}));
    EXPECT_EQ(cornersOf(*asStored.image->bitmap()), "RGBW");

    generator.appliesPreferredTrackTransform = true;
    generator.maximumSize = {100, 32};
    const auto upright = firstPicture(generator);
    ASSERT_TRUE(upright.image);
    EXPECT_EQ(upright.image->size(), (CGSize{24, 32}));
    const auto bitmap = upright.image->bitmap();
    ASSERT_TRUE(bitmap);
    EXPECT_EQ((CGSize{double(bitmap->width), double(bitmap->height)}), upright.image->size());
    EXPECT_EQ(cornersOf(*bitmap), "BRWG");

    generator.maximumSize = {1000, 1000};
    EXPECT_EQ(firstPicture(generator).image->size(), (CGSize{48, 64})); // Never enlarged.
}

TEST(AVAssetImageGeneratorTest, TellsWhatHasNoFrame) {
    for (const auto& asset : {assetOf("sony-a7-xavc.mp4"), std::shared_ptr<const AVURLAsset>()}) {
        const auto picture = firstPicture(AVAssetImageGenerator(asset));
        EXPECT_FALSE(picture.image);
        EXPECT_EQ(picture.result, AVAssetImageGeneratorResult::Failed);
        EXPECT_TRUE(picture.error);
    }
}

TEST(AVAssetImageGeneratorTest, CallsTheHandlerOnceForEachTime) {
    std::vector<std::int64_t> times;
    DispatchSemaphore isMade(0);
    AVAssetImageGenerator(assetOf("sample.3gp"))
        .generateCGImagesAsynchronouslyForTimes({{0, 30}, {60, 30}, {900'000, 30}},
            [&](CMTime requested, const std::shared_ptr<UIImage>& image, auto, auto, auto) {
                EXPECT_TRUE(image && image->bitmap());
                times.push_back(requested.value);
                isMade.signal();
            });
    for (int count = 0; count < 3; ++count) {
        isMade.wait();
    }
    EXPECT_THAT(times, ElementsAre(0, 60, 900'000));
}

/// The movie with its one track many times over.
Bytes movieOfTracks(std::size_t count) {
    const Bytes movie = bytesOf("corners-turned-right.mov");
    const auto placeOf = [&movie](const char* type) {
        return static_cast<std::size_t>(
                   std::search(movie.begin(), movie.end(), type, type + 4) - movie.begin()) -
               4;
    };
    const auto longAt = [&movie](std::size_t place) {
        return std::size_t(movie[place]) << 24U | std::size_t(movie[place + 1]) << 16U |
               std::size_t(movie[place + 2]) << 8U | movie[place + 3];
    };
    const std::size_t moov = placeOf("moov");
    const std::size_t trak = placeOf("trak");
    const Bytes track(movie.begin() + long(trak), movie.begin() + long(trak + longAt(trak)));
    Bytes result(movie.begin(), movie.begin() + long(trak));
    for (std::size_t index = 0; index < count; ++index) {
        result.insert(result.end(), track.begin(), track.end());
    }
    const std::size_t length = result.size() - moov;
    for (std::size_t index = 0; index < 4; ++index) {
        result[moov + index] = static_cast<std::uint8_t>(length >> (24 - 8 * index));
    }
    return result;
}

TEST(VideoModuleTest, RefusesMoreTracksThanAVideoHas) {
    const auto some = videoFacts(movieOfTracks(10));
    ASSERT_TRUE(some);
    EXPECT_EQ(some->tracks.size(), 10U);
    EXPECT_FALSE(videoFacts(movieOfTracks(10'000)));
}

TEST(VideoModuleTest, ReadsNothingOfWhatIsNoVideo) {
    EXPECT_FALSE(videoFacts({}));
    EXPECT_FALSE(videoFacts(bytesOf("hostile-mp4.mp4")));
    EXPECT_FALSE(assetOf("missing.mov"));
    EXPECT_FALSE(AVURLAsset::assetWithURL(URL()));
    // Lists that would make the library open the files that they name.
    const std::string lists[] = {"ffconcat version 1.0\nfile '/etc/passwd'\n",
        "#EXTM3U\n#EXT-X-TARGETDURATION:10\n#EXTINF:10,\n/etc/passwd\n#EXT-X-ENDLIST\n", "WEBVTT\n\n"};
    for (const std::string& list : lists) {
        EXPECT_FALSE(videoFacts(Bytes(list.begin(), list.end()))) << list;
    }
}

TEST(VideoModuleTest, StaysWithinTheFileWhereverItIsDamaged) {
    const Bytes whole = bytesOf("corners-turned-right.mov");
    constexpr std::size_t kIndex = 869;
    for (std::size_t length = 0; length < whole.size(); length += 23) {
        const auto facts = videoFacts(Bytes(whole.begin(), whole.begin() + long(length)));
        EXPECT_TRUE(!facts || (length > kIndex && facts->tracks.size() == 1)) << length;
    }
    for (std::size_t position = 0; position < whole.size(); position += 5) {
        Bytes damaged = whole;
        damaged[position] = 0xff;
        const auto frame = videoFrame(damaged, 0, {1000, 1000});
        if (frame) {
            EXPECT_LE(frame->width, 1000);
            EXPECT_EQ(frame->pixels.size(), std::size_t(frame->width) * std::size_t(frame->height) * 3U);
        }
    }
}

} // namespace
} // namespace exifcard

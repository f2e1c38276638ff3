#include "platform/photos/ThumbnailStore.h"

#include "platform/foundation/FilePaths.h"
#include "platform/uivalues/Bitmap.h"
#include "platform/uivalues/UIImage.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

namespace exifcard {
namespace {

namespace fs = std::filesystem;

/// Noise, which no encoding makes small: some 15 KB as JPEG.
UIImage noise(unsigned seed) {
    Bitmap bitmap{.width = 128, .height = 128, .channels = 3, .pixels = {}, .iccProfile = {}};
    std::mt19937 generator(seed);
    for (int value = 0; value < 128 * 128 * 3; ++value) {
        bitmap.pixels.push_back(static_cast<std::uint8_t>(generator()));
    }
    return *UIImage::imageWithBitmap(std::make_shared<const Bitmap>(std::move(bitmap)));
}

std::uint64_t storedBytes() {
    std::uint64_t bytes = 0;
    for (const auto& entry : fs::recursive_directory_iterator(cacheFolder() + "/thumbnails")) {
        bytes += entry.is_regular_file() ? entry.file_size() : 0;
    }
    return bytes;
}

TEST(ThumbnailStoreTest, StaysWithinItsBoundAndLetsTheOldestGo) {
    const TemporaryHome home;
    constexpr std::uint64_t kBound = 200'000;
    ThumbnailStore store(kBound);
    const UIImage picture = noise(1);
    for (int number = 0; number < 60; ++number) {
        store.store(std::to_string(number), picture);
        // Between two looks at the folder, a quarter of the bound may come.
        EXPECT_LE(storedBytes(), kBound + kBound / 4);
    }
    EXPECT_TRUE(store.thumbnail("59"));
    EXPECT_FALSE(store.thumbnail("0"));
    store.trim();
    EXPECT_LE(storedBytes(), kBound);
}

TEST(ThumbnailStoreTest, CountsWhatAnotherProgramLeft) {
    const TemporaryHome home;
    ThumbnailStore(10'000'000).store("a", noise(1));
    const auto left = storedBytes();
    ThumbnailStore small(left / 2);
    small.store("b", noise(2));
    EXPECT_LE(storedBytes(), left / 2);
}

TEST(ThumbnailStoreTest, DoesWithoutWhatItCannotWriteOrRead) {
    const TemporaryHome home;
    fs::create_directories(cacheFolder());
    std::ofstream(cacheFolder() + "/thumbnails") << "no folder";
    ThumbnailStore store;
    store.store("a", noise(1));
    EXPECT_FALSE(store.thumbnail("a"));
}

} // namespace
} // namespace exifcard

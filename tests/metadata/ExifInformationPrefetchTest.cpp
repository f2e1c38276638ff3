#include "metadata/ExifInformation.h"
#include "platform/photos/Library.h"
#include "platform/uivalues/Bitmap.h"
#include "platform/uivalues/UIImage.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <vector>

namespace exifcard {
namespace {

constexpr std::uintmax_t kMebibyte = 1048576;

class ExifInformationPrefetchTest : public Library {
protected:
    /// The record of a picture of 100 × 68 pixels, whose file is made as long as told.
    std::shared_ptr<ExifInformation> recordOfFile(const std::string& name, std::uintmax_t sizeInBytes) const {
        std::filesystem::copy_file(EXIFCARD_TEST_DATA "/canon-40d-northwest-rating5.jpg", photos / name);
        std::filesystem::resize_file(photos / name, sizeInBytes); // The rest is a hole and takes no room.
        store(name);
        auto record = ExifInformation::init();
        record->phAsset = assetNamed(name);
        return record;
    }
};

TEST_F(ExifInformationPrefetchTest, BringsThePictureUnlessCancelledOrTooLarge) {
    const auto cancelled = recordOfFile("cancelled.jpg", kMebibyte);
    const auto tooLarge = recordOfFile("too large.jpg", 51 * kMebibyte);
    const auto largest = recordOfFile("largest.jpg", 51 * kMebibyte - 1);
    cancelled->prefetchAsset();
    cancelled->cancelPrefetch();
    tooLarge->prefetchAsset();
    runUntil([&tooLarge] { return tooLarge->imageRequestID != 0; });
    largest->prefetchAsset();
    runUntil([&largest] { return largest->cachedThumbNailImage != nullptr; });
    EXPECT_EQ(largest->cachedThumbNailImage->size(), (CGSize{100, 68}));
    EXPECT_EQ(tooLarge->cachedThumbNailImage, nullptr);
    EXPECT_EQ(cancelled->cachedThumbNailImage, nullptr);
    EXPECT_EQ(cancelled->imageRequestID, 0);
}

TEST_F(ExifInformationPrefetchTest, AsksForNothingThatIsThere) {
    const auto record = recordOfFile("a.jpg", kMebibyte);
    record->cachedThumbNailImage =
        UIImage::imageWithBitmap(std::make_shared<Bitmap>(Bitmap{1, 1, 3, std::vector<std::uint8_t>(3), {}}));
    record->prefetchAsset();
    EXPECT_FALSE(record->imageFetchCompletionHandler);
}

} // namespace
} // namespace exifcard

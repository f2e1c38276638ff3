#include "categories/ImageManager.h"

#include "platform/foundation/Dictionary.h"
#include "platform/imageio/Corners.h"
#include "platform/photos/Library.h"
#include "platform/photos/PHImageInfoKeys.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace exifcard {
namespace {

class ImageManagerTest : public Library {
protected:
    struct Answer {
        std::shared_ptr<UIImage> image;
        DictionaryPtr info;
    };
    static std::vector<Answer> answersFor(
        const PHAsset& asset, CGSize targetSize, const PHImageRequestOptions& options) {
        std::vector<Answer> answers;
        ImageManager::sharedInstance().imageCachingManager().requestImageForAsset(asset, targetSize,
            PHImageContentMode::AspectFit, options, [&answers](const auto& image, const auto& info) {
                answers.push_back({image, info});
            });
        return answers;
    }
};

TEST_F(ImageManagerTest, BringsPicturesOfTheLibraryWithTheirColoursInPlace) {
    std::filesystem::copy_file(
        std::filesystem::path(EXIFCARD_TEST_DATA) / "pixels/corners.jpg", photos / "corners.jpg");
    store("corners.jpg", {.pixelWidth = 64, .pixelHeight = 48});
    store("missing.jpg", {.pixelWidth = 64, .pixelHeight = 48});
    struct Case {
        const char* name;
        CGSize targetSize;
        CGSize size; ///< Without area: no picture.
    };
    const Case cases[] = {
        {"corners.jpg", {32, 32}, {32, 24}},
        {"corners.jpg", {32, 32}, {32, 24}}, // From the cache.
        {"corners.jpg", {640, 640}, {64, 48}},
        {"corners.jpg", kPHImageManagerMaximumSize, {64, 48}},
        {"missing.jpg", {32, 32}, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.name << " " << c.targetSize.width);
        const PHAssetPtr asset = assetNamed(c.name);
        ASSERT_TRUE(asset);
        const auto answers = answersFor(*asset, c.targetSize, {.synchronous = true});
        ASSERT_EQ(answers.size(), 1U);
        EXPECT_EQ(answers[0].info->objectForKey(kPHImageResultIsDegradedKey).integerValue(), 0);
        const bool hasPicture = c.size.width > 0;
        EXPECT_EQ(answers[0].image != nullptr, hasPicture);
        EXPECT_EQ(answers[0].info->objectForKey(kPHImageErrorKey).dictionary() == nullptr, hasPicture);
        if (answers[0].image) {
            EXPECT_EQ(answers[0].image->size(), c.size);
            EXPECT_EQ(cornersOf(*answers[0].image->bitmap()), "RGBW");
        }
    }
}

} // namespace
} // namespace exifcard

#include "platform/imageio/EmbeddedPreviews.h"

#include <gtest/gtest.h>

namespace exifcard {
namespace {

TEST(EmbeddedPreviewsTest, APreviewWillDoThatShowsTheWholePictureAndIsNoSmallerThanWanted) {
    struct {
        PixelSize preview;
        PixelSize wanted;
        bool isSufficient;
    } constexpr kCases[] = {
        {{160, 107}, {160, 107}, true},
        {{160, 106}, {160, 107}, true}, // The same picture, whose shorter side was rounded down.
        {{160, 105}, {160, 107}, false},
        {{159, 107}, {160, 107}, false},
        {{160, 120}, {150, 100}, false}, // It has black bars.
        {{1620, 1080}, {160, 107}, true},
    };
    for (const auto& row : kCases) {
        SCOPED_TRACE(std::to_string(row.preview.width) + " x " + std::to_string(row.preview.height));
        EXPECT_EQ(isSufficient(row.preview, /*stored=*/{6000, 4000}, row.wanted), row.isSufficient);
        const PixelSize turned = {row.preview.height, row.preview.width};
        EXPECT_EQ(
            isSufficient(turned, /*stored=*/{4000, 6000}, PixelSize{row.wanted.height, row.wanted.width}),
            row.isSufficient);
    }
}

} // namespace
} // namespace exifcard

#include "platform/uivalues/ShrunkSize.h"

#include <gtest/gtest.h>

namespace exifcard {
namespace {

TEST(ShrunkSizeTest, KeepsTheShapeWithinTheLimitsInWholePixels) {
    struct Case {
        CGSize size;
        CGSize limits;
        CGSize shrunk;
    };
    const Case cases[] = {
        {{4000, 3000}, {400, 400}, {400, 300}},
        {{3000, 4000}, {400, 400}, {300, 400}},
        {{4000, 3000}, {400, 30}, {40, 30}},
        {{400, 300}, {4000, 4000}, {400, 300}}, // Never enlarged.
        {{400, 300}, {400, 300}, {400, 300}},
        {{400.4, 300.6}, {0, 0}, {400, 301}},  // No limits.
        {{400, 300}, {-1, 100}, {400, 300}},   //
        {{400, 300}, {100, 0}, {400, 300}},    // One side alone limits nothing.
        {{100'000, 10}, {100, 100}, {100, 1}}, // Not thinner than a pixel.
        {{0.2, 5000}, {100, 100}, {1, 100}},   //
        {{1000, 667}, {500, 500}, {500, 334}}, // Half a pixel rounds up.
        {{1e9, 1e9}, {0.5, 0.5}, {1, 1}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.size.width << " x " << c.size.height << " within "
                                        << c.limits.width << " x " << c.limits.height);
        EXPECT_EQ(shrunkToFit(c.size, c.limits), c.shrunk);
    }
}

} // namespace
} // namespace exifcard

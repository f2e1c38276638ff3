#include "platform/uivalues/UIScreen.h"

#include <gtest/gtest.h>

namespace exifcard {
namespace {

TEST(UIScreenTest, ReadsSizeAndScale) {
    struct Case {
        const char* text;
        CGSize size;
        double scale;
    };
    const Case cases[] = {
        {"390x844@3", {390, 844}, 3},
        {"1024x768@1", {1024, 768}, 1},
        {"375.5x667.25@2.5", {375.5, 667.25}, 2.5},
        {"1x1@0.5", {1, 1}, 0.5},
        {"100000x100000@16", {100'000, 100'000}, 16},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        const auto screen = UIScreen::screenFromText(c.text);
        ASSERT_TRUE(screen.has_value());
        EXPECT_EQ(screen->bounds(), (CGRect{{0, 0}, c.size}));
        EXPECT_EQ(screen->scale, c.scale);
    }
}

TEST(UIScreenTest, RefusesWhatIsNoScreen) {
    for (const char* const text : {"", "390", "390x844", "390x844@", "390x@3", "x844@3", "390X844@3",
             "390x844@3 ", " 390x844@3", "390x844@3x", "+390x844@3", "-390x844@3", "390x-844@3", "0x844@3",
             "390x0@3", "390x844@0", "390x844@-2", "nanx844@3", "390xinf@3", "390x844@nan", "infx844@3",
             "1e2x844@3", "0x10x844@3", "100001x844@3", "390x844@17", "390,5x844@3", "390x844@3@3"}) {
        SCOPED_TRACE(text);
        EXPECT_FALSE(UIScreen::screenFromText(text).has_value());
    }
}

TEST(UIScreenTest, IsThePhoneUntilItIsSet) {
    EXPECT_EQ(UIScreen::mainScreen().bounds(), (CGRect{{0, 0}, {390, 844}}));
    EXPECT_EQ(UIScreen::mainScreen().scale, 3);
    UIScreen::setMainScreen({{800, 600}, 1});
    EXPECT_EQ(UIScreen::mainScreen().sizeInPoints, (CGSize{800, 600}));
    UIScreen::setMainScreen(UIScreen());
}

} // namespace
} // namespace exifcard

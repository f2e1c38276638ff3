#include "platform/uivalues/UIColor.h"

#include <gtest/gtest.h>

namespace exifcard {
namespace {

using Style = UIUserInterfaceStyle;

TEST(UIColorTest, APairShowsItsDarkHalfInTheDarkAlone) {
    const RGBA red = {1, 0, 0, 1};
    const RGBA blue = {0, 0, 1, 0.5};
    const UIColor pair(red, blue);
    EXPECT_EQ(pair.resolved(Style::Light), red);
    EXPECT_EQ(pair.resolved(Style::Unspecified), red);
    EXPECT_EQ(pair.resolved(Style::Dark), blue);
    EXPECT_TRUE(pair.isDynamic());
    EXPECT_NE(pair, UIColor(red)) << "the halves that do not show count as well";
    EXPECT_NE(pair, UIColor(blue));

    const UIColor single(red);
    EXPECT_EQ(single.resolved(Style::Dark), red);
    EXPECT_FALSE(single.isDynamic());
    EXPECT_TRUE(UIColor(red, RGBA{1, 0, 0, 0.9}).isDynamic()) << "they differ in opacity alone";
}

TEST(UIColorTest, AnotherOpacityReplacesThatOfBothHalves) {
    const UIColor pair(RGBA{1, 0, 0, 1}, RGBA{0, 0, 1, 0.5});
    const UIColor faint = pair.withAlpha(0.25);
    EXPECT_EQ(faint.resolved(Style::Light), (RGBA{1, 0, 0, 0.25}));
    EXPECT_EQ(faint.resolved(Style::Dark), (RGBA{0, 0, 1, 0.25}));
    EXPECT_EQ(pair.resolved(Style::Dark).alpha, 0.5) << "the colour itself stays";
}

TEST(UIColorTest, TheGreysStandAtTheirThirds) {
    struct Case {
        UIColor color;
        double white;
    };
    const Case cases[] = {
        {UIColor::blackColor(), 0},
        {UIColor::darkGrayColor(), 1.0 / 3},
        {UIColor::lightGrayColor(), 2.0 / 3},
        {UIColor::whiteColor(), 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.white);
        EXPECT_EQ(c.color.resolved(Style::Dark), (RGBA{c.white, c.white, c.white, 1}));
    }
    EXPECT_EQ(UIColor().resolved(Style::Light), (RGBA{0, 0, 0, 1}));
}

} // namespace
} // namespace exifcard

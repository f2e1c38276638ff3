#include "appearance/Apperance.h"

#include "appearance/UIColor+Hex.h"
#include "platform/uivalues/UIAccessibility.h"
#include "platform/uivalues/UIDevice.h"
#include "platform/uivalues/UIScreen.h"
#include "settings/PersistanceManager.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

namespace exifcard {
namespace {

/// Each test with settings of its own, on the current system.
class ApperanceTest : public testing::Test {
protected:
    ~ApperanceTest() override { setSystemVersion("13.0"); }
};

TEST_F(ApperanceTest, ReadsHexadecimalColours) {
    struct Case {
        const char* text;
        RGBA color;
    };
    const Case cases[] = {
        {"#ff0000", {1, 0, 0, 1}},
        {"FF0000", {1, 0, 0, 1}},
        {"#00#FF#00#", {0, 1, 0, 1}},
        {"80FF0000", {1, 0, 0, 128.0F / 255}},
        {"F6ECEC", {246.0F / 255, 236.0F / 255, 236.0F / 255, 1}},
        {"GG00FF", {0, 0, 1, 1}},
        {"1G00FF", {1.0F / 255, 0, 1, 1}},
        {" F\tF00", {15.0F / 255, 15.0F / 255, 0, 1}},
        {"0X00FF", {0, 0, 1, 1}},
        {"äöü", {0, 0, 0, 0}},
        {"äöüFF0", {0, 0, 240.0F / 255, 1}},
        {"\U0001F600\U0001F600FF", {0, 0, 1, 1}},
        {"FFF", {0, 0, 0, 0}},
        {"", {0, 0, 0, 0}},
        {"FF0000FF0", {0, 0, 0, 0}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(colorWithHexString(c.text), UIColor(c.color));
    }
}

TEST_F(ApperanceTest, ColoursFollowTheStyleFromSystem13On) {
    const UIColor red(RGBA{1, 0, 0, 1});
    const UIColor dynamic(RGBA{0, 1, 0, 1}, RGBA{0, 0, 1, 1});
    const auto color = colorForCurrentStyleWithLight(red, dynamic);
    EXPECT_EQ(color.resolved(UIUserInterfaceStyle::Light), (RGBA{1, 0, 0, 1}));
    EXPECT_EQ(color.resolved(UIUserInterfaceStyle::Unspecified), (RGBA{1, 0, 0, 1}));
    EXPECT_EQ(color.resolved(UIUserInterfaceStyle::Dark), (RGBA{0, 0, 1, 1}));
    setSystemVersion("12.4");
    EXPECT_EQ(colorForCurrentStyleWithLight(dynamic, red), dynamic);
}

TEST_F(ApperanceTest, HasItsColours) {
    struct Case {
        UIColor color;
        RGBA light;
        RGBA dark;
    };
    constexpr RGBA kBlack = {0, 0, 0, 1};
    constexpr RGBA kWhite = {1, 1, 1, 1};
    constexpr RGBA kYellow = {220.0 / 255, 198.0 / 255, 83.0 / 255, 1};
    const Case cases[] = {
        {themeColor(), kWhite, kBlack},
        {Apperance::appearanceTintColor(), kBlack, kWhite},
        {Apperance::appearanceTextColor(), kBlack, kWhite},
        {Apperance::borderColorForCurrentColorMode(), kBlack, kWhite},
        {Apperance::tabBarTintColor(), kBlack, kYellow},
        {Apperance::yellowColor(), kYellow, kYellow},
        {Apperance::ultraLightGrayColor(), {246.0F / 255, 246.0F / 255, 246.0F / 255, 1},
            {0.0917, 0.09117, 0.09117, 1}},
        {Apperance::lightGrayColor(), {236.0F / 255, 236.0F / 255, 236.0F / 255, 1},
            {5.0 / 255, 5.0 / 255, 5.0 / 255, 1}},
        {Apperance::ultraLighBackgroundColorForSettingsPhotosSearchPromo(),
            {243.0 / 255, 243.0 / 255, 243.0 / 255, 1}, {33.0 / 255, 33.0 / 255, 33.0 / 255, 1}},
        {Apperance::appearanceBackgroundColor(0.5), {1, 1, 1, 0.5}, {0, 0, 0, 0.5}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(&c - cases);
        EXPECT_EQ(c.color, UIColor(c.light, c.dark));
    }
    const auto separator = Apperance::sepratorColorForCurrentColorMode();
    EXPECT_GT(separator.resolved(UIUserInterfaceStyle::Light).red,
        separator.resolved(UIUserInterfaceStyle::Dark).red);
}

TEST_F(ApperanceTest, NamesWhitePicturesInTheDarkModeOfOldSystems) {
    const TemporaryHome home;
    auto& settings = PersistanceManager::sharedInstance();
    settings.setIsDarkModeOn(true);
    EXPECT_EQ(Apperance::themedImageFileNameFor("flash_fired"), "flash_fired");
    setSystemVersion("12.4");
    EXPECT_EQ(Apperance::themedImageFileNameFor("flash_fired"), "white_flash_fired");
    setInvertColorsEnabled(true);
    EXPECT_EQ(Apperance::themedImageFileNameFor("flash_fired"), "flash_fired");
    setInvertColorsEnabled(false);
    settings.setIsDarkModeOn(false);
    EXPECT_EQ(Apperance::themedImageFileNameFor("flash_fired"), "flash_fired");
}

TEST_F(ApperanceTest, KeepsTheBoundsThatTheScreenHadAtTheStart) {
    const UIScreen before = UIScreen::mainScreen();
    const CGRect bounds = Apperance::sharedInstance().mainScreenBounds;
    UIScreen::setMainScreen({{820, 1180}, 2});
    EXPECT_EQ(Apperance::sharedInstance().mainScreenBounds, bounds);
    EXPECT_EQ(bounds, before.bounds());
    UIScreen::setMainScreen(before);
}

} // namespace
} // namespace exifcard

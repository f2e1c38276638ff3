#include "appearance/Apperance.h"

#include "appearance/UIColor+Hex.h"
#include "platform/uivalues/UIDevice.h"
#include "platform/uivalues/UIScreen.h"
#include "settings/PersistanceManager.h"

namespace exifcard {
namespace {

UIColor blackOrWhite() {
    return colorForCurrentStyleWithLight(UIColor::blackColor(), UIColor::whiteColor());
}

} // namespace

Apperance::Apperance() : mainScreenBounds(UIScreen::mainScreen().bounds()) {
}

const Apperance& Apperance::sharedInstance() {
    static const Apperance instance;
    return instance;
}

std::string Apperance::themedImageFileNameFor(std::string_view imageName) {
    const bool isThemedByName =
        !isSystemVersionAtLeast("13.0") && PersistanceManager::sharedInstance().isDarkModeOn();
    return (isThemedByName ? "white_" : "") + std::string(imageName);
}

UIColor Apperance::ultraLightGrayColor() {
    // Intended: the dark red differs a little from green and blue.
    return colorForCurrentStyleWithLight(
        colorWithHexString("F6F6F6"), UIColor(RGBA{0.0917, 0.09117, 0.09117, 1}));
}

UIColor Apperance::lightGrayColor() {
    return colorForCurrentStyleWithLight(colorWithHexString("ECECEC"), blackOLEDSafe());
}

UIColor Apperance::yellowColor() {
    return UIColor(RGBA{220.0 / 255, 198.0 / 255, 83.0 / 255, 1});
}

UIColor Apperance::borderColorForCurrentColorMode() {
    return blackOrWhite();
}

UIColor Apperance::sepratorColorForCurrentColorMode() {
    return colorForCurrentStyleWithLight(UIColor::lightGrayColor(), UIColor::darkGrayColor());
}

UIColor Apperance::tabBarTintColor() {
    return colorForCurrentStyleWithLight(UIColor::blackColor(), yellowColor());
}

UIColor Apperance::appearanceTintColor() {
    return blackOrWhite();
}

UIColor Apperance::appearanceTextColor() {
    return blackOrWhite();
}

UIColor Apperance::appearanceBackgroundColor(double alpha) {
    return themeColor().withAlpha(alpha);
}

UIColor Apperance::ultraLighBackgroundColorForSettingsPhotosSearchPromo() {
    return colorForCurrentStyleWithLight(UIColor::white(243.0 / 255), UIColor::white(33.0 / 255));
}

} // namespace exifcard

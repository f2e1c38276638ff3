#include "appearance/UIColor+Hex.h"
#include "appearance/uikit/UIAppearance+Shadow.h"
#include "platform/uikit/CALayer.h"
#include "platform/uivalues/UIDevice.h"
#include "settings/PersistanceManager.h"

namespace exifcard {
namespace {

UIColor shadowColor() {
    if (isSystemVersionAtLeast("13.0")) {
        return colorForCurrentStyleWithLight(UIColor::blackColor(), UIColor::lightGrayColor());
    }
    const bool isDark = PersistanceManager::sharedInstance().isDarkModeOn();
    return isDark ? UIColor::lightGrayColor() : UIColor::blackColor();
}

} // namespace

void setShadowEffectForLayer(CALayer& layer) {
    layer.shadowOffset = {0, 0};
    layer.shadowColor = shadowColor();
    layer.shadowRadius = 2;
    layer.shadowOpacity = 0.5;
    layer.shadowPath = layer.bounds;
}

} // namespace exifcard

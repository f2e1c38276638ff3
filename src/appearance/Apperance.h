#pragma once

#include "platform/uivalues/CGGeometry.h"
#include "platform/uivalues/UIColor.h"

#include <string>
#include <string_view>

namespace exifcard {

/// The theme: what every screen and card takes its colours and picture names from.
class Apperance {
public:
    /// Created at the first call, in a thread-safe way.
    static const Apperance& sharedInstance();

    /// The main screen's bounds in points, as they were when the instance was
    /// created; turning or replacing the screen does not change them.
    CGRect mainScreenBounds;

    /// The picture to show for `imageName` in the current theme. From system 13
    /// on it is the name itself; before, "white_" is put before it in dark mode.
    static std::string themedImageFileNameFor(std::string_view imageName);

    /// The opacity of a control that cannot be used.
    static constexpr double disabledAlpha() { return 0.4; }

    static UIColor ultraLightGrayColor();
    static UIColor lightGrayColor();
    static UIColor yellowColor();
    static UIColor borderColorForCurrentColorMode();
    static UIColor sepratorColorForCurrentColorMode();
    static UIColor tabBarTintColor();

    /// The colours that views are set to: tint, label text, background with the
    /// given opacity, and the background of the settings' search promotion.
    static UIColor appearanceTintColor();
    static UIColor appearanceTextColor();
    static UIColor appearanceBackgroundColor(double alpha = 1);
    static UIColor ultraLighBackgroundColorForSettingsPhotosSearchPromo();

private:
    Apperance();
};

} // namespace exifcard

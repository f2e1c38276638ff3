#include "appearance/Apperance.h"

#include "appearance/UIColor+Hex.h"
#include "appearance/uikit/Apperance+Defaults.h"
#include "platform/uikit/UIAppearance.h"
#include "platform/uivalues/UIDevice.h"

#include <utility>

namespace exifcard {
namespace {

constexpr double kTitleSize = 17;
/// Far enough to the left that no title of a back button is seen.
constexpr CGPoint kBackButtonTitleOffset{-500, 0};

UIColor whiteOrBlack() {
    return themeColor();
}

UIColor blackOrWhite() {
    return colorForCurrentStyleWithLight(UIColor::blackColor(), UIColor::whiteColor());
}

void addSegmentedControls(std::vector<AppearanceDefault>& defaults) {
    constexpr std::string_view kView = "UISegmentedControl";
    const UIColor tint = colorForCurrentStyleWithLight(UIColor::blackColor(), Apperance::yellowColor());
    defaults.push_back({kView, "tintColor", tint});
    defaults.push_back({kView, "titleTextAttributes.selected.foregroundColor", whiteOrBlack()});
    if (isSystemVersionAtLeast("13.0")) {
        const UIColor first = colorForCurrentStyleWithLight(UIColor::whiteColor(), Apperance::yellowColor());
        // Intended: set twice; the second one stands.
        defaults.push_back({kView, "selectedSegmentTintColor", first});
        defaults.push_back({kView, "selectedSegmentTintColor", tint});
    }
}

void addNavigationTitle(std::vector<AppearanceDefault>& defaults) {
    if (const auto font = UIFont::fontWithName("AvenirNext-Regular", kTitleSize)) {
        defaults.push_back({"UINavigationBar", "titleTextAttributes.foregroundColor", blackOrWhite()});
        defaults.push_back({"UINavigationBar", "titleTextAttributes.font", *font});
    }
}

} // namespace

void updateAppApperance() {
    std::vector<AppearanceDefault> defaults = {
        {"UINavigationBar", "barTintColor", whiteOrBlack()},
        {"UINavigationBar", "tintColor", blackOrWhite()},
        {"UINavigationBar", "backgroundColor", whiteOrBlack()},
        {"UICollectionView", "backgroundColor", whiteOrBlack()},
        {"UITableView", "backgroundColor", whiteOrBlack()},
        {"UITableViewCell", "backgroundColor", themeColor()},
        {"UILabel", "textColor", blackOrWhite()},
        {"UILabel in UIViewController", "textColor", blackOrWhite()},
        {"UILabel in UIButton", "textColor", whiteOrBlack()},
    };
    addSegmentedControls(defaults);
    addNavigationTitle(defaults);
    defaults.push_back({"UIBarButtonItem", "backButtonTitlePositionAdjustment", kBackButtonTitleOffset});
    installAppearanceDefaults(std::move(defaults));
}

} // namespace exifcard

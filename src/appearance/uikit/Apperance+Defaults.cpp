#include "appearance/Apperance.h"

#include "appearance/UIColor+Hex.h"
#include "appearance/uikit/Apperance+Defaults.h"
#include "platform/uivalues/UIDevice.h"

#include <algorithm>

namespace exifcard {
namespace {

constexpr double kTitleSize = 17;
/// Far enough to the left that no title of a back button is seen.
constexpr CGPoint kBackButtonTitleOffset{-500, 0};

std::vector<AppearanceDefault>& installed() {
    static std::vector<AppearanceDefault> defaults;
    return defaults;
}

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
    auto& defaults = installed();
    defaults = {
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
}

const std::vector<AppearanceDefault>& appearanceDefaults() {
    return installed();
}

std::optional<UIColor> defaultColor(std::string_view view, std::string_view property) {
    const auto& defaults = installed();
    const auto found = std::find_if(defaults.rbegin(), defaults.rend(),
        [view, property](const auto& entry) { return entry.view == view && entry.property == property; });
    const auto* const color = found == defaults.rend() ? nullptr : std::get_if<UIColor>(&found->value);
    return color ? std::optional(*color) : std::nullopt;
}

} // namespace exifcard

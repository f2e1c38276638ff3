#pragma once

#include "platform/uikit/UIFont.h"
#include "platform/uivalues/CGGeometry.h"
#include "platform/uivalues/UIColor.h"

#include <optional>
#include <string_view>
#include <variant>
#include <vector>

namespace exifcard {

/// How views of one kind look unless told otherwise.
struct AppearanceDefault {
    std::string_view view;     ///< "UINavigationBar"; "UILabel in UIButton" for those inside another.
    std::string_view property; ///< "barTintColor"
    std::variant<UIColor, UIFont, CGPoint> value;
};

/// Class operation of `Apperance`: installs the defaults of all views. Once, when the screens are set up;
/// they hold for views made afterwards.
void updateAppApperance();

/// What is installed, in the order in which it was set; where two are of one property, the later one holds.
const std::vector<AppearanceDefault>& appearanceDefaults();
/// The colour that holds; nothing for what was never set.
std::optional<UIColor> defaultColor(std::string_view view, std::string_view property);

} // namespace exifcard

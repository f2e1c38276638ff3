#pragma once

#include "platform/uikit/UIFont.h"
#include "platform/uivalues/CGGeometry.h"
#include "platform/uivalues/UIColor.h"

#include <optional>
#include <string_view>
#include <variant>
#include <vector>

namespace exifcard {

/// How views of one kind look unless told otherwise. Bars and lists take theirs when they are made, labels
/// theirs from the program's palette. Of kinds and properties that no view here has, it is only kept.
struct AppearanceDefault {
    std::string_view view;     ///< "UINavigationBar"; "UILabel in UIButton" for those inside another.
    std::string_view property; ///< "barTintColor"
    std::variant<UIColor, UIFont, CGPoint> value;
};

/// In place of all that was installed. Main queue.
void installAppearanceDefaults(std::vector<AppearanceDefault> defaults);
/// What is installed, in the order in which it was set; where two are of one property, the later one holds.
const std::vector<AppearanceDefault>& appearanceDefaults();
/// What holds; nothing for what was never set.
std::optional<UIColor> defaultColor(std::string_view view, std::string_view property);
std::optional<UIFont> defaultFont(std::string_view view, std::string_view property);

} // namespace exifcard

#pragma once

#include "platform/uivalues/UIColor.h"

#include <string_view>

namespace exifcard {

/// What kind of device the system runs on; the platform's numbers.
enum class UIUserInterfaceIdiom { Unspecified = -1, Phone = 0, Pad = 1 };

/// How large the user wants texts, from smallest to largest.
enum class UIContentSizeCategory {
    ExtraSmall,
    Small,
    Medium,
    Large, ///< The default.
    ExtraLarge,
    ExtraExtraLarge,
    ExtraExtraExtraLarge,
    AccessibilityMedium,
    AccessibilityLarge,
    AccessibilityExtraLarge,
    AccessibilityExtraExtraLarge,
    AccessibilityExtraExtraExtraLarge
};

/// The category of the short name that the command line takes: "XS", "S", "M", "L" … "XXXL",
/// "AccessibilityM" … "AccessibilityXXXL"; large for any other text.
UIContentSizeCategory contentSizeCategoryNamed(std::string_view name);

/// What every view adapts to. One collection holds for the whole program.
struct UITraitCollection {
    UIUserInterfaceStyle userInterfaceStyle = UIUserInterfaceStyle::Light;
    UIUserInterfaceIdiom userInterfaceIdiom = UIUserInterfaceIdiom::Phone;
    UIContentSizeCategory preferredContentSizeCategory = UIContentSizeCategory::Large;
    bool isRightToLeft = false;
    bool isMotionReduced = false;
    bool operator==(const UITraitCollection&) const = default;

    static const UITraitCollection& currentTraitCollection();
    /// Repaints every view and calls `traitCollectionDidChange` of every loaded view controller, from the
    /// windows' roots on; does nothing for equal traits. Main queue.
    static void setCurrentTraitCollection(const UITraitCollection& traits);
};

} // namespace exifcard

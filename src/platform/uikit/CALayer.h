#pragma once

#include "platform/uivalues/CGGeometry.h"
#include "platform/uivalues/UIColor.h"

#include <optional>

namespace exifcard {

/// How a view's rectangle is drawn. Colours are resolved whenever it is painted.
struct CALayer {
    CGRect bounds; ///< Kept up to date by the view.
    UIColor backgroundColor = UIColor::white(0, 0);
    UIColor borderColor;
    double borderWidth = 0;
    double cornerRadius = 0; ///< Also of the shadow.
    UIColor shadowColor;
    CGSize shadowOffset;
    double shadowRadius = 3;
    double shadowOpacity = 0;
    std::optional<CGRect> shadowPath; ///< The rectangle that casts the shadow; without one, the bounds.
};

} // namespace exifcard

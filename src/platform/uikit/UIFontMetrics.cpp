#include "platform/uikit/UIFontMetrics.h"

#include "platform/uikit/UITraitCollection.h"
#include "platform/uivalues/UIScreen.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace exifcard {
namespace {

// The platform's line heights in points, from extra small to the largest category.
constexpr double kBodyLeadings[] = {19, 20, 21, 22, 24, 26, 29, 34, 40, 48, 56, 62};
constexpr double kCalloutLeadings[] = {18, 19, 20, 21, 23, 25, 28, 32, 39, 46, 52, 60};

double leading(UIFontTextStyle style, UIContentSizeCategory category) {
    const auto index = static_cast<std::size_t>(category);
    return style == UIFontTextStyle::Body ? kBodyLeadings[index] : kCalloutLeadings[index];
}

} // namespace

double UIFontMetrics::scaledValueForValue(double value) const {
    const auto category = UITraitCollection::currentTraitCollection().preferredContentSizeCategory;
    if (category == UIContentSizeCategory::Large) {
        return value;
    }
    const double scaled =
        value * leading(_textStyle, category) / leading(_textStyle, UIContentSizeCategory::Large);
    const double scale = UIScreen::mainScreen().scale;
    return std::round(scaled * scale) / scale;
}

UIFont UIFontMetrics::scaledFontForFont(const UIFont& font, std::optional<double> maximumPointSize) const {
    UIFont scaled = font;
    scaled.pointSize = scaledValueForValue(font.pointSize);
    if (maximumPointSize) {
        scaled.pointSize = std::min(scaled.pointSize, *maximumPointSize);
    }
    return scaled;
}

} // namespace exifcard

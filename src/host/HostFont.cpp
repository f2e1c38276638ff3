#include "host/HostFont.h"

#include "platform/uikit/UIFont.h"
#include "platform/uikit/UIFontMetrics.h"

#include <cmath>

namespace exifcard {
namespace {

constexpr const char* kFontNames[] = {
    "AvenirNext-Regular", "AvenirNext-Medium", "AvenirNext-DemiBold", "AvenirNext-Bold"};

} // namespace

QFont hostFont(double size, HostFontWeight weight, double largestScale) {
    const auto font = UIFont::fontWithName(kFontNames[static_cast<std::size_t>(weight)], size);
    return qFont(
        UIFontMetrics(UIFontTextStyle::Callout).scaledFontForFont(font.value(), size * largestScale));
}

int hostLineHeight(int lineHeight, double largestScale) {
    const double scaled = UIFontMetrics(UIFontTextStyle::Callout).scaledValueForValue(lineHeight);
    return static_cast<int>(std::lround(std::min(scaled, lineHeight * largestScale)));
}

} // namespace exifcard

#include "host/HostFont.h"

#include "platform/uikit/UIFont.h"
#include "platform/uikit/UIFontMetrics.h"

#include <cmath>

namespace exifcard {
namespace {

constexpr const char* kFontNames[] = {
    "AvenirNext-Regular", "AvenirNext-Medium", "AvenirNext-DemiBold", "AvenirNext-Bold"};
/// Text of 15 grows to 24 at most, and all other sizes in proportion.
constexpr double kLargestScale = 1.6;

} // namespace

QFont hostFont(double size, HostFontWeight weight) {
    const auto font = UIFont::fontWithName(kFontNames[static_cast<std::size_t>(weight)], size);
    return qFont(
        UIFontMetrics(UIFontTextStyle::Callout).scaledFontForFont(font.value(), size * kLargestScale));
}

int hostLineHeight(int lineHeight) {
    const double scaled = UIFontMetrics(UIFontTextStyle::Callout).scaledValueForValue(lineHeight);
    return static_cast<int>(std::lround(std::min(scaled, lineHeight * kLargestScale)));
}

} // namespace exifcard

#include "appearance/uikit/Apperance+Fonts.h"
#include "platform/uivalues/UIDevice.h"
#include "settings/PersistanceManager.h"

namespace exifcard {
namespace {

constexpr double kDetailRowSize = 15;
constexpr double kDetailRowMaximumSize = 24;

std::optional<UIFontMetrics> metricsForTextStyle(UIFontTextStyle textStyle) {
    return isSystemVersionAtLeast("11.0") ? std::optional(UIFontMetrics(textStyle)) : std::nullopt;
}

std::optional<UIFont> scaled(const std::optional<UIFontMetrics>& metrics,
    const std::optional<UIFont>& font,
    std::optional<double> maximumSize) {
    return metrics && font ? metrics->scaledFontForFont(*font, maximumSize) : font;
}

} // namespace

const std::optional<UIFontMetrics>& bodyMetrics() {
    static const auto metrics = metricsForTextStyle(UIFontTextStyle::Body);
    return metrics;
}

const std::optional<UIFontMetrics>& calloutMetrics() {
    static const auto metrics = metricsForTextStyle(UIFontTextStyle::Callout);
    return metrics;
}

std::optional<UIFont> scaledFontForBodyMetricsWithFont(const std::optional<UIFont>& font) {
    return scaled(bodyMetrics(), font, std::nullopt);
}

std::optional<UIFont> scaledFontForBodyMetricsWithFont(
    const std::optional<UIFont>& font, double maximumSize) {
    return scaled(bodyMetrics(), font, maximumSize);
}

std::optional<UIFont> scaledFontForCalloutMetricsWithFont(
    const std::optional<UIFont>& font, double maximumSize) {
    return scaled(calloutMetrics(), font, maximumSize);
}

std::optional<UIFont> fontStyleWithCurrentSettingsMaximumSize() {
    const bool isLight = PersistanceManager::sharedInstance().isUsingLightFontOnExifDetailsScreen();
    const auto font =
        UIFont::fontWithName(isLight ? "AvenirNext-Regular" : "AvenirNext-Medium", kDetailRowSize);
    return scaledFontForCalloutMetricsWithFont(font, kDetailRowMaximumSize);
}

} // namespace exifcard

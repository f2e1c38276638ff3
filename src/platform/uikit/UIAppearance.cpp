#include "platform/uikit/UIAppearance.h"

#include "platform/uikit/ApplicationPalette.h"

#include <QApplication>

#include <algorithm>
#include <utility>

namespace exifcard {
namespace {

std::vector<AppearanceDefault>& installed() {
    static std::vector<AppearanceDefault> defaults;
    return defaults;
}

template<typename Kind>
std::optional<Kind> defaultOf(std::string_view view, std::string_view property) {
    const auto& defaults = installed();
    const auto found = std::find_if(defaults.rbegin(), defaults.rend(),
        [view, property](const auto& entry) { return entry.view == view && entry.property == property; });
    const auto* const value = found == defaults.rend() ? nullptr : std::get_if<Kind>(&found->value);
    return value ? std::optional(*value) : std::nullopt;
}

} // namespace

void installAppearanceDefaults(std::vector<AppearanceDefault> defaults) {
    installed() = std::move(defaults);
    if (QCoreApplication::instance() != nullptr) {
        QApplication::setPalette(applicationPalette()); // Tells nobody where nothing changes.
    }
}

const std::vector<AppearanceDefault>& appearanceDefaults() {
    return installed();
}

std::optional<UIColor> defaultColor(std::string_view view, std::string_view property) {
    return defaultOf<UIColor>(view, property);
}

std::optional<UIFont> defaultFont(std::string_view view, std::string_view property) {
    return defaultOf<UIFont>(view, property);
}

} // namespace exifcard

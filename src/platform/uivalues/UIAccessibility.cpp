#include "platform/uivalues/UIAccessibility.h"

#include <atomic>

namespace exifcard {
namespace {

std::atomic<bool> invertColors = false;

} // namespace

bool UIAccessibilityIsInvertColorsEnabled() {
    return invertColors;
}

void setInvertColorsEnabled(bool isEnabled) {
    invertColors = isEnabled;
}

} // namespace exifcard

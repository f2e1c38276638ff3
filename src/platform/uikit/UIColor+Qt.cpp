#include "platform/uikit/UIColor+Qt.h"
#include "platform/uikit/UITraitCollection.h"

#include <algorithm>

namespace exifcard {

QColor qColor(const UIColor& color) {
    const RGBA& components = color.resolved(UITraitCollection::currentTraitCollection().userInterfaceStyle);
    const auto bounded = [](double component) { return static_cast<float>(std::clamp(component, 0.0, 1.0)); };
    return QColor::fromRgbF(bounded(components.red), bounded(components.green), bounded(components.blue),
        bounded(components.alpha));
}

} // namespace exifcard

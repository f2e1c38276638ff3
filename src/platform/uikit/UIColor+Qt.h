#pragma once

#include <QColor>

namespace exifcard {

class UIColor;

/// The colour in the current appearance.
QColor qColor(const UIColor& color);

} // namespace exifcard

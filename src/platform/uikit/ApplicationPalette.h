#pragma once

#include <QPalette>

namespace exifcard {

/// The toolkit's own colours in the current appearance.
QPalette applicationPalette();

} // namespace exifcard

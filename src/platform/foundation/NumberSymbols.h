#pragma once

#include "platform/foundation/Locale.h"

#include <unicode/dcfmtsym.h>

namespace exifcard {

/// The signs that numbers of a locale are written with. Made once for each: that is most of what a formatter
/// costs. Never gone; the root locale's where ICU has none.
const icu::DecimalFormatSymbols& numberSymbols(const Locale& locale);

} // namespace exifcard

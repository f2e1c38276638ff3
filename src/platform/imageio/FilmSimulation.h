#pragma once

#include <cstdint>
#include <string>

namespace exifcard {

/// The name of the look that Fujifilm keeps under "film mode" (tag 0x1401), such as "Velvia".
/// A name never begins with a digit; a code without one gives "Unknown".
std::string fujiFilmModeName(std::int64_t code);

/// The name of the look or of the colour strength under "saturation" (tag 0x1003), such as "Acros + Ye".
std::string fujiSaturationName(std::int64_t code);

} // namespace exifcard

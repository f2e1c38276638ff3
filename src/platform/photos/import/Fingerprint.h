#pragma once

#include "platform/foundation/Data.h"

#include <cstdint>

namespace exifcard {

/// Tells a file by its content, so that it is known again under another name. The same for the same bytes
/// and, but for a rare chance, different for others.
///
/// @return Of the first and the last 64 KB and the length. Never 0.
std::int64_t quickFingerprint(const Data& file);

/// Of every byte; wanted only where the quick one is the same for two files. Never 0.
std::int64_t wholeFingerprint(const Data& file);

} // namespace exifcard

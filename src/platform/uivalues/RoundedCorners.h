#pragma once

#include "platform/uivalues/Bitmap.h"

namespace exifcard {

/// The same picture, transparent beyond its rounded corners, whose edges are smooth.
/// @param radius  In pixels; at most half the shorter side counts.
Bitmap withRoundedCorners(const Bitmap& bitmap, double radius);

} // namespace exifcard

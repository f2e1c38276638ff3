#pragma once

#include "platform/imageio/PropertyTable.h"

namespace exifcard {

/// "{Exif}", by the tags of the Exif directory.
extern const PropertyTable kExifTable;
/// "{TIFF}", by the tags of the first directory.
extern const PropertyTable kTiffTable;
/// "{GPS}", by the tags of the GPS directory.
extern const PropertyTable kGpsTable;

} // namespace exifcard

#pragma once

#include "platform/imageio/PropertyTable.h"

namespace exifcard {

/// "{Exif}", by the tags of the Exif directory.
extern const PropertyTable kExifTable;
/// "{TIFF}", by the tags of the first directory.
extern const PropertyTable kTiffTable;
/// "{GPS}", by the tags of the GPS directory.
extern const PropertyTable kGpsTable;
/// "{ExifAux}". Its values come from maker notes and XMP; the tags only number the rows.
extern const PropertyTable kExifAuxTable;

} // namespace exifcard

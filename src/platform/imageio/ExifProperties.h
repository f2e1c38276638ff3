#pragma once

#include "platform/imageio/ExifTables.h"
#include "platform/imageio/ImageFacts.h"
#include "platform/imageio/MakerNote.h"
#include "platform/imageio/PropertyTable.h"
#include "platform/imageio/XmpPacket.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace exifcard {

/// The sub-dictionaries that come from Exif data, with what XMP adds to them.
struct ExifProperties {
    PropertyCollector exif{kExifTable};
    PropertyCollector tiff{kTiffTable};
    PropertyCollector gps{kGpsTable};
    PropertyCollector aux{kExifAuxTable};
    std::vector<NamedDictionary> makerDictionaries;
    std::optional<std::int64_t> rating; ///< Stars.
    bool isAdobeRgbFile = false;        ///< By its interoperability index.
};

/// Reads the Exif data of one image. Where it lacks something that the packet
/// tells, the packet's value is taken; of lens and body the packet's comes first.
ExifProperties readExifProperties(const ImageFacts& facts, const std::vector<XmpProperty>& packet);
/// The same without makers' notes other than Apple's.
ExifProperties readExifPropertiesForLibrary(const ImageFacts& facts, const std::vector<XmpProperty>& packet);

} // namespace exifcard

#pragma once

#include "platform/foundation/Data.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>

namespace exifcard {

/// Colours by number, after ITU-T H.273 (primaries 1 BT.709, 9 BT.2020, 12 P3; 2 unspecified).
struct HeifColor {
    int primaries = 2;
    int transfer = 2;
    int matrix = 2;
    bool isFullRange = false;
};

/// What the boxes of a HEIC, HEIF, AVIF or CR3 file tell about its primary
/// picture. All blocks are slices of the file's bytes.
struct HeifContents {
    std::string majorBrand; ///< Four characters: "heic", "mif1", "avif", "crx "…
    bool isCr3 = false;
    /// Top-level pictures: no thumbnails, tiles, depth maps, gain maps or other auxiliary ones.
    std::size_t imageCount = 0;
    /// Pixels as stored, before any turn; of a CR3 the full picture that the
    /// camera shows, without the sensor's masked border. 0: unknown.
    int width = 0;
    int height = 0;
    /// The EXIF code (1 to 8) of the turns and mirrorings that the file asks
    /// for, 1 also where it asks for a turn by 0 degrees. 0: it says nothing.
    int exifOrientation = 0;
    int bitsPerComponent = 0; ///< Of a CR3 those of the sensor. 0: unknown.
    bool hasAlpha = false;
    Data iccProfile; ///< Empty: none.
    std::optional<HeifColor> color;
    Data exif;                     ///< From the TIFF header on. Empty: none.
    Data xmp;                      ///< An XMP packet. Empty: none.
    std::array<Data, 4> cmtBlocks; ///< A CR3's CMT1 to CMT4, each a TIFF of its own. Empty: missing.
};

/// Reads the boxes, touching only the bytes in which they lie.
///
/// @param file  Untrusted bytes of a whole file; one that was cut short in its
///              picture data is read all the same.
/// @return Nothing for what is no such file and for one whose lists are broken.
std::optional<HeifContents> readHeifBoxes(const Data& file);

} // namespace exifcard

#pragma once

// The keys of the image properties dictionary, under the platform's names. A
// key is absent where the file does not tell it, a sub-dictionary where it
// would be empty.

#include "platform/imageio/ImageProperties+Containers.h"
#include "platform/imageio/ImageProperties+Exif.h"
#include "platform/imageio/ImageProperties+GPS.h"
#include "platform/imageio/ImageProperties+IPTC.h"
#include "platform/imageio/ImageProperties+TIFF.h"

#include <string_view>

namespace exifcard {

// Top level. Width and height are those of the stored pixels, before the
// orientation (1 to 8) is applied; the depth is in bits per component.
inline constexpr std::string_view kCGImagePropertyPixelWidth = "PixelWidth";
inline constexpr std::string_view kCGImagePropertyPixelHeight = "PixelHeight";
inline constexpr std::string_view kCGImagePropertyOrientation = "Orientation";
inline constexpr std::string_view kCGImagePropertyDPIWidth = "DPIWidth";
inline constexpr std::string_view kCGImagePropertyDPIHeight = "DPIHeight";
inline constexpr std::string_view kCGImagePropertyDepth = "Depth";
inline constexpr std::string_view kCGImagePropertyColorModel = "ColorModel";
inline constexpr std::string_view kCGImagePropertyProfileName = "ProfileName";
inline constexpr std::string_view kCGImagePropertyHasAlpha = "HasAlpha";
inline constexpr std::string_view kCGImagePropertyIsFloat = "IsFloat";
inline constexpr std::string_view kCGImagePropertyIsIndexed = "IsIndexed";

// The values of "ColorModel".
inline constexpr std::string_view kCGImagePropertyColorModelRGB = "RGB";
inline constexpr std::string_view kCGImagePropertyColorModelGray = "Gray";
inline constexpr std::string_view kCGImagePropertyColorModelCMYK = "CMYK";
inline constexpr std::string_view kCGImagePropertyColorModelLab = "Lab";

// Sub-dictionaries.
inline constexpr std::string_view kCGImagePropertyExifDictionary = "{Exif}";
inline constexpr std::string_view kCGImagePropertyExifAuxDictionary = "{ExifAux}";
inline constexpr std::string_view kCGImagePropertyTIFFDictionary = "{TIFF}";
inline constexpr std::string_view kCGImagePropertyGPSDictionary = "{GPS}";
inline constexpr std::string_view kCGImagePropertyIPTCDictionary = "{IPTC}";
inline constexpr std::string_view kCGImagePropertyJFIFDictionary = "{JFIF}";
inline constexpr std::string_view kCGImagePropertyPNGDictionary = "{PNG}";
inline constexpr std::string_view kCGImagePropertyGIFDictionary = "{GIF}";
inline constexpr std::string_view kCGImagePropertyWebPDictionary = "{WebP}";
inline constexpr std::string_view kCGImagePropertyMakerAppleDictionary = "{MakerApple}";
inline constexpr std::string_view kCGImagePropertyMakerCanonDictionary = "{MakerCanon}";
inline constexpr std::string_view kCGImagePropertyMakerNikonDictionary = "{MakerNikon}";

/// Not published by the platform: looks that a camera gives its pictures. Each
/// value is an array of a name and, twice, the maker's code.
inline constexpr std::string_view kPictureStyleDictionary = "{PictureStyle}";
inline constexpr std::string_view kPictureStyleFilmSimulation = "FilmSimulation";
inline constexpr std::string_view kPictureStyleSaturation = "Saturation";

} // namespace exifcard

#pragma once

#include <string_view>

namespace exifcard {

// Keys of "{TIFF}": what the first directory tells of the file, its maker and its owner.
inline constexpr std::string_view kCGImagePropertyTIFFCompression = "Compression";
inline constexpr std::string_view kCGImagePropertyTIFFPhotometricInterpretation = "PhotometricInterpretation";
inline constexpr std::string_view kCGImagePropertyTIFFDocumentName = "DocumentName";
inline constexpr std::string_view kCGImagePropertyTIFFImageDescription = "ImageDescription";
inline constexpr std::string_view kCGImagePropertyTIFFMake = "Make";
inline constexpr std::string_view kCGImagePropertyTIFFModel = "Model";
inline constexpr std::string_view kCGImagePropertyTIFFOrientation = "Orientation";
inline constexpr std::string_view kCGImagePropertyTIFFXResolution = "XResolution";
inline constexpr std::string_view kCGImagePropertyTIFFYResolution = "YResolution";
inline constexpr std::string_view kCGImagePropertyTIFFXPosition = "XPosition";
inline constexpr std::string_view kCGImagePropertyTIFFYPosition = "YPosition";
inline constexpr std::string_view kCGImagePropertyTIFFResolutionUnit = "ResolutionUnit";
inline constexpr std::string_view kCGImagePropertyTIFFTransferFunction = "TransferFunction";
inline constexpr std::string_view kCGImagePropertyTIFFSoftware = "Software";
inline constexpr std::string_view kCGImagePropertyTIFFDateTime = "DateTime";
inline constexpr std::string_view kCGImagePropertyTIFFArtist = "Artist";
inline constexpr std::string_view kCGImagePropertyTIFFHostComputer = "HostComputer";
inline constexpr std::string_view kCGImagePropertyTIFFWhitePoint = "WhitePoint";
inline constexpr std::string_view kCGImagePropertyTIFFPrimaryChromaticities = "PrimaryChromaticities";
inline constexpr std::string_view kCGImagePropertyTIFFTileWidth = "TileWidth";
inline constexpr std::string_view kCGImagePropertyTIFFTileLength = "TileLength";
inline constexpr std::string_view kCGImagePropertyTIFFCopyright = "Copyright";

} // namespace exifcard

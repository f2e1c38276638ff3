#pragma once

#include <string_view>

namespace exifcard {

// Keys of "{JFIF}".
inline constexpr std::string_view kCGImagePropertyJFIFVersion = "JFIFVersion";
inline constexpr std::string_view kCGImagePropertyJFIFXDensity = "XDensity";
inline constexpr std::string_view kCGImagePropertyJFIFYDensity = "YDensity";
inline constexpr std::string_view kCGImagePropertyJFIFDensityUnit = "DensityUnit";
inline constexpr std::string_view kCGImagePropertyJFIFIsProgressive = "IsProgressive";

// Keys of "{PNG}".
inline constexpr std::string_view kCGImagePropertyPNGAuthor = "Author";
inline constexpr std::string_view kCGImagePropertyPNGChromaticities = "Chromaticities";
inline constexpr std::string_view kCGImagePropertyPNGComment = "Comment";
inline constexpr std::string_view kCGImagePropertyPNGCopyright = "Copyright";
inline constexpr std::string_view kCGImagePropertyPNGCreationTime = "Creation Time";
inline constexpr std::string_view kCGImagePropertyPNGDescription = "Description";
inline constexpr std::string_view kCGImagePropertyPNGDisclaimer = "Disclaimer";
inline constexpr std::string_view kCGImagePropertyPNGGamma = "Gamma";
inline constexpr std::string_view kCGImagePropertyPNGInterlaceType = "InterlaceType";
inline constexpr std::string_view kCGImagePropertyPNGModificationTime = "ModificationTime";
inline constexpr std::string_view kCGImagePropertyPNGPixelsAspectRatio = "PixelAspectRatio";
inline constexpr std::string_view kCGImagePropertyPNGSoftware = "Software";
inline constexpr std::string_view kCGImagePropertyPNGSource = "Source";
inline constexpr std::string_view kCGImagePropertyPNGsRGBIntent = "sRGBIntent";
inline constexpr std::string_view kCGImagePropertyPNGTitle = "Title";
inline constexpr std::string_view kCGImagePropertyPNGWarning = "Warning";
inline constexpr std::string_view kCGImagePropertyPNGXPixelsPerMeter = "XPixelsPerMeter";
inline constexpr std::string_view kCGImagePropertyPNGYPixelsPerMeter = "YPixelsPerMeter";

// Keys of "{GIF}". Times in seconds.
inline constexpr std::string_view kCGImagePropertyGIFLoopCount = "LoopCount";
inline constexpr std::string_view kCGImagePropertyGIFDelayTime = "DelayTime";
inline constexpr std::string_view kCGImagePropertyGIFUnclampedDelayTime = "UnclampedDelayTime";
inline constexpr std::string_view kCGImagePropertyGIFHasGlobalColorMap = "HasGlobalColorMap";
inline constexpr std::string_view kCGImagePropertyGIFCanvasPixelWidth = "CanvasPixelWidth";
inline constexpr std::string_view kCGImagePropertyGIFCanvasPixelHeight = "CanvasPixelHeight";

// Keys of "{WebP}". Times in seconds.
inline constexpr std::string_view kCGImagePropertyWebPLoopCount = "LoopCount";
inline constexpr std::string_view kCGImagePropertyWebPDelayTime = "DelayTime";
inline constexpr std::string_view kCGImagePropertyWebPUnclampedDelayTime = "UnclampedDelayTime";
inline constexpr std::string_view kCGImagePropertyWebPCanvasPixelWidth = "CanvasPixelWidth";
inline constexpr std::string_view kCGImagePropertyWebPCanvasPixelHeight = "CanvasPixelHeight";

} // namespace exifcard

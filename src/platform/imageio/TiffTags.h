#pragma once

#include <cstdint>

namespace exifcard {

// Tags of a TIFF directory that describe its pixels or hold other blocks.
inline constexpr std::uint16_t kTiffSubfileType = 0x00fe;
inline constexpr std::uint16_t kTiffImageWidth = 0x0100;
inline constexpr std::uint16_t kTiffImageLength = 0x0101;
inline constexpr std::uint16_t kTiffBitsPerSample = 0x0102;
inline constexpr std::uint16_t kTiffCompression = 0x0103;
inline constexpr std::uint16_t kTiffPhotometric = 0x0106;
inline constexpr std::uint16_t kTiffMake = 0x010f;
inline constexpr std::uint16_t kTiffSubDirectories = 0x014a;
inline constexpr std::uint16_t kTiffExtraSamples = 0x0152;
inline constexpr std::uint16_t kTiffSampleFormat = 0x0153;
inline constexpr std::uint16_t kTiffXmp = 0x02bc;
inline constexpr std::uint16_t kTiffIptc = 0x83bb;
inline constexpr std::uint16_t kTiffImageResources = 0x8649;
inline constexpr std::uint16_t kTiffExif = 0x8769;
inline constexpr std::uint16_t kTiffIccProfile = 0x8773;
inline constexpr std::uint16_t kExifPixelXDimension = 0xa002;
inline constexpr std::uint16_t kExifPixelYDimension = 0xa003;
inline constexpr std::uint16_t kTiffDngVersion = 0xc612;
inline constexpr std::uint16_t kTiffActiveArea = 0xc68d;

/// "PhotometricInterpretation" of a sensor's own mosaic.
inline constexpr std::uint32_t kTiffColorFilterArray = 32803;

} // namespace exifcard

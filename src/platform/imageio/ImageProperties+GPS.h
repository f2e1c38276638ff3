#pragma once

#include <string_view>

namespace exifcard {

// Keys of "{GPS}". Angles in degrees, altitude in metres; both without sign, the reference beside tells it.
inline constexpr std::string_view kCGImagePropertyGPSVersion = "GPSVersion";
inline constexpr std::string_view kCGImagePropertyGPSLatitudeRef = "LatitudeRef";
inline constexpr std::string_view kCGImagePropertyGPSLatitude = "Latitude";
inline constexpr std::string_view kCGImagePropertyGPSLongitudeRef = "LongitudeRef";
inline constexpr std::string_view kCGImagePropertyGPSLongitude = "Longitude";
inline constexpr std::string_view kCGImagePropertyGPSAltitudeRef = "AltitudeRef";
inline constexpr std::string_view kCGImagePropertyGPSAltitude = "Altitude";
inline constexpr std::string_view kCGImagePropertyGPSTimeStamp = "TimeStamp";
inline constexpr std::string_view kCGImagePropertyGPSSatellites = "Satellites";
inline constexpr std::string_view kCGImagePropertyGPSStatus = "Status";
inline constexpr std::string_view kCGImagePropertyGPSMeasureMode = "MeasureMode";
inline constexpr std::string_view kCGImagePropertyGPSDOP = "DOP";
inline constexpr std::string_view kCGImagePropertyGPSSpeedRef = "SpeedRef";
inline constexpr std::string_view kCGImagePropertyGPSSpeed = "Speed";
inline constexpr std::string_view kCGImagePropertyGPSTrackRef = "TrackRef";
inline constexpr std::string_view kCGImagePropertyGPSTrack = "Track";
inline constexpr std::string_view kCGImagePropertyGPSImgDirectionRef = "ImgDirectionRef";
inline constexpr std::string_view kCGImagePropertyGPSImgDirection = "ImgDirection";
inline constexpr std::string_view kCGImagePropertyGPSMapDatum = "MapDatum";
inline constexpr std::string_view kCGImagePropertyGPSDestLatitudeRef = "DestLatitudeRef";
inline constexpr std::string_view kCGImagePropertyGPSDestLatitude = "DestLatitude";
inline constexpr std::string_view kCGImagePropertyGPSDestLongitudeRef = "DestLongitudeRef";
inline constexpr std::string_view kCGImagePropertyGPSDestLongitude = "DestLongitude";
inline constexpr std::string_view kCGImagePropertyGPSDestBearingRef = "DestBearingRef";
inline constexpr std::string_view kCGImagePropertyGPSDestBearing = "DestBearing";
inline constexpr std::string_view kCGImagePropertyGPSDestDistanceRef = "DestDistanceRef";
inline constexpr std::string_view kCGImagePropertyGPSDestDistance = "DestDistance";
inline constexpr std::string_view kCGImagePropertyGPSProcessingMethod = "ProcessingMethod";
inline constexpr std::string_view kCGImagePropertyGPSAreaInformation = "AreaInformation";
inline constexpr std::string_view kCGImagePropertyGPSDateStamp = "DateStamp";
// Intended: the platform spells the name, not the key, without its "i".
inline constexpr std::string_view kCGImagePropertyGPSDifferental = "Differential";
inline constexpr std::string_view kCGImagePropertyGPSHPositioningError = "HPositioningError";

} // namespace exifcard

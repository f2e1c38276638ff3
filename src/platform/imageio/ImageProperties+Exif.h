#pragma once

#include <string_view>

namespace exifcard {

// Keys of "{Exif}": the shooting settings. Times in seconds, lengths in millimetres, distances in metres.
inline constexpr std::string_view kCGImagePropertyExifExposureTime = "ExposureTime";
inline constexpr std::string_view kCGImagePropertyExifFNumber = "FNumber";
inline constexpr std::string_view kCGImagePropertyExifExposureProgram = "ExposureProgram";
inline constexpr std::string_view kCGImagePropertyExifSpectralSensitivity = "SpectralSensitivity";
inline constexpr std::string_view kCGImagePropertyExifISOSpeedRatings = "ISOSpeedRatings";
inline constexpr std::string_view kCGImagePropertyExifOECF = "OECF";
inline constexpr std::string_view kCGImagePropertyExifSensitivityType = "SensitivityType";
inline constexpr std::string_view kCGImagePropertyExifStandardOutputSensitivity = "StandardOutputSensitivity";
inline constexpr std::string_view kCGImagePropertyExifRecommendedExposureIndex = "RecommendedExposureIndex";
inline constexpr std::string_view kCGImagePropertyExifISOSpeed = "ISOSpeed";
inline constexpr std::string_view kCGImagePropertyExifISOSpeedLatitudeyyy = "ISOSpeedLatitudeyyy";
inline constexpr std::string_view kCGImagePropertyExifISOSpeedLatitudezzz = "ISOSpeedLatitudezzz";
inline constexpr std::string_view kCGImagePropertyExifVersion = "ExifVersion";
inline constexpr std::string_view kCGImagePropertyExifDateTimeOriginal = "DateTimeOriginal";
inline constexpr std::string_view kCGImagePropertyExifDateTimeDigitized = "DateTimeDigitized";
inline constexpr std::string_view kCGImagePropertyExifOffsetTime = "OffsetTime";
inline constexpr std::string_view kCGImagePropertyExifOffsetTimeOriginal = "OffsetTimeOriginal";
inline constexpr std::string_view kCGImagePropertyExifOffsetTimeDigitized = "OffsetTimeDigitized";
inline constexpr std::string_view kCGImagePropertyExifComponentsConfiguration = "ComponentsConfiguration";
inline constexpr std::string_view kCGImagePropertyExifCompressedBitsPerPixel = "CompressedBitsPerPixel";
inline constexpr std::string_view kCGImagePropertyExifShutterSpeedValue = "ShutterSpeedValue";
inline constexpr std::string_view kCGImagePropertyExifApertureValue = "ApertureValue";
inline constexpr std::string_view kCGImagePropertyExifBrightnessValue = "BrightnessValue";
inline constexpr std::string_view kCGImagePropertyExifExposureBiasValue = "ExposureBiasValue";
inline constexpr std::string_view kCGImagePropertyExifMaxApertureValue = "MaxApertureValue";
inline constexpr std::string_view kCGImagePropertyExifSubjectDistance = "SubjectDistance";
inline constexpr std::string_view kCGImagePropertyExifMeteringMode = "MeteringMode";
inline constexpr std::string_view kCGImagePropertyExifLightSource = "LightSource";
inline constexpr std::string_view kCGImagePropertyExifFlash = "Flash";
inline constexpr std::string_view kCGImagePropertyExifFocalLength = "FocalLength";
inline constexpr std::string_view kCGImagePropertyExifSubjectArea = "SubjectArea";
inline constexpr std::string_view kCGImagePropertyExifMakerNote = "MakerNote";
inline constexpr std::string_view kCGImagePropertyExifUserComment = "UserComment";
inline constexpr std::string_view kCGImagePropertyExifSubsecTime = "SubsecTime";
inline constexpr std::string_view kCGImagePropertyExifSubsecTimeOriginal = "SubsecTimeOriginal";
/// The platform keeps an older, misspelt name of it.
inline constexpr std::string_view kCGImagePropertyExifSubsecTimeOrginal = "SubsecTimeOriginal";
inline constexpr std::string_view kCGImagePropertyExifSubsecTimeDigitized = "SubsecTimeDigitized";
inline constexpr std::string_view kCGImagePropertyExifFlashPixVersion = "FlashPixVersion";
inline constexpr std::string_view kCGImagePropertyExifColorSpace = "ColorSpace";
inline constexpr std::string_view kCGImagePropertyExifPixelXDimension = "PixelXDimension";
inline constexpr std::string_view kCGImagePropertyExifPixelYDimension = "PixelYDimension";
inline constexpr std::string_view kCGImagePropertyExifRelatedSoundFile = "RelatedSoundFile";
inline constexpr std::string_view kCGImagePropertyExifFlashEnergy = "FlashEnergy";
inline constexpr std::string_view kCGImagePropertyExifSpatialFrequencyResponse = "SpatialFrequencyResponse";
inline constexpr std::string_view kCGImagePropertyExifFocalPlaneXResolution = "FocalPlaneXResolution";
inline constexpr std::string_view kCGImagePropertyExifFocalPlaneYResolution = "FocalPlaneYResolution";
inline constexpr std::string_view kCGImagePropertyExifFocalPlaneResolutionUnit = "FocalPlaneResolutionUnit";
inline constexpr std::string_view kCGImagePropertyExifSubjectLocation = "SubjectLocation";
inline constexpr std::string_view kCGImagePropertyExifExposureIndex = "ExposureIndex";
inline constexpr std::string_view kCGImagePropertyExifSensingMethod = "SensingMethod";
inline constexpr std::string_view kCGImagePropertyExifFileSource = "FileSource";
inline constexpr std::string_view kCGImagePropertyExifSceneType = "SceneType";
inline constexpr std::string_view kCGImagePropertyExifCFAPattern = "CFAPattern";
inline constexpr std::string_view kCGImagePropertyExifCustomRendered = "CustomRendered";
inline constexpr std::string_view kCGImagePropertyExifExposureMode = "ExposureMode";
inline constexpr std::string_view kCGImagePropertyExifWhiteBalance = "WhiteBalance";
inline constexpr std::string_view kCGImagePropertyExifDigitalZoomRatio = "DigitalZoomRatio";
inline constexpr std::string_view kCGImagePropertyExifFocalLenIn35mmFilm = "FocalLenIn35mmFilm";
inline constexpr std::string_view kCGImagePropertyExifSceneCaptureType = "SceneCaptureType";
inline constexpr std::string_view kCGImagePropertyExifGainControl = "GainControl";
inline constexpr std::string_view kCGImagePropertyExifContrast = "Contrast";
inline constexpr std::string_view kCGImagePropertyExifSaturation = "Saturation";
inline constexpr std::string_view kCGImagePropertyExifSharpness = "Sharpness";
inline constexpr std::string_view kCGImagePropertyExifDeviceSettingDescription = "DeviceSettingDescription";
inline constexpr std::string_view kCGImagePropertyExifSubjectDistRange = "SubjectDistRange";
inline constexpr std::string_view kCGImagePropertyExifImageUniqueID = "ImageUniqueID";
inline constexpr std::string_view kCGImagePropertyExifCameraOwnerName = "CameraOwnerName";
inline constexpr std::string_view kCGImagePropertyExifBodySerialNumber = "BodySerialNumber";
inline constexpr std::string_view kCGImagePropertyExifLensSpecification = "LensSpecification";
inline constexpr std::string_view kCGImagePropertyExifLensMake = "LensMake";
inline constexpr std::string_view kCGImagePropertyExifLensModel = "LensModel";
inline constexpr std::string_view kCGImagePropertyExifLensSerialNumber = "LensSerialNumber";
inline constexpr std::string_view kCGImagePropertyExifCompositeImage = "CompositeImage";
inline constexpr std::string_view kCGImagePropertyExifSourceImageNumberOfCompositeImage =
    "SourceImageNumberOfCompositeImage";
inline constexpr std::string_view kCGImagePropertyExifSourceExposureTimesOfCompositeImage =
    "SourceExposureTimesOfCompositeImage";
inline constexpr std::string_view kCGImagePropertyExifGamma = "Gamma";

// Keys of "{ExifAux}": what maker notes and editors tell of lens and body.
inline constexpr std::string_view kCGImagePropertyExifAuxLensInfo = "LensInfo";
inline constexpr std::string_view kCGImagePropertyExifAuxLensModel = "LensModel";
inline constexpr std::string_view kCGImagePropertyExifAuxSerialNumber = "SerialNumber";
inline constexpr std::string_view kCGImagePropertyExifAuxLensID = "LensID";
inline constexpr std::string_view kCGImagePropertyExifAuxLensSerialNumber = "LensSerialNumber";
inline constexpr std::string_view kCGImagePropertyExifAuxImageNumber = "ImageNumber";
inline constexpr std::string_view kCGImagePropertyExifAuxFlashCompensation = "FlashCompensation";
inline constexpr std::string_view kCGImagePropertyExifAuxOwnerName = "OwnerName";
inline constexpr std::string_view kCGImagePropertyExifAuxFirmware = "Firmware";

} // namespace exifcard

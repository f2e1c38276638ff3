#pragma once

#include "metadata/ExifInformation.h"
#include "metadata/FieldKeys.h"
#include "platform/foundation/LocalizedString.h"

#include <cstddef>
#include <iterator>

/// The table behind `fieldKeys`, for the formatters' sources alone.
namespace exifcard::fieldtable {

constexpr FieldKey row(std::string_view key, const char* label, FieldKey::Formatter formatter) {
    return {key, FieldKind::Row, label, formatter, {}};
}

constexpr FieldKey emptyRow(std::string_view key, FieldKey::Formatter formatter) {
    return {key, FieldKind::EmptyRow, nullptr, formatter, {}};
}

constexpr FieldKey raw(std::string_view key, std::string_view storedUnder) {
    return {key, FieldKind::Raw, nullptr, nullptr, storedUnder};
}

inline constexpr FieldKey kFields[] = {
    row("ApertureValue", N_("Aperture (F-number)"), &ExifInformation::ApertureValue),
    row("ApertureMax", N_("Aperture Max"), &ExifInformation::ApertureMax),
    raw("FNumber", "FNumber"),
    row("ISOSpeedRatings", N_("ISO Sensitivity"), &ExifInformation::ISOSpeedRatings),
    row("ISOSpeedValue", N_("ISO Sensitivity"), &ExifInformation::ISOSpeedValue),
    row("FocalLength", N_("Focal Length"), &ExifInformation::FocalLength),
    row("FocalLenIn35mmFilm", N_("Focal Length in 35 mm"), &ExifInformation::FocalLenIn35mmFilm),
    row("ExposureTime", N_("Exposure Time"), &ExifInformation::ExposureTime),
    row("ShutterSpeedStringValue", N_("Exposure Time"), &ExifInformation::ShutterSpeedStringValue),
    row("ExposureBiasValue", N_("Exposure Bias Value"), &ExifInformation::ExposureBiasValue),
    row("ExposureMode", N_("Exposure Mode"), &ExifInformation::ExposureMode),
    row("ExposureProgram", N_("Exposure Program"), &ExifInformation::ExposureProgram),
    row("Flash", N_("Flash"), &ExifInformation::Flash),
    row("MeteringMode", N_("Metering Mode"), &ExifInformation::MeteringMode),
    row("WhiteBalance", N_("White Balance"), &ExifInformation::WhiteBalance),
    row("LightSource", N_("Light Source"), &ExifInformation::LightSource),
    row("SensitivityType", N_("Sensitivity Type"), &ExifInformation::SensitivityType),
    row("Sharpness", N_("Sharpness"), &ExifInformation::Sharpness),
    row("Contrast", N_("Contrast"), &ExifInformation::Contrast),
    row("Saturation", N_("Saturation"), &ExifInformation::Saturation),
    row("SceneType", N_("Scene Type"), &ExifInformation::SceneType),
    row("SceneCaptureType", N_("Scene Capture Type"), &ExifInformation::SceneCaptureType),
    row("SensingMethod", N_("Sensing method"), &ExifInformation::SensingMethod),
    row("SubjectDistRange", N_("Subject Distance Range"), &ExifInformation::SubjectDistRange),
    row("GainControl", N_("Gain Control"), &ExifInformation::GainControl),
    row("CustomRendered", N_("Custom Rendered"), &ExifInformation::CustomRendered),
    row("DigitalZoomRatio", N_("Digital Zoom Ratio"), &ExifInformation::DigitalZoomRatio),
    row("ResolutionInMegaPixel", N_("Resolution"), &ExifInformation::ResolutionInMegaPixel),
    row("AspectRatioFraction", N_("Aspect Ratio"), &ExifInformation::AspectRatioFraction),
    row("ColorSpace", N_("Color Space"), &ExifInformation::ColorSpace),
    row("ColorProfile", N_("Profile Name"), &ExifInformation::ColorProfile),
    row("ColorModel", N_("Color Model"), &ExifInformation::ColorModel),
    row("Depth", N_("Depth"), &ExifInformation::Depth),
    row("DPIHeight", N_("DPI Height"), &ExifInformation::DPIHeight),
    row("DPIWidth", N_("DPI Width"), &ExifInformation::DPIWidth),
    row("Orientation", N_("Orientation"), &ExifInformation::Orientation),
    row("FileSize", N_("File Size"), &ExifInformation::FileSize),
    row("Duration", N_("Duration"), &ExifInformation::Duration),
    row("FramesPerSecond", N_("Frames per second (FPS)"), &ExifInformation::FramesPerSecond),
    row("DateTaken", N_("Date Taken"), &ExifInformation::DateTaken),
    row("EditedDate", N_("Edited Date"), &ExifInformation::EditedDate),
    row("FilmMode", N_("Film mode"), &ExifInformation::FilmMode),
    row("StarRating", N_("Star Rating"), &ExifInformation::StarRating),
    row("Make", N_("Make"), &ExifInformation::Make),
    row("Model", N_("Model"), &ExifInformation::Model),
    emptyRow("CameraMakeAndModel", &ExifInformation::CameraMakeAndModel),
    row("Software", N_("Software"), &ExifInformation::Software),
    row("Artist", N_("Artist"), &ExifInformation::Artist),
    row("Copyright", N_("Copyright"), &ExifInformation::Copyright),
    row("MakerNote", N_("Maker Note"), &ExifInformation::MakerNote),
    row("LensMake", N_("Lens Make"), &ExifInformation::LensMake),
    row("LensModel", N_("Lens Model"), &ExifInformation::LensModel),
    row("LensSerialNumber", N_("Lens SerialNumber"), &ExifInformation::LensSerialNumber),
    row("CameraSerialNumber", N_("Camera SerialNumber"), &ExifInformation::CameraSerialNumber),
    row("Caption", N_("Caption"), &ExifInformation::Caption),
    row("CaptionAbstract", N_("Caption"), &ExifInformation::CaptionAbstract),
    row("Title", N_("Title"), &ExifInformation::Title),
    row("Headline", N_("Headline"), &ExifInformation::Headline),
    row("Keywords", N_("Keywords"), &ExifInformation::Keywords),
    row("UserComment", N_("User Comment"), &ExifInformation::UserComment),
    row("FileSource", N_("File Source"), &ExifInformation::FileSource),
    row("shutterCount", N_("Shutter Count"), &ExifInformation::shutterCount),
    row("FlashPixVersion", N_("FlashpixVersion"), &ExifInformation::FlashPixVersion),
    row("CompressedBitsPerPixel", N_("Compressed Bits Per Pixel"), &ExifInformation::CompressedBitsPerPixel),
    row("GPS", N_("GPS"), &ExifInformation::GPS),
    row("GPSAltitude", N_("Altitude"), &ExifInformation::GPSAltitude),
    row("GPSSpeed", N_("Speed"), &ExifInformation::GPSSpeed),
    row("GPSDirection", N_("GPS Direction"), &ExifInformation::GPSDirection),
    row("LocationName", N_("Location"), &ExifInformation::LocationName),
    row("MapView", N_("Map"), &ExifInformation::MapView),
    row("Map", N_("Map"), &ExifInformation::Map),
    raw("SubjectArea", "SubjectArea"),
    raw("SubsecTime", "SubsecTime"),
    raw("SubsecTimeDigitized", "SubsecTimeDigitized"),
    // Intended: always nothing.
    raw("SubsecTimeOriginal", ""),
    raw("DateTime", "DateTime"),
    raw("DateTimeOriginal", "DateTimeOriginal"),
    raw("DateTimeDigitized", "DateTimeDigitized"),
    raw("PixelWidth", "PixelWidth"),
    raw("PixelHeight", "PixelHeight"),
    raw("Orientation_TIFF", "Orientation"),
    raw("ResolutionUnit", "ResolutionUnit"),
    raw("XResolution", "XResolution"),
    raw("YResolution", "YResolution"),
    raw("ComponentsConfiguration", "ComponentsConfiguration"),
};

/// A field of the table, named by its key; a misspelt one does not compile.
class FieldName {
public:
    // NOLINTNEXTLINE(google-explicit-constructor): formatters name their field by its key.
    consteval FieldName(const char* key) {
        while (kFields[_index].key != key) {
            ++_index;
        }
    }

    const FieldKey& field() const { return kFields[_index]; }

private:
    std::size_t _index = 0;
};

} // namespace exifcard::fieldtable

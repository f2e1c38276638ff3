#include "metadata/ExifInformation.h"

#include "appearance/Apperance.h"
#include "metadata/RowParts.h"
#include "platform/foundation/FormatString.h"
#include "platform/foundation/Log.h"
#include "platform/imageio/ImageProperties.h"

#include <algorithm>
#include <iterator>

// Every enumeration reads an absent code as 0.

namespace exifcard {
namespace {

constexpr CodeText kExposureMode[] = {
    {0, N_("Auto exposure")},
    {1, N_("Manual exposure")},
    {2, N_("Auto bracket")},
};

constexpr CodeText kExposureProgram[] = {
    {0, N_("Not defined")},
    {1, N_("Manual")},
    {2, N_("Normal program")},
    {3, N_("Aperture priority")},
    {4, N_("Shutter priority")},
    {5, N_("Creative program (biased toward depth of field)")},
    {6, N_("Action program (biased toward fast shutter speed)")},
    {7, N_("Portrait mode (for closeup photos with the background out of focus)")},
    {8, N_("Landscape mode (for landscape photos with the background in focus)")},
};

constexpr CodeText kMeteringMode[] = {
    {0, N_("Unknown")},
    {1, N_("Average")},
    {2, N_("Center Weighted Average")},
    {3, N_("Spot")},
    {4, N_("MultiSpot")},
    {5, N_("Pattern")},
    {6, N_("Partial")},
    {255, N_("Other")},
};

constexpr CodeText kWhiteBalance[] = {
    {0, N_("Auto white balance")},
    {1, N_("Manual white balance")},
};

constexpr CodeText kSceneType[] = {
    {1, N_("Image was directly photographed")},
};

constexpr CodeText kSceneCaptureType[] = {
    {0, N_("Standard")},
    {1, N_("Landscape")},
    {2, N_("Portrait")},
    {3, N_("Night scene")},
};

constexpr CodeText kSensingMethod[] = {
    {1, N_("Not defined")},
    {2, N_("One-chip color area sensor")},
    {3, N_("Two-chip color area sensor")},
    {4, N_("Three-chip color area sensor")},
    {5, N_("Color sequential area sensor")},
    {7, N_("Trilinear sensor")},
    {8, N_("Color sequential linear sensor")},
};

constexpr CodeText kSensitivityType[] = {
    {0, N_("Unknown")},
    {1, N_("Standard Output Sensitivity")},
    {2, N_("Recommended Exposure Index")},
    {3, N_("ISO Speed")},
    {4, N_("Standard Output Sensitivity and Recommended Exposure Index")},
    {5, N_("Standard Output Sensitivity and ISO Speed")},
    {6, N_("Recommended Exposure Index and ISO Speed")},
    {7, N_("Standard Output Sensitivity, Recommended Exposure Index and ISO Speed")},
};

constexpr CodeText kSubjectDistRange[] = {
    {0, N_("Unknown")},
    {1, N_("Macro")},
    {2, N_("Close")},
    {3, N_("Distant")},
};

constexpr CodeText kSharpnessAndContrast[] = {
    {0, N_("Normal")},
    {1, N_("Soft")},
    {2, N_("Hard")},
};

constexpr CodeText kCustomRendered[] = {
    {0, N_("Normal process")},
    {1, N_("Custom process")},
    {3, N_("HDR")},
    {6, N_("Panorama")},
    {8, N_("Portrait")},
};

constexpr CodeText kSaturation[] = {
    {0, N_("Normal")},
    {1, N_("Low saturation")},
    {2, N_("High saturation")},
};

constexpr CodeText kLightSource[] = {
    {0, N_("Unknown")},
    {1, N_("Daylight")},
    {2, N_("Fluorescent")},
    {3, N_("Tungsten (incandescent light)")},
    {4, N_("Flash")},
    {9, N_("Fine weather")},
    {10, N_("Cloudy weather")},
    {11, N_("Shade")},
    {12, N_("Daylight fluorescent (D 5700 - 7100K)")},
    {13, N_("Day white fluorescent (N 4600 - 5400K)")},
    {14, N_("Cool white fluorescent (W 3900 - 4500K)")},
    {15, N_("White fluorescent (WW 3200 - 3700K)")},
    {17, N_("Standard light A")},
    {18, N_("Standard light B")},
    {19, N_("Standard light C")},
    {20, N_("D55")},
    {21, N_("D65")},
    {22, N_("D75")},
    {23, N_("D50")},
    {24, N_("ISO studio tungsten")},
    {25, N_("Other light source")},
};

struct FlashText {
    std::int64_t code;
    const char* text;
    std::string_view icon;
};

constexpr std::string_view kFired = "flash_fired";
constexpr std::string_view kNotFired = "flash_not_fired";
constexpr std::string_view kAutomaticFired = "flash_automatic_fired";
constexpr std::string_view kAutomaticNotFired = "flash_automatic_not_fired";

constexpr FlashText kFlash[] = {
    {0x00, N_("Flash did not fire"), kNotFired},
    {0x01, N_("Flash fired"), kFired},
    {0x05, N_("Strobe return light not detected"), kFired},
    {0x07, N_("Strobe return light detected"), kFired},
    {0x09, N_("Flash fired, compulsory flash mode"), kFired},
    {0x0D, N_("Flash fired, compulsory flash mode, return light not detected"), kFired},
    {0x0F, N_("Flash fired, compulsory flash mode, return light detected"), kFired},
    {0x10, N_("Flash did not fire, compulsory flash mode"), kNotFired},
    {0x18, N_("Flash did not fire, auto mode"), kAutomaticNotFired},
    {0x19, N_("Flash fired, auto mode"), kAutomaticFired},
    {0x1D, N_("Flash fired, auto mode, return light not detected"), kAutomaticFired},
    {0x1F, N_("Flash fired, auto mode, return light detected"), kAutomaticFired},
    {0x20, N_("No flash function"), kNotFired},
    {0x41, N_("Flash fired, red-eye reduction mode"), kFired},
    {0x45, N_("Flash fired, red-eye reduction mode, return light not detected"), kFired},
    {0x47, N_("Flash fired, red-eye reduction mode, return light detected"), kFired},
    {0x49, N_("Flash fired, compulsory flash mode, red-eye reduction mode"), kFired},
    {0x4D, N_("Flash fired, compulsory flash mode, red-eye reduction mode, return light not detected"),
        kFired},
    {0x4F, N_("Flash fired, compulsory flash mode, red-eye reduction mode, return light detected"), kFired},
    {0x59, N_("Flash fired, auto mode, red-eye reduction mode"), kAutomaticFired},
    {0x5D, N_("Flash fired, auto mode, return light not detected, red-eye reduction mode"), kAutomaticFired},
    {0x5F, N_("Flash fired, auto mode, return light detected, red-eye reduction mode"), kAutomaticFired},
};

/// "Unknown 0058", with a debug line.
std::string unknownFlashText(std::int64_t code) {
    const std::string hexadecimal = stringWithFormat("%04llX", {code});
    if (isDebugLogWanted()) {
        debugLog(stringWithFormat("__Unknown_FLASH %@ and %lld", {hexadecimal, code}));
    }
    return localizedStringWithFormat(N_("Unknown %@"), {hexadecimal});
}

std::int64_t codeIn(const ExifInformation& record, std::string_view property) {
    return objectIn(record.exifDic, property).integerValue();
}

ExifValue codeRow(const ExifInformation& record,
    FieldName name,
    std::string_view property,
    std::span<const CodeText> table) {
    return rowWithExifRule(record, name, textForCode(table, codeIn(record, property)));
}

} // namespace

ExifValue ExifInformation::ExposureMode() const {
    return codeRow(*this, "ExposureMode", kCGImagePropertyExifExposureMode, kExposureMode);
}

ExifValue ExifInformation::ExposureProgram() const {
    return codeRow(*this, "ExposureProgram", kCGImagePropertyExifExposureProgram, kExposureProgram);
}

ExifValue ExifInformation::MeteringMode() const {
    return codeRow(*this, "MeteringMode", kCGImagePropertyExifMeteringMode, kMeteringMode);
}

ExifValue ExifInformation::WhiteBalance() const {
    return codeRow(*this, "WhiteBalance", kCGImagePropertyExifWhiteBalance, kWhiteBalance);
}

ExifValue ExifInformation::SceneType() const {
    const char* const text = findText(kSceneType, codeIn(*this, kCGImagePropertyExifSceneType));
    // Intended: the one "unknown" with a small letter.
    return rowWithExifRule(
        *this, "SceneType", std::string(localizedString(text != nullptr ? text : N_("unknown"))));
}

ExifValue ExifInformation::SceneCaptureType() const {
    return codeRow(*this, "SceneCaptureType", kCGImagePropertyExifSceneCaptureType, kSceneCaptureType);
}

ExifValue ExifInformation::SensingMethod() const {
    return codeRow(*this, "SensingMethod", kCGImagePropertyExifSensingMethod, kSensingMethod);
}

ExifValue ExifInformation::SensitivityType() const {
    return codeRow(*this, "SensitivityType", kCGImagePropertyExifSensitivityType, kSensitivityType);
}

ExifValue ExifInformation::SubjectDistRange() const {
    return codeRow(*this, "SubjectDistRange", kCGImagePropertyExifSubjectDistRange, kSubjectDistRange);
}

ExifValue ExifInformation::Sharpness() const {
    return codeRow(*this, "Sharpness", kCGImagePropertyExifSharpness, kSharpnessAndContrast);
}

ExifValue ExifInformation::Contrast() const {
    // Intended: unlike the sharpness, an unknown contrast stays empty even without EXIF.
    return rowWithoutRule(
        "Contrast", textForCode(kSharpnessAndContrast, codeIn(*this, kCGImagePropertyExifContrast)));
}

ExifValue ExifInformation::CustomRendered() const {
    return codeRow(*this, "CustomRendered", kCGImagePropertyExifCustomRendered, kCustomRendered);
}

ExifValue ExifInformation::GainControl() const {
    // Intended: the gain control shows the texts of scene capture types.
    return codeRow(*this, "GainControl", kCGImagePropertyExifGainControl, kSceneCaptureType);
}

ExifValue ExifInformation::Saturation() const {
    // Intended: the saturation row reads the gain-control tag.
    return codeRow(*this, "Saturation", kCGImagePropertyExifGainControl, kSaturation);
}

ExifValue ExifInformation::LightSource() const {
    // Intended: the light source row reads the gain-control tag.
    return codeRow(*this, "LightSource", kCGImagePropertyExifGainControl, kLightSource);
}

ExifValue ExifInformation::Flash() const {
    const auto code = codeIn(*this, kCGImagePropertyExifFlash);
    const auto* const entry = std::ranges::find(kFlash, code, &FlashText::code);
    const bool isKnown = entry != std::end(kFlash);
    auto row = rowWithExifRule(
        *this, "Flash", isKnown ? std::string(localizedString(entry->text)) : unknownFlashText(code));
    row.exifValueIconFileName = Apperance::themedImageFileNameFor(isKnown ? entry->icon : kFired);
    return row;
}

} // namespace exifcard

#include "metadata/Records.h"
#include "platform/foundation/Log.h"
#include "platform/uivalues/UIDevice.h"
#include "settings/PersistanceManager.h"

#include <gtest/gtest.h>

#include <vector>

namespace exifcard {
namespace {

struct CodeCase {
    Formatter formatter;
    std::string_view key;
    int code;
    std::string text; ///< "Not available" where the table has a gap.
};

// Ends and gaps of each table.
const CodeCase kCodes[] = {
    {&ExifInformation::ExposureMode, kCGImagePropertyExifExposureMode, 0, "Auto exposure"},
    {&ExifInformation::ExposureMode, kCGImagePropertyExifExposureMode, 2, "Auto bracket"},
    {&ExifInformation::ExposureMode, kCGImagePropertyExifExposureMode, 3, "Not available"},
    {&ExifInformation::ExposureProgram, kCGImagePropertyExifExposureProgram, 0, "Not defined"},
    {&ExifInformation::ExposureProgram, kCGImagePropertyExifExposureProgram, 8,
        "Landscape mode (for landscape photos with the background in focus)"},
    {&ExifInformation::ExposureProgram, kCGImagePropertyExifExposureProgram, 9, "Not available"},
    {&ExifInformation::MeteringMode, kCGImagePropertyExifMeteringMode, 0, "Unknown"},
    {&ExifInformation::MeteringMode, kCGImagePropertyExifMeteringMode, 6, "Partial"},
    {&ExifInformation::MeteringMode, kCGImagePropertyExifMeteringMode, 7, "Not available"},
    {&ExifInformation::MeteringMode, kCGImagePropertyExifMeteringMode, 255, "Other"},
    {&ExifInformation::WhiteBalance, kCGImagePropertyExifWhiteBalance, 1, "Manual white balance"},
    {&ExifInformation::WhiteBalance, kCGImagePropertyExifWhiteBalance, -1, "Not available"},
    {&ExifInformation::SceneType, kCGImagePropertyExifSceneType, 1, "Image was directly photographed"},
    {&ExifInformation::SceneType, kCGImagePropertyExifSceneType, 0, "unknown"},
    {&ExifInformation::SceneType, kCGImagePropertyExifSceneType, 2, "unknown"},
    {&ExifInformation::SceneCaptureType, kCGImagePropertyExifSceneCaptureType, 3, "Night scene"},
    {&ExifInformation::SceneCaptureType, kCGImagePropertyExifSceneCaptureType, 4, "Not available"},
    {&ExifInformation::SensingMethod, kCGImagePropertyExifSensingMethod, 0, "Not available"},
    {&ExifInformation::SensingMethod, kCGImagePropertyExifSensingMethod, 1, "Not defined"},
    {&ExifInformation::SensingMethod, kCGImagePropertyExifSensingMethod, 6, "Not available"},
    {&ExifInformation::SensingMethod, kCGImagePropertyExifSensingMethod, 8, "Color sequential linear sensor"},
    {&ExifInformation::SensitivityType, kCGImagePropertyExifSensitivityType, 7,
        "Standard Output Sensitivity, Recommended Exposure Index and ISO Speed"},
    {&ExifInformation::SensitivityType, kCGImagePropertyExifSensitivityType, 8, "Not available"},
    {&ExifInformation::SubjectDistRange, kCGImagePropertyExifSubjectDistRange, 3, "Distant"},
    {&ExifInformation::Sharpness, kCGImagePropertyExifSharpness, 2, "Hard"},
    {&ExifInformation::Sharpness, kCGImagePropertyExifSharpness, 3, "Not available"},
    {&ExifInformation::Contrast, kCGImagePropertyExifContrast, 1, "Soft"},
    {&ExifInformation::Contrast, kCGImagePropertyExifContrast, 3, ""}, // Never "Not available".
    {&ExifInformation::CustomRendered, kCGImagePropertyExifCustomRendered, 2, "Not available"},
    {&ExifInformation::CustomRendered, kCGImagePropertyExifCustomRendered, 3, "HDR"},
    {&ExifInformation::CustomRendered, kCGImagePropertyExifCustomRendered, 8, "Portrait"},
    {&ExifInformation::GainControl, kCGImagePropertyExifGainControl, 1, "Landscape"},
    {&ExifInformation::Saturation, kCGImagePropertyExifGainControl, 2, "High saturation"},
    {&ExifInformation::Saturation, kCGImagePropertyExifGainControl, 3, "Not available"},
    {&ExifInformation::Saturation, kCGImagePropertyExifSaturation, 2, "Normal"},
    {&ExifInformation::LightSource, kCGImagePropertyExifGainControl, 4, "Flash"},
    {&ExifInformation::LightSource, kCGImagePropertyExifGainControl, 5, "Not available"},
    {&ExifInformation::LightSource, kCGImagePropertyExifGainControl, 16, "Not available"},
    {&ExifInformation::LightSource, kCGImagePropertyExifGainControl, 25, "Other light source"},
    {&ExifInformation::LightSource, kCGImagePropertyExifLightSource, 25, "Unknown"},
};

TEST(ExifInformationCaptureTest, NamesTheCodesOfItsTables) {
    for (const CodeCase& c : kCodes) {
        SCOPED_TRACE(testing::Message() << c.key << " " << c.code);
        const auto record = recordWithExif(c.key, c.code);
        EXPECT_EQ(textOf((*record.*c.formatter)()), c.text);
    }
}

TEST(ExifInformationCaptureTest, AnUnknownCodeStaysEmptyOfAPhotoWithEXIF) {
    const auto record = recordWith(kCGImagePropertyExifDictionary,
        {{std::string(kCGImagePropertyExifFNumber), 8}, {std::string(kCGImagePropertyExifExposureMode), 3}});
    EXPECT_EQ(textOf(record->ExposureMode()), "");
}

struct FlashCase {
    int code;
    std::string text;
    std::string icon;
};

const FlashCase kFlashes[] = {
    {0, "Flash did not fire", "flash_not_fired"},
    {13, "Flash fired, compulsory flash mode, return light not detected", "flash_fired"},
    {16, "Flash did not fire, compulsory flash mode", "flash_not_fired"},
    {24, "Flash did not fire, auto mode", "flash_automatic_not_fired"},
    {0x20, "No flash function", "flash_not_fired"},
    {0x5F, "Flash fired, auto mode, return light detected, red-eye reduction mode", "flash_automatic_fired"},
    {88, "Unknown 0058", "flash_fired"},
    {0xABCDE, "Unknown ABCDE", "flash_fired"},
    {-1, "Unknown FFFFFFFFFFFFFFFF", "flash_fired"},
};

TEST(ExifInformationCaptureTest, ShowsTheFlashWithItsPicture) {
    for (const FlashCase& c : kFlashes) {
        SCOPED_TRACE(c.code);
        const auto row = recordWithExif(kCGImagePropertyExifFlash, c.code)->Flash();
        EXPECT_EQ(textOf(row), c.text);
        EXPECT_EQ(row.exifValueIconFileName, c.icon);
    }
}

TEST(ExifInformationCaptureTest, LogsAnUnknownFlash) {
    std::vector<std::string> lines;
    captureLog([&](std::string_view line) { lines.emplace_back(line); });
    recordWithExif(kCGImagePropertyExifFlash, 88)->Flash();
    captureLog({});
    EXPECT_EQ(lines, std::vector<std::string>{"__Unknown_FLASH 0058 and 88"});
}

TEST(ExifInformationCaptureTest, TheFlashPictureFollowsTheThemeOfOldSystems) {
    setSystemVersion("12.4");
    PersistanceManager::sharedInstance().setIsDarkModeOn(true);
    const auto icon = recordWithExif(kCGImagePropertyExifFlash, 1)->Flash().exifValueIconFileName;
    PersistanceManager::sharedInstance().setIsDarkModeOn(false);
    setSystemVersion("13.0");
    EXPECT_EQ(icon, "white_flash_fired");
}

} // namespace
} // namespace exifcard

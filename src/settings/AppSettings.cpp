#include "settings/AppSettings.h"

#include "platform/foundation/Identifiers.h"
#include "platform/foundation/UserDefaults.h"
#include "settings/SharedInstance.h"

namespace exifcard {
namespace {

constexpr const char* kPhotoFields[] = {
    "ApertureValue",
    "ISOSpeedRatings",
    "FocalLength",
    "FocalLenIn35mmFilm",
    "StarRating",
    "Flash",
    "ApertureMax",
    "DateTaken",
    "EditedDate",
    "GPSSpeed",
    "GPSAltitude",
    "FlashPixVersion",
    "DigitalZoomRatio",
    "ExposureBiasValue",
    "ExposureMode",
    "ExposureProgram",
    "ExposureTime",
    "WhiteBalance",
    "MeteringMode",
    "SceneCaptureType",
    "SceneType",
    "SensingMethod",
    "SensitivityType",
    "Sharpness",
    "ResolutionInMegaPixel",
    "AspectRatioFraction",
    "SubjectDistRange",
    "ColorModel",
    "DPIHeight",
    "DPIWidth",
    "FileSize",
    "Depth",
    "Orientation",
    "ColorSpace",
    "ColorProfile",
    "CompressedBitsPerPixel",
    "Contrast",
    "CustomRendered",
    "GainControl",
    "LightSource",
    "Saturation",
    "Artist",
    "Copyright",
    "Make",
    "Model",
    "MakerNote",
    "FilmMode",
    "Software",
    "FileSource",
    "shutterCount",
    "LensMake",
    "LensModel",
    "LensSerialNumber",
    "CameraSerialNumber",
    "UserComment",
    "Keywords",
    "Title",
    "Headline",
    "Caption",
    "GPS",
    "GPSDirection",
    "MapView",
};

constexpr const char* kVideoFields[] = {
    "DateTaken",
    "FramesPerSecond",
    "GPSSpeed",
    "GPSAltitude",
    "GPS",
    "Duration",
    "FileSize",
    "Artist",
    "Copyright",
    "Make",
    "Model",
    "Software",
    "MapView",
};

/// Intended: a list in the program's own defaults, where an older version kept
/// it, counts only where the suite holds one too.
void load(FieldList& list, const ExifKeys& defaults) {
    if (!list.load(*UserDefaults::initWithSuiteName(kApplicationGroup))) {
        list.store(defaults);
        return;
    }
    const auto ownDefaults = UserDefaults::standardUserDefaults();
    if (auto own = unarchivedKeys(ownDefaults->objectForKey(list.key()))) {
        list.store(std::move(*own));
        ownDefaults->removeObjectForKey(list.key());
    }
    list.appendMissing(defaults);
}

SharedInstance<AppSettings>& shared() {
    // Never destroyed: threads may still make rows while the program ends.
    static auto& instance = *new SharedInstance<AppSettings>();
    return instance;
}

} // namespace

AppSettings& AppSettings::sharedInstance() {
    return shared().get();
}

void AppSettings::forgetSharedInstance() {
    shared().forget();
}

AppSettings::AppSettings() : _keys("exifKeysOrderedArray"), _keysForVideo("exifKeysOrderedArray_Video") {
    load(_keys, exifKeysDefaultOrderedArray());
    load(_keysForVideo, exifKeysDefaultOrderedArrayForVideos());
}

ExifKeys AppSettings::exifKeysDefaultOrderedArray() {
    return visibleKeysNamed(kPhotoFields);
}

ExifKeys AppSettings::exifKeysDefaultOrderedArrayForVideos() {
    return visibleKeysNamed(kVideoFields);
}

ExifKeys AppSettings::missingExifOrderedKeysIn(const ExifKeys& array, bool forVideo) {
    return missingKeys(
        array, forVideo ? exifKeysDefaultOrderedArrayForVideos() : exifKeysDefaultOrderedArray());
}

std::shared_ptr<const ExifKeys> AppSettings::exifKeysOrderedArray() const {
    return _keys.keys();
}

std::shared_ptr<const ExifKeys> AppSettings::exifKeysOrderedArray_Video() const {
    return _keysForVideo.keys();
}

void AppSettings::setExifKeysOrderedArray(ExifKeys keys) {
    _keys.store(std::move(keys));
}

void AppSettings::setExifKeysOrderedArray_Video(ExifKeys keys) {
    _keysForVideo.store(std::move(keys));
}

std::shared_ptr<const ExifKeys> AppSettings::exifVisibleKeysOrderedArray() const {
    return _keys.visibleKeys();
}

std::shared_ptr<const ExifKeys> AppSettings::exifVisibleKeysOrderedArray_Video() const {
    return _keysForVideo.visibleKeys();
}

void AppSettings::reloadFieldLists() {
    _keys.reload();
    _keysForVideo.reload();
}

} // namespace exifcard

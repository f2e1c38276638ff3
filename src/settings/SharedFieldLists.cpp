#include "settings/SharedFieldLists.h"

#include "platform/foundation/FormatString.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/UserDefaults.h"

namespace exifcard {
namespace {

constexpr const char* kShared[] = {
    "ApertureValue",
    "ExposureTime",
    "FocalLength",
    "FocalLenIn35mmFilm",
    "ISOSpeedRatings",
    "Flash",
    "DateTaken",
    "GPSSpeed",
    "GPSAltitude",
    "ExposureBiasValue",
    "ExposureMode",
    "ExposureProgram",
    "WhiteBalance",
    "MeteringMode",
    "Artist",
    "Copyright",
    "Make",
    "Model",
    "Software",
    "shutterCount",
    "LensMake",
    "LensModel",
    "LensSerialNumber",
    "CameraSerialNumber",
    "GPS",
};

constexpr const char* kEdit[] = {
    "DateTaken",
    "Caption",
    "Title",
    "FocalLength",
    "Copyright",
    "Artist",
    "Make",
    "Model",
    "Software",
    "LensMake",
    "LensModel",
    "ApertureValue",
    "ISOSpeedValue",
    "ShutterSpeedStringValue",
    "UserComment",
    "Keywords",
    "Headline",
    "StarRating",
    "GPSAltitude",
    "GPSSpeed",
    "GPS",
};

constexpr const char* kEditForVideo[] = {"DateTaken", "GPS"};

void loadEditList(FieldList& list, const UserDefaults& suite, const ExifKeys& defaults) {
    if (!list.load(suite)) {
        list.store(defaults);
        return;
    }
    if (isDebugLogWanted()) {
        debugLog(stringWithFormat("COUNT___ %ld vs %ld", {list.keys()->size(), defaults.size()}));
    }
    list.appendMissing(defaults);
}

} // namespace

ExifKeys SharedFieldLists::sharedExifKeysDefaultOrderedArray() {
    return visibleKeysNamed(kShared);
}

ExifKeys SharedFieldLists::sharedEDITExifKeysDefaultOrderedArray() {
    return visibleKeysNamed(kEdit);
}

ExifKeys SharedFieldLists::sharedEDITExifKeysDefaultOrderedArrayForVideo() {
    return visibleKeysNamed(kEditForVideo);
}

ExifKeys SharedFieldLists::missingExifKeysIn(const ExifKeys& stored, const ExifKeys& comparedTo) {
    return missingKeys(stored, comparedTo);
}

SharedFieldLists::SharedFieldLists()
    : _sharedKeys("exifKeysOrderedArray_FOR_SHARE")
    , _editKeys("editExifKeysOrderedArray")
    , _editKeysForVideo("editExifKeysOrderedArrayVideo") {
}

void SharedFieldLists::loadFieldLists(const UserDefaults& suite) {
    loadEditList(_editKeysForVideo, suite, sharedEDITExifKeysDefaultOrderedArrayForVideo());
    // Intended: the shared list is never given what newer defaults add.
    if (!_sharedKeys.load(suite)) {
        _sharedKeys.store(sharedExifKeysDefaultOrderedArray());
    }
    loadEditList(_editKeys, suite, sharedEDITExifKeysDefaultOrderedArray());
}

std::shared_ptr<const ExifKeys> SharedFieldLists::sharedExifVisibleKeysOrderedArray() const {
    return _sharedKeys.keys();
}

std::shared_ptr<const ExifKeys> SharedFieldLists::sharedEditEXIFVisibleKeysOrderedArray() const {
    return _editKeys.keys();
}

std::shared_ptr<const ExifKeys> SharedFieldLists::sharedEditEXIFVisibleKeysOrderedArrayForVideo() const {
    return _editKeysForVideo.keys();
}

void SharedFieldLists::setSharedExifVisibleKeysOrderedArray(ExifKeys keys) {
    _sharedKeys.store(std::move(keys));
}

void SharedFieldLists::setSharedEditEXIFVisibleKeysOrderedArray(ExifKeys keys) {
    _editKeys.store(std::move(keys));
}

void SharedFieldLists::setSharedEditEXIFVisibleKeysOrderedArrayForVideo(ExifKeys keys) {
    _editKeysForVideo.store(std::move(keys));
}

std::shared_ptr<const ExifKeys> SharedFieldLists::allSharedExifVisibleKeysOrderedArray() const {
    return _sharedKeys.visibleKeys();
}

std::shared_ptr<const ExifKeys> SharedFieldLists::allSharedEditEXIFVisibleKeysOrderedArray() const {
    return _editKeys.visibleKeys();
}

std::shared_ptr<const ExifKeys> SharedFieldLists::allSharedEditEXIFVisibleKeysOrderedArrayForVideo() const {
    return _editKeysForVideo.visibleKeys();
}

void SharedFieldLists::reloadFieldLists() {
    _editKeysForVideo.reload();
    _sharedKeys.reload();
    _editKeys.reload();
}

} // namespace exifcard

#include "library/RecordLookup.h"

#include "metadata/ExifInformation.h"
#include "platform/foundation/Dictionary.h"
#include "platform/photos/PHAsset.h"

#include <algorithm>

namespace exifcard {
namespace {

/// A value that may be absent.
template<class Type>
Value valueOf(const std::optional<Type>& optional) {
    return optional ? Value(*optional) : Value();
}

Value valueOf(const std::optional<CLLocation>& location) {
    return location ? Value(Dictionary::make({{"latitude", location->coordinate.latitude},
                          {"longitude", location->coordinate.longitude}, {"altitude", location->altitude}}))
                    : Value();
}

struct RecordKey {
    std::string_view key;
    Value (*value)(const ExifInformation& record);
};

constexpr RecordKey kRecordKeys[] = {
    {"metaDataDictionary", [](const ExifInformation& record) { return Value(record.metaDataDictionary); }},
    {"exifDic", [](const ExifInformation& record) { return Value(record.exifDic); }},
    {"tifDic", [](const ExifInformation& record) { return Value(record.tifDic); }},
    {"gpsDic", [](const ExifInformation& record) { return Value(record.gpsDic); }},
    {"iptcDic", [](const ExifInformation& record) { return Value(record.iptcDic); }},
    {"keywordsArray", [](const ExifInformation& record) { return Value(record.keywordsArray); }},
    {"cameraModel", [](const ExifInformation& record) { return valueOf(record.cameraModel); }},
    {"aperture_fStop", [](const ExifInformation& record) { return record.aperture_fStop; }},
    {"shutterSpeedExposureTimeInSeconds",
        [](const ExifInformation& record) { return record.shutterSpeedExposureTimeInSeconds; }},
    {"iSOSpeed", [](const ExifInformation& record) { return record.iSOSpeed; }},
    {"focalLengthInmm", [](const ExifInformation& record) { return record.focalLengthInmm; }},
    {"flashStatusCode", [](const ExifInformation& record) { return Value(record.flashStatusCode); }},
    {"dateTaken", [](const ExifInformation& record) { return valueOf(record.dateTaken); }},
    {"dateCreated", [](const ExifInformation& record) { return valueOf(record.dateCreated); }},
    {"fileSizeInBytes", [](const ExifInformation& record) { return Value(record.fileSizeInBytes); }},
    {"duration", [](const ExifInformation& record) { return Value(record.duration); }},
    {"mediaType", [](const ExifInformation& record) { return Value(record.mediaType()); }},
    {"location", [](const ExifInformation& record) { return valueOf(record.location); }},
    {"locationName", [](const ExifInformation& record) { return valueOf(record.locationName); }},
    {"exifInfoAvailable", [](const ExifInformation& record) { return Value(record.exifInfoAvailable); }},
    {"exifORTiffInfoAvailable",
        [](const ExifInformation& record) { return Value(record.exifORTiffInfoAvailable); }},
    {"gpsInfoAvailable", [](const ExifInformation& record) { return Value(record.gpsInfoAvailable()); }},
    {"isScreenShot", [](const ExifInformation& record) { return Value(record.isScreenShot); }},
    {"isRAWFile", [](const ExifInformation& record) { return Value(record.isRAWFile); }},
    {"imageResultIsInCloud",
        [](const ExifInformation& record) { return Value(record.imageResultIsInCloud.load()); }},
};

Value valueAtPath(const ExifInformation& record, std::string_view path) {
    const auto dot = std::min(path.find('.'), path.size());
    const auto* const known = std::ranges::find(kRecordKeys, path.substr(0, dot), &RecordKey::key);
    if (known == std::end(kRecordKeys)) {
        return {};
    }
    const Value value = known->value(record);
    return dot == path.size() ? value : keyValueLookupOf(value)(path.substr(dot + 1));
}

} // namespace

KeyValueLookup keyValueLookupOfRecord(const ExifInformation& record) {
    return [&record](std::string_view keyPath) { return valueAtPath(record, keyPath); };
}

} // namespace exifcard

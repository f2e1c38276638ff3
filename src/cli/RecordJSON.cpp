#include "cli/RecordJSON.h"

#include "cli/JsonWriter.h"

#include <optional>
#include <string>

namespace exifcard {
namespace {

void writeLocation(JsonWriter& json, const std::optional<CLLocation>& location) {
    if (!location) {
        json.null();
        return;
    }
    json.beginObject();
    json.key("latitude").number(location->coordinate.latitude);
    json.key("longitude").number(location->coordinate.longitude);
    json.key("altitude").number(location->altitude);
    json.key("speed").number(location->speed);
    json.key("course").number(location->course);
    json.endObject();
}

} // namespace

void writeRecord(JsonWriter& json, const ExifInformation& record) {
    json.beginObject();
    json.key("exifInfoAvailable").boolean(record.exifInfoAvailable);
    json.key("exifORTiffInfoAvailable").boolean(record.exifORTiffInfoAvailable);
    json.key("gpsInfoAvailable").boolean(record.gpsInfoAvailable());
    json.key("isScreenShot").boolean(record.isScreenShot);
    json.key("mediaType").integer(record.mediaType());
    json.key("dimensions").beginArray();
    json.number(record.dimensions.width).number(record.dimensions.height).endArray();
    json.key("iSOSpeed").value(record.iSOSpeed);
    json.key("shutterSpeedExposureTimeInSeconds").value(record.shutterSpeedExposureTimeInSeconds);
    json.key("aperture_fStop").value(record.aperture_fStop);
    json.key("focalLengthInmm").value(record.focalLengthInmm);
    json.key("flashStatusCode").integer(record.flashStatusCode);
    json.key("cameraModel").textOrNull(record.cameraModel);
    json.key("dateTaken").value(record.dateTaken ? Value(*record.dateTaken) : nothing());
    json.key("fileSizeInBytes").integer(record.fileSizeInBytes);
    json.key("duration").number(record.duration);
    json.key("framesPerSecondValue").number(record.framesPerSecondValue);
    json.key("location");
    writeLocation(json, record.location);
    json.key("keywords").value(Value(record.keywordsArray));
    json.endObject();
}

void writeRow(JsonWriter& json, const ExifValue& row) {
    json.beginObject();
    json.key("uniqueID").textOrNull(row.uniqueID);
    json.key("key").textOrNull(row.exifKeyReadableFormat);
    json.key("value").textOrNull(row.exifValueReadableFormat);
    json.key("keyWithUnit").textOrNull(row.exifKeyWithUnitTypeReadableFormat);
    json.key("raw").textOrNull(row.exifRAWValue);
    json.key("icon").textOrNull(row.exifValueIconFileName);
    json.endObject();
}

} // namespace exifcard

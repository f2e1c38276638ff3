#pragma once

#include "metadata/ExifInformation.h"

namespace exifcard {

class JsonWriter;

/// Writes a record's headline values and flags as an object.
void writeRecord(JsonWriter& json, const ExifInformation& record);

/// Writes a readable row as an object.
void writeRow(JsonWriter& json, const ExifValue& row);

} // namespace exifcard

#pragma once

#include "platform/foundation/Predicate.h"

namespace exifcard {

class ExifInformation;

/// What a record answers to a predicate: its properties by their names ("cameraModel", "iSOSpeed",
/// "dateTaken", "location"), and what its dictionaries hold by paths ("exifDic.FNumber"). Nothing for any
/// other key. For use while the record lives.
KeyValueLookup keyValueLookupOfRecord(const ExifInformation& record);

} // namespace exifcard

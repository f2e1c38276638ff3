#pragma once

#include "platform/imageio/PropertyTable.h"
#include "platform/imageio/TiffValue.h"
#include "platform/imageio/XmpValue.h"

namespace exifcard {

// The ways in which the tables of the sub-dictionaries read their values.
inline constexpr Conversion kInteger{integerFromEntry, integerFromXmp};
inline constexpr Conversion kIntegers{integersFromEntry, integersFromXmp};
inline constexpr Conversion kDottedIntegers{integersFromEntry, dottedIntegersFromXmp};
inline constexpr Conversion kReal{realFromEntry, realFromXmp};
inline constexpr Conversion kReals{realsFromEntry, spacedRealsFromXmp};
inline constexpr Conversion kText{textFromEntry, textFromXmp};
inline constexpr Conversion kFirstByte{firstByteFromEntry, integerFromXmp};
inline constexpr Conversion kBytes{dataFromEntry, nothingFromXmp};
inline constexpr Conversion kVersion{versionFromEntry, versionFromXmp};
inline constexpr Conversion kComment{commentFromEntry, textFromXmp};
inline constexpr Conversion kDateTime{textFromEntry, dateTimeFromXmp};
inline constexpr Conversion kAngle{angleFromEntry, angleFromXmp};
inline constexpr Conversion kAngleReference{textFromEntry, angleReferenceFromXmp};
inline constexpr Conversion kTimeOfDay{timeOfDayFromEntry, timeOfDayFromXmp};
inline constexpr Conversion kNumberOrText{integerFromEntry, numberOrTextFromXmp};
inline constexpr Conversion kDateStamp{textFromEntry, dateFromXmp};

} // namespace exifcard

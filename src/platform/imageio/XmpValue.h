#pragma once

#include "platform/foundation/Value.h"
#include "platform/imageio/XmpPacket.h"

namespace exifcard {

// Each of these answers the value that a dictionary keeps for a property, in
// the form of the binary block, or nothing when the property has no such value.

/// "3" or "3/1"; several values become an array.
Value integerFromXmp(const XmpProperty& property);
/// "0.5" or "1/2"; several values become an array.
Value realFromXmp(const XmpProperty& property);
/// The text in the default language, or the first item of a list.
Value textFromXmp(const XmpProperty& property);
Value integersFromXmp(const XmpProperty& property);
/// "2.3.0.0".
Value dottedIntegersFromXmp(const XmpProperty& property);
Value realsFromXmp(const XmpProperty& property);
/// "24/1 120/1 4/1 4/1" in one text, or a list.
Value spacedRealsFromXmp(const XmpProperty& property);
Value textsFromXmp(const XmpProperty& property);
/// "0230" as [2, 3].
Value versionFromXmp(const XmpProperty& property);
/// "2020-01-02T03:04:05.6+02:00" as "2020:01:02 03:04:05".
Value dateTimeFromXmp(const XmpProperty& property);
/// The date of such a text: "2020:01:02".
Value dateFromXmp(const XmpProperty& property);
/// The time of such a text: "03:04:05".
Value timeOfDayFromXmp(const XmpProperty& property);
/// "48,51.504N" or "48,51,30N" as degrees without sign.
Value angleFromXmp(const XmpProperty& property);
/// The letter behind such an angle.
Value angleReferenceFromXmp(const XmpProperty& property);
/// A number where the text is one, else the text.
Value numberOrTextFromXmp(const XmpProperty& property);
/// For what XMP holds in no usable form.
Value nothingFromXmp(const XmpProperty& property);

} // namespace exifcard

#pragma once

#include "platform/corelocation/CLGeocoder.h"
#include "platform/messages/MSMessage.h"
#include "platform/uivalues/CGGeometry.h"

#include <memory>
#include <string>

namespace exifcard {

class ExifInformation;
class UIImage;

/// Section, city and country of a place without spaces, those that are known:
/// "Old Town,Springfield,Freedonia", "Freedonia", "Springfield,".
std::string placeNameFromPlacemark(const CLPlacemark& placemark);

/// Aperture, exposure time, ISO and focal length in one line: "f/1.8   1/120 seconds   ISO 32   4mm".
/// What the record lacks reads as 0.
/// @param photoSize  Upright, of any scale; the gaps are wide for a landscape picture and narrow for the
///                   others, as they are for no picture, whose size is zero.
std::string captionOfPhoto(const ExifInformation& record, CGSize photoSize);

/// The message that shows a photo.
/// @param picture    As the bubble shows it; may be null.
/// @param photoSize  As `captionOfPhoto` takes it.
MSMessage messageOfPhoto(
    const ExifInformation& record, std::shared_ptr<const UIImage> picture, CGSize photoSize);

} // namespace exifcard

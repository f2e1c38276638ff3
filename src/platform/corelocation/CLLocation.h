#pragma once

#include "platform/foundation/Date.h"

#include <optional>

namespace exifcard {

/// A point on the earth: degrees, north and east positive.
struct CLLocationCoordinate2D {
    double latitude = 0;
    double longitude = 0;
    bool operator==(const CLLocationCoordinate2D&) const = default;
};

/// Whether latitude and longitude are numbers within ±90 and ±180; (0, 0) is valid.
bool CLLocationCoordinate2DIsValid(const CLLocationCoordinate2D& coordinate);

/// A place as a device reports it. A negative accuracy, course or speed means
/// that the device did not know it.
struct CLLocation {
    CLLocationCoordinate2D coordinate = {};
    double altitude = 0;            ///< Metres above sea level.
    double horizontalAccuracy = -1; ///< Metres.
    double verticalAccuracy = -1;   ///< Metres.
    double course = -1;             ///< Degrees clockwise from true north.
    double speed = -1;              ///< Metres per second.
    std::optional<Date> timestamp = std::nullopt;
    bool operator==(const CLLocation&) const = default;
};

} // namespace exifcard

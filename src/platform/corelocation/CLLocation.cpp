#include "platform/corelocation/CLLocation.h"

#include <cmath>

namespace exifcard {

bool CLLocationCoordinate2DIsValid(const CLLocationCoordinate2D& coordinate) {
    // Comparisons with not-a-number are false.
    return std::abs(coordinate.latitude) <= 90 && std::abs(coordinate.longitude) <= 180;
}

} // namespace exifcard

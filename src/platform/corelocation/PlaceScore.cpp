#include "platform/corelocation/PlaceScore.h"

#include <numbers>

namespace exifcard {

gazetteer::Point pointAtCoordinate(const CLLocationCoordinate2D& coordinate) {
    constexpr double kRadians = std::numbers::pi / 180;
    const double latitude = coordinate.latitude * kRadians;
    const double longitude = coordinate.longitude * kRadians;
    const double ofAxis = gazetteer::kEarthRadius * std::cos(latitude);
    return {
        .x = static_cast<float>(ofAxis * std::cos(longitude)),
        .y = static_cast<float>(ofAxis * std::sin(longitude)),
        .z = static_cast<float>(gazetteer::kEarthRadius * std::sin(latitude)),
    };
}

} // namespace exifcard

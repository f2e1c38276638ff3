#pragma once

#include "platform/corelocation/CLLocation.h"

#include <algorithm>
#include <cstddef>
#include <numbers>

/// The grid over the map of countries, and distances on a part of it so small
/// that it is flat.
namespace exifcard::gazetteer {

constexpr double kRadiansPerDegree = std::numbers::pi / 180;
constexpr double kKilometresPerDegree = 111.2; ///< Of latitude.

constexpr std::size_t kCellsPerDegree = 2;
constexpr std::size_t kCellColumns = 360 * kCellsPerDegree;
constexpr std::size_t kCellRows = 180 * kCellsPerDegree;

/// Degrees to the east and to the north.
struct MapVector {
    double east = 0;
    double north = 0;
};

/// The longitude as −180 … 180, when it lies at most one turn beyond.
inline double wrappedLongitude(double longitude) {
    return longitude > 180 ? longitude - 360 : longitude < -180 ? longitude + 360 : longitude;
}

/// The shorter way around the earth.
inline MapVector wayBetween(const CLLocationCoordinate2D& from, const CLLocationCoordinate2D& to) {
    return {wrappedLongitude(to.longitude - from.longitude), to.latitude - from.latitude};
}

inline std::size_t cellRowAtLatitude(double latitude) {
    const double rows = (latitude + 90) * kCellsPerDegree;
    return static_cast<std::size_t>(std::clamp(rows, 0.0, double{kCellRows - 1}));
}

inline std::size_t cellColumnAtLongitude(double longitude) {
    const double columns = (longitude + 180) * kCellsPerDegree;
    return static_cast<std::size_t>(std::clamp(columns, 0.0, double{kCellColumns - 1}));
}

/// In cells: a little beside the middle, since outlines turn at thousandths of a degree and must not pass
/// through a point that ways begin at.
constexpr double kMiddleOfCell = 0.5004;

inline CLLocationCoordinate2D middleOfCell(std::size_t row, std::size_t column) {
    return {.latitude = (static_cast<double>(row) + kMiddleOfCell) / kCellsPerDegree - 90,
        .longitude = (static_cast<double>(column) + kMiddleOfCell) / kCellsPerDegree - 180};
}

} // namespace exifcard::gazetteer

#pragma once

#include "platform/corelocation/CLLocation.h"

#include <string>
#include <vector>

namespace exifcard {

/// A row of places.tsv.
struct PlaceRow {
    std::string name;
    std::string country; ///< ISO code.
    std::string feature; ///< Such as "PPLC", a capital.
    CLLocationCoordinate2D coordinate;
    double population = 0; ///< 0 when it is not known.
};

/// A row of countries.tsv.
struct OutlineRow {
    std::string country;
    std::vector<CLLocationCoordinate2D> ring; ///< The last point is the first.
};

/// Both throw std::runtime_error, naming the line, for what they cannot read.
std::vector<PlaceRow> readPlaces(const std::string& path);
std::vector<OutlineRow> readOutlines(const std::string& path);

} // namespace exifcard

#pragma once

#include "platform/corelocation/GazetteerFormat.h"

#include <cstddef>
#include <vector>

namespace exifcard {

/// The arrays of a `PlaceTree`.
struct BuiltPlaceTree {
    std::vector<std::size_t> order; ///< Which of the given points stands at each place.
    std::vector<gazetteer::Point> points;
    std::vector<gazetteer::Node> nodes;
};

BuiltPlaceTree buildPlaceTree(const std::vector<gazetteer::Point>& points);

} // namespace exifcard

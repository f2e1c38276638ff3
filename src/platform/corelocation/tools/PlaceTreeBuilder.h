#pragma once

#include "platform/corelocation/CLLocation.h"
#include "platform/corelocation/CountryMap.h"
#include "platform/corelocation/GazetteerFormat.h"
#include "platform/corelocation/tools/CountryMapBuilder.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace exifcard {

/// What tells where a place can be the answer.
struct TreePlace {
    CLLocationCoordinate2D coordinate;
    float radius = 0; ///< Kilometres.
    std::uint8_t country = gazetteer::kNoCountry;
    std::uint8_t countryOnMap = gazetteer::kNoCountry;
    std::optional<std::size_t> town; ///< Of a quarter: which of the places.
};

/// The arrays of a `PlaceTree`, with numbers of places instead of records.
struct BuiltPlaceTree {
    std::vector<gazetteer::Node> nodes;
    std::vector<gazetteer::Leaf> leaves;
    std::vector<gazetteer::Patch> patches;
    std::vector<std::size_t> candidates;
};

BuiltPlaceTree buildPlaceTree(
    const std::vector<TreePlace>& places, const std::vector<OutlineEdge>& edges, const CountryMap& map);

} // namespace exifcard

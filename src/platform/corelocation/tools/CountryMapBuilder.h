#pragma once

#include "platform/corelocation/GazetteerFormat.h"
#include "platform/corelocation/tools/SourceTables.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace exifcard {

/// An edge with its longitudes unrolled, so that it runs on where it passes 180°.
struct OutlineEdge {
    std::uint32_t vertex = 0; ///< Where it begins.
    std::uint8_t country = gazetteer::kNoCountry;
    CLLocationCoordinate2D begin;
    CLLocationCoordinate2D end;
};

/// The arrays of a `CountryMap`, and what they were made from.
struct BuiltCountryMap {
    std::vector<gazetteer::Cell> cells;
    std::vector<gazetteer::EdgeRun> runs;
    std::vector<gazetteer::Vertex> vertices;
    std::vector<std::uint8_t> countriesOfVertices;
    std::vector<OutlineEdge> edges;
};

BuiltCountryMap buildCountryMap(const std::vector<OutlineRow>& outlines,
    const std::function<std::uint8_t(const std::string& code)>& numberOfCountry);

} // namespace exifcard

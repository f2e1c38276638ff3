#pragma once

#include "platform/corelocation/GazetteerFormat.h"
#include "platform/corelocation/tools/SourceTables.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace exifcard {

/// The arrays of a `CountryMap`.
struct BuiltCountryMap {
    std::vector<gazetteer::Cell> cells;
    std::vector<std::uint32_t> edges;
    std::vector<gazetteer::Vertex> vertices;
    std::vector<std::uint8_t> countriesOfVertices;
};

BuiltCountryMap buildCountryMap(const std::vector<OutlineRow>& outlines,
    const std::function<std::uint8_t(const std::string& code)>& numberOfCountry);

} // namespace exifcard

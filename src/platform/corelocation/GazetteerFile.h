#pragma once

#include "platform/corelocation/GazetteerFormat.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace exifcard {

/// The arrays of a gazetteer, wherever they lie; see `GazetteerFormat.h`.
struct GazetteerArrays {
    std::span<const gazetteer::Point> points;
    std::span<const gazetteer::Node> nodes;
    std::span<const gazetteer::Record> records; ///< As many as points.
    std::span<const gazetteer::Point> quarterPoints;
    std::span<const gazetteer::Node> quarterNodes;
    std::span<const std::uint32_t> quarters; ///< As many as quarter points.
    std::span<const char> names;
    std::span<const gazetteer::CountryCode> countryCodes;
    std::span<const gazetteer::Cell> cells;
    std::span<const std::uint32_t> edges;
    std::span<const gazetteer::Vertex> vertices;
    std::span<const std::uint8_t> countriesOfVertices;
};

/// Finds the arrays in the bytes of a file, which must outlive them. Reads the header alone.
/// @return Nothing when the header is damaged or of another version, the file
///         was cut, or arrays that belong together differ in length.
std::optional<GazetteerArrays> arraysOfGazetteerFile(std::span<const std::uint8_t> file);

/// The bytes of a file with these arrays.
std::vector<std::uint8_t> gazetteerFileWithArrays(GazetteerArrays arrays);

} // namespace exifcard

#pragma once

#include "platform/corelocation/GazetteerFormat.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace exifcard {

/// The arrays of a gazetteer, wherever they lie; see `GazetteerFormat.h`.
struct GazetteerArrays {
    std::span<const gazetteer::Node> nodes;
    std::span<const gazetteer::Leaf> leaves;
    std::span<const gazetteer::Patch> patches;
    std::span<const gazetteer::Candidate> candidates;
    std::span<const char> records;
    std::span<const gazetteer::CountryCode> countryCodes;
    std::span<const gazetteer::Cell> cells;
    std::span<const gazetteer::EdgeRun> runs;
    std::span<const gazetteer::Vertex> vertices;
    std::span<const std::uint8_t> countriesOfVertices;
};

/// Finds the arrays in the bytes of a file, which must outlive them. Reads the header alone.
/// @return Nothing when the header is damaged or of another version, or the file was cut.
std::optional<GazetteerArrays> arraysOfGazetteerFile(std::span<const std::uint8_t> file);

/// The bytes of a file with these arrays.
std::vector<std::uint8_t> gazetteerFileWithArrays(GazetteerArrays arrays);

} // namespace exifcard

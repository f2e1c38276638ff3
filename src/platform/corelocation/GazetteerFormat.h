#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// How `gazetteer.bin` lies on disk: a header, then plain arrays in the byte
/// order of the machine, each at a multiple of `kAlignment`. It is made with the program
/// and read in place.
namespace exifcard::gazetteer {

constexpr std::array<char, 8> kMagic = {'e', 'x', 'i', 'f', 'g', 'a', 'z', '\n'};
/// Also tells a file from a machine with another byte order.
constexpr std::uint32_t kVersion = 2;

/// A line of the processor's cache, so that no element lies in two.
constexpr std::size_t kAlignment = 64;

/// Where an array lies.
struct Section {
    std::uint32_t offset = 0; ///< Bytes from the start of the file.
    std::uint32_t count = 0;  ///< Elements.
};

struct Header {
    std::array<char, 8> magic = kMagic;
    std::uint32_t version = kVersion;
    std::uint32_t fileSize = 0;
    Section points;              ///< `Point`, of all places in the order of their `PlaceTree`
    Section nodes;               ///< `Node`, of that tree
    Section records;             ///< `Record`, in the order of the points
    Section quarterPoints;       ///< `Point`, once more of the quarters alone in the order of their tree
    Section quarterNodes;        ///< `Node`, of that tree
    Section quarters;            ///< `std::uint32_t`, where each of them stands among all places
    Section names;               ///< `char`, UTF-8
    Section countryCodes;        ///< `CountryCode`; the first stands for no country
    Section cells;               ///< `Cell`, rows from the south pole, columns from 180° west
    Section edges;               ///< `std::uint32_t`, the vertex where an edge begins, cell by cell
    Section vertices;            ///< `Vertex`, ring by ring
    Section countriesOfVertices; ///< `std::uint8_t`, the country that the ring bounds
};

/// A place on a sphere of the earth's size, in kilometres from its centre.
struct Point {
    float x = 0;
    float y = 0;
    float z = 0;
    float radius = 0; ///< Of the place's extent. Kilometres.
};

/// A branch of a `PlaceTree`, halved across an axis: the points of its lower half lie up to `lowerEnd`, those
/// of its upper half from `upperBegin` on.
struct Node {
    float greatestRadius = 0; ///< Of all points.
    float lowerEnd = 0;
    float upperBegin = 0;
    std::uint32_t axis = 0; ///< 0 for x, 1 for y, 2 for z.
};

using CountryCode = std::array<char, 2>;
constexpr std::uint8_t kNoCountry = 0;

struct Record {
    std::uint32_t nameOffset = 0;
    std::uint8_t nameLength = 0;
    std::uint8_t country = 0; ///< In `countryCodes`.
    /// Where the map of countries puts its centre: another country where the map is coarse or sees a
    /// dispute otherwise, none where it has sea.
    std::uint8_t countryOnMap = kNoCountry;
    std::uint8_t hasQuarters = 0; ///< 1 when places of this file are its quarters.
    /// Where the town stands that this is a quarter of; where it stands itself when it is none.
    std::uint32_t town = 0;
};

/// One rectangle of the grid over the countries.
struct Cell {
    std::uint32_t firstEdge = 0;
    std::uint16_t edgeCount = 0;       ///< Edges within `kShore` of the cell.
    std::uint8_t country = kNoCountry; ///< At its centre; none at sea.
    std::uint8_t unused = 0;
};

/// Edges run from a vertex to the next one of its ring, the last of which is the first again.
struct Vertex {
    float longitude = 0;
    float latitude = 0;
};

/// So far from the coast is still the shore, not the open sea. Kilometres.
constexpr double kShore = 5;
constexpr double kEarthRadius = 6371;

} // namespace exifcard::gazetteer

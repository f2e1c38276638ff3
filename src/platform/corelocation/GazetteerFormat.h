#pragma once

#include <array>
#include <cstdint>

/// How `gazetteer.bin` lies on disk: a header, then plain arrays in the byte
/// order of the machine, each at a multiple of 8. It is made with the program
/// and read in place.
namespace exifcard::gazetteer {

constexpr std::array<char, 8> kMagic = {'e', 'x', 'i', 'f', 'g', 'a', 'z', '\n'};
/// Also tells a file from a machine with another byte order.
constexpr std::uint32_t kVersion = 1;

/// Where an array lies.
struct Section {
    std::uint32_t offset = 0; ///< Bytes from the start of the file.
    std::uint32_t count = 0;  ///< Elements.
};

/// A search tree over places: see `PlaceTree`.
struct TreeSections {
    Section points;  ///< `Point`
    Section nodes;   ///< `Node`
    Section records; ///< `Record`, in the order of the points
};

struct Header {
    std::array<char, 8> magic = kMagic;
    std::uint32_t version = kVersion;
    std::uint32_t fileSize = 0;
    TreeSections towns;          ///< What is a place of its own.
    TreeSections quarters;       ///< What is a section of a town.
    Section townsOfQuarters;     ///< `std::uint32_t`, the town's place in `towns`
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

/// The box around all points of a branch.
struct Node {
    std::array<float, 3> lower = {};
    std::array<float, 3> upper = {};
    float greatestRadius = 0;
    float unused = 0;
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
    std::uint8_t unused = 0;
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

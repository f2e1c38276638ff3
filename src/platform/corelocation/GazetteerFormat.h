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
constexpr std::uint32_t kVersion = 3;

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
    Section nodes;               ///< `Node`, of the `PlaceTree`
    Section leaves;              ///< `Leaf`, of that tree
    Section patches;             ///< `Patch`, of leaves of that tree
    Section candidates;          ///< `Candidate`, leaf by leaf
    Section records;             ///< `Record` and its name, one after the other without gaps
    Section countryCodes;        ///< `CountryCode`; the first stands for no country
    Section cells;               ///< `Cell`, rows from the south pole, columns from 180° west
    Section runs;                ///< `EdgeRun`, cell by cell
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

/// A rectangle of the map, halved at a parallel or a meridian.
struct Node {
    float boundary = 0; ///< Degrees.
    std::uint32_t isMeridian = 0;
};

/// What may name a point of a leaf. It is written down anew for each of the leaves that it matters to,
/// so that they lie together.
struct Candidate {
    Point point;
    std::uint32_t record = 0; ///< Where that begins among the records, in bytes.
};

using CountryCode = std::array<char, 2>;
constexpr std::uint8_t kNoCountry = 0;
/// Stands for a country where an outline crosses.
constexpr std::uint8_t kSeveralCountries = 255;

/// Which candidates matter in a rectangle: first all places, then the quarters of those.
struct Leaf {
    std::uint32_t firstCandidate = 0;
    std::uint32_t placeCount : 10 = 0;
    std::uint32_t quarterCount : 6 = 0;
    /// The country that all of it lies in, none at sea; or, from `kFirstPatch` on, the number of its patch.
    std::uint32_t territory : 16 = kNoCountry;
};
constexpr std::size_t kMostPlacesOfALeaf = 1'023;
constexpr std::size_t kMostQuartersOfALeaf = 63;
constexpr std::size_t kFirstPatch = 256;
constexpr std::size_t kMostPatches = 65'536 - kFirstPatch;

/// A leaf that outlines cross, cut up once more.
struct Patch {
    static constexpr std::size_t kSide = 8; ///< Rows and columns.

    float south = 0;
    float west = 0;
    float rowsPerDegree = 0;
    float columnsPerDegree = 0;
    /// Of each part, row by row from the south west; `kSeveralCountries` where the map must be asked.
    std::array<std::uint8_t, kSide* kSide> countries = {};
};

/// What is known of a place. Its name, in UTF-8, comes after it.
struct Record {
    /// The record of the town that this is a quarter of; where it begins itself when it is none.
    std::uint32_t town = 0;
    std::uint8_t country = kNoCountry; ///< In `countryCodes`.
    /// Where the map of countries puts its centre: another country where the map is coarse or sees a
    /// dispute otherwise, none where it has sea.
    std::uint8_t countryOnMap = kNoCountry;
    std::uint8_t hasQuarters = 0; ///< 1 when places of this file are its quarters.
    std::uint8_t nameLength = 0;  ///< Bytes.
};

/// One rectangle of the grid over the countries.
struct Cell {
    std::uint32_t firstRun = 0;
    std::uint16_t runCount = 0;        ///< Of the edges within `kShore` of the cell.
    std::uint8_t country = kNoCountry; ///< At its centre; none at sea.
    std::uint8_t unused = 0;
};

/// Edges, each of which begins where the one before it ends.
struct EdgeRun {
    std::uint32_t firstVertex = 0;
    std::uint32_t edgeCount = 0;
};

/// Of the runs together.
constexpr std::size_t kMostEdgesOfACell = 65'535;

/// Edges run from a vertex to the next one of its ring, the last of which is the first again.
struct Vertex {
    float longitude = 0;
    float latitude = 0;
};

/// So far from the coast is still the shore, not the open sea. Kilometres.
constexpr double kShore = 5;
constexpr double kEarthRadius = 6371;

} // namespace exifcard::gazetteer

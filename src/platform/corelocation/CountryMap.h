#pragma once

#include "platform/corelocation/CLLocation.h"
#include "platform/corelocation/GazetteerFormat.h"

#include <cstdint>
#include <optional>
#include <span>

namespace exifcard {

/// Tells land from sea and one country from another by their outlines.
class CountryMap {
public:
    struct Neighbour {
        std::uint8_t country = gazetteer::kNoCountry;
        double distance = gazetteer::kShore; ///< Kilometres.
    };

    /// A map over arrays that outlive it.
    /// @return Nothing when the arrays don't fit one another.
    static std::optional<CountryMap> make(std::span<const gazetteer::Cell> cells,
        std::span<const gazetteer::EdgeRun> runs,
        std::span<const gazetteer::Vertex> vertices,
        std::span<const std::uint8_t> countriesOfVertices);

    /// The country that the valid coordinate lies in, none at sea. Nothing when the file is damaged there.
    std::optional<std::uint8_t> countryAt(const CLLocationCoordinate2D& coordinate) const;
    /// The nearest country other than the given one, within `kShore`; from the sea, that with the nearest
    /// coast.
    std::optional<Neighbour> nearestNeighbour(
        const CLLocationCoordinate2D& coordinate, std::uint8_t country) const;

private:
    CountryMap(std::span<const gazetteer::Cell> cells,
        std::span<const gazetteer::EdgeRun> runs,
        std::span<const gazetteer::Vertex> vertices,
        std::span<const std::uint8_t> countriesOfVertices)
        : _cells(cells)
        , _runs(runs)
        , _vertices(vertices)
        , _countriesOfVertices(countriesOfVertices) {}

    struct Surroundings;
    Surroundings surroundingsOf(const CLLocationCoordinate2D& coordinate) const;
    template<typename Visit>
    bool visitEdges(const Surroundings& surroundings, Visit visit) const;

    std::span<const gazetteer::Cell> _cells;
    std::span<const gazetteer::EdgeRun> _runs;
    std::span<const gazetteer::Vertex> _vertices;
    std::span<const std::uint8_t> _countriesOfVertices;
};

} // namespace exifcard

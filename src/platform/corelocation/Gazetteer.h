#pragma once

#include "platform/corelocation/CLGeocoder.h"
#include "platform/corelocation/CountryMap.h"
#include "platform/corelocation/GazetteerFile.h"
#include "platform/corelocation/PlaceRecords.h"
#include "platform/corelocation/PlaceScore.h"
#include "platform/corelocation/PlaceTree.h"
#include "platform/foundation/Data.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>

namespace exifcard {

/// The bundled file of places, read where it lies: a question touches only the
/// pages around its answer.
class Gazetteer {
public:
    /// The name of a place; what is not known is empty. The texts live as long as the gazetteer.
    struct Answer {
        std::string_view subLocality = {};
        std::string_view locality = {};
        std::string_view isoCountryCode = {};
        /// `NoResult`, or `Network` where the file turns out damaged; else the country is known.
        std::optional<CLError> error = {};
    };

    /// @return Null when the file is no whole gazetteer. What is damaged within it shows when it is read.
    static std::unique_ptr<const Gazetteer> open(Data file);

    /// Names the place as a person who lives there would.
    Answer placeAt(const CLLocationCoordinate2D& coordinate) const;

private:
    struct Spot {
        CLLocationCoordinate2D coordinate;
        gazetteer::Point point;
        PlaceTree::Surroundings surroundings;
    };
    Gazetteer(Data file, const GazetteerArrays& arrays, PlaceTree places, CountryMap map);

    Answer answerAtValid(const CLLocationCoordinate2D& coordinate) const;
    /// @param place  The best one of any country, within reach.
    Answer answerAtSea(const Spot& spot, const std::optional<FoundPlace>& place) const;
    Answer answerOnLand(const Spot& spot, const std::optional<FoundPlace>& place, std::uint8_t country) const;
    template<typename IsWanted>
    std::optional<FoundPlace> bestPlace(const Spot& spot, IsWanted isWanted) const;
    Answer answerForPlace(const Spot& spot, const FoundPlace& place) const;
    Answer answerForTown(std::uint32_t town, std::optional<std::uint32_t> quarter) const;
    Answer answerForCountry(std::uint8_t country) const;

    Data _file;
    // All within _file:
    std::span<const gazetteer::CountryCode> _countryCodes;
    PlaceRecords _records;
    PlaceTree _places;
    CountryMap _map;
};

} // namespace exifcard

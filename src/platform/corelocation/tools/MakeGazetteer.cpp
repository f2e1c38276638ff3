// Compiles the tables of resources/places into the file from which the reverse geocoder answers.
//
//     make-gazetteer places.tsv countries.tsv gazetteer.bin
#include "platform/corelocation/CountryMap.h"
#include "platform/corelocation/GazetteerFile.h"
#include "platform/corelocation/PlaceScore.h"
#include "platform/corelocation/tools/CountryMapBuilder.h"
#include "platform/corelocation/tools/PlaceTreeBuilder.h"
#include "platform/corelocation/tools/Settlements.h"
#include "platform/corelocation/tools/SourceTables.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <fstream>
#include <limits>
#include <ranges>
#include <stdexcept>
#include <unordered_map>

namespace exifcard {
namespace {

/// Numbers the countries from 1 as they come; 0 is none.
class CountryTable {
public:
    std::uint8_t numberOf(const std::string& code) {
        if (code.size() != std::tuple_size_v<gazetteer::CountryCode>) {
            throw std::runtime_error("no country code: " + code);
        }
        const auto [entry, isNew] = _numbers.try_emplace(code, static_cast<std::uint8_t>(_codes.size()));
        if (isNew) {
            if (_codes.size() >= gazetteer::kSeveralCountries) {
                throw std::runtime_error("too many countries");
            }
            _codes.push_back({code[0], code[1]});
        }
        return entry->second;
    }
    const std::vector<gazetteer::CountryCode>& codes() const { return _codes; }

private:
    std::unordered_map<std::string, std::uint8_t> _numbers;
    std::vector<gazetteer::CountryCode> _codes{gazetteer::CountryCode{'-', '-'}};
};

using Numbers = std::vector<std::size_t>;

std::vector<TreePlace> treePlacesOf(
    const std::vector<Settlement>& settlements, const CountryMap& map, CountryTable& countries) {
    std::vector<TreePlace> places;
    for (const auto& settlement : settlements) {
        places.push_back({.coordinate = settlement.row.coordinate,
            .radius = static_cast<float>(settlement.radius),
            .country = countries.numberOf(settlement.row.country),
            .countryOnMap = map.countryAt(settlement.row.coordinate).value(),
            .town = settlement.town});
    }
    return places;
}

/// All places as they come in the leaves, so that the records of neighbours lie together, and lastly those
/// that are candidates nowhere.
Numbers orderOfRecords(const std::vector<std::size_t>& candidates, std::size_t placeCount) {
    Numbers order;
    std::vector<bool> isListed(placeCount);
    const auto list = [&](std::size_t place) {
        if (!isListed[place]) {
            isListed[place] = true;
            order.push_back(place);
        }
    };
    std::ranges::for_each(candidates, list);
    std::ranges::for_each(std::views::iota(std::size_t{0}, placeCount), list);
    return order;
}

/// The records of all places in that order.
class RecordTable {
public:
    RecordTable(const std::vector<Settlement>& settlements,
        const std::vector<TreePlace>& places,
        const Numbers& order) {
        setPositions(settlements, order);
        std::vector<bool> haveQuarters(places.size());
        for (const auto& place : places) {
            if (place.town) {
                haveQuarters[*place.town] = true;
            }
        }
        for (const std::size_t number : order) {
            const auto& place = places[number];
            const auto& name = settlements[number].row.name;
            add({.town = _positions[place.town.value_or(number)],
                    .country = place.country,
                    .countryOnMap = place.countryOnMap,
                    .hasQuarters = static_cast<std::uint8_t>(haveQuarters[number] ? 1 : 0),
                    .nameLength = static_cast<std::uint8_t>(name.size())},
                name);
        }
    }

    const std::string& bytes() const { return _bytes; }
    std::uint32_t positionOf(std::size_t place) const { return _positions[place]; }

private:
    void setPositions(const std::vector<Settlement>& settlements, const Numbers& order) {
        _positions.resize(settlements.size());
        std::size_t position = 0;
        for (const std::size_t number : order) {
            const auto& name = settlements[number].row.name;
            if (name.size() > std::numeric_limits<std::uint8_t>::max()) {
                throw std::runtime_error("too long a name: " + name);
            }
            _positions[number] = static_cast<std::uint32_t>(position);
            position += sizeof(gazetteer::Record) + name.size();
        }
    }

    void add(const gazetteer::Record& record, const std::string& name) {
        _bytes.append(reinterpret_cast<const char*>(&record), sizeof record);
        _bytes += name;
    }

    std::vector<std::uint32_t> _positions;
    std::string _bytes;
};

std::vector<gazetteer::Candidate> candidatesOf(
    const BuiltPlaceTree& tree, const std::vector<TreePlace>& places, const RecordTable& records) {
    std::vector<gazetteer::Candidate> candidates;
    for (const std::size_t number : tree.candidates) {
        auto point = pointAtCoordinate(places[number].coordinate);
        point.radius = places[number].radius;
        candidates.push_back({.point = point, .record = records.positionOf(number)});
    }
    return candidates;
}

std::vector<std::uint8_t> makeGazetteer(const std::string& placesPath, const std::string& countriesPath) {
    CountryTable countries;
    const auto built = buildCountryMap(readOutlines(countriesPath),
        [&countries](const std::string& code) { return countries.numberOf(code); });
    const auto map =
        CountryMap::make(built.cells, built.runs, built.vertices, built.countriesOfVertices).value();
    const auto settlements = settlementsFromRows(readPlaces(placesPath));
    const auto places = treePlacesOf(settlements, map, countries);
    const auto tree = buildPlaceTree(places, built.edges, map);
    const RecordTable records(settlements, places, orderOfRecords(tree.candidates, places.size()));
    const auto candidates = candidatesOf(tree, places, records);
    return gazetteerFileWithArrays({.nodes = tree.nodes,
        .leaves = tree.leaves,
        .patches = tree.patches,
        .candidates = candidates,
        .records = records.bytes(),
        .countryCodes = countries.codes(),
        .cells = built.cells,
        .runs = built.runs,
        .vertices = built.vertices,
        .countriesOfVertices = built.countriesOfVertices});
}

} // namespace
} // namespace exifcard

int main(int argumentCount, char** arguments) {
    if (argumentCount != 4) {
        std::fputs("usage: make-gazetteer places.tsv countries.tsv gazetteer.bin\n", stderr);
        return 2;
    }
    try {
        const auto bytes = exifcard::makeGazetteer(arguments[1], arguments[2]);
        std::ofstream file(arguments[3], std::ios::binary);
        file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        file.close();
        if (!file) {
            throw std::runtime_error(std::string("cannot write ") + arguments[3]);
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "make-gazetteer: %s\n", error.what());
        return 1;
    }
    return 0;
}

// Compiles the tables of resources/places into the file from which the reverse geocoder answers.
//
//     make-gazetteer places.tsv countries.tsv gazetteer.bin
#include "platform/corelocation/CountryMap.h"
#include "platform/corelocation/GazetteerFile.h"
#include "platform/corelocation/PlaceTree.h"
#include "platform/corelocation/tools/CountryMapBuilder.h"
#include "platform/corelocation/tools/PlaceTreeBuilder.h"
#include "platform/corelocation/tools/Settlements.h"
#include "platform/corelocation/tools/SourceTables.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <fstream>
#include <limits>
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
            if (_codes.size() > std::numeric_limits<std::uint8_t>::max()) {
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

/// All names one after the other, equal ones once.
class NameTable {
public:
    /// A record that has nothing but the name.
    gazetteer::Record recordFor(const std::string& name) {
        if (name.size() > std::numeric_limits<std::uint8_t>::max()) {
            throw std::runtime_error("too long a name: " + name);
        }
        const auto [entry, isNew] = _offsets.try_emplace(name, static_cast<std::uint32_t>(_names.size()));
        if (isNew) {
            _names += name;
        }
        return {.nameOffset = entry->second, .nameLength = static_cast<std::uint8_t>(name.size())};
    }
    const std::string& names() const { return _names; }

private:
    std::unordered_map<std::string, std::uint32_t> _offsets;
    std::string _names;
};

/// Some of the settlements in the order of their tree.
struct Layer {
    std::vector<std::size_t> settlements; ///< Their numbers.
    BuiltPlaceTree tree;
    std::vector<gazetteer::Record> records;

    GazetteerArrays::Layer arrays() const { return {tree.points, tree.nodes, records}; }
};

Layer layerOf(const std::vector<Settlement>& settlements, bool areQuarters) {
    std::vector<std::size_t> numbers;
    std::vector<gazetteer::Point> points;
    for (std::size_t number = 0; number < settlements.size(); ++number) {
        const auto& settlement = settlements[number];
        if (settlement.town.has_value() == areQuarters) {
            numbers.push_back(number);
            points.push_back(pointAtCoordinate(settlement.row.coordinate));
            points.back().radius = static_cast<float>(settlement.radius);
        }
    }
    Layer layer;
    layer.tree = buildPlaceTree(points);
    for (const std::size_t position : layer.tree.order) {
        layer.settlements.push_back(numbers[position]);
    }
    return layer;
}

/// Where the town of each quarter stands among the towns.
std::vector<std::uint32_t> townsOfQuarters(
    const std::vector<Settlement>& settlements, const Layer& towns, const Layer& quarters) {
    std::vector<std::uint32_t> positions(settlements.size());
    for (std::size_t position = 0; position < towns.settlements.size(); ++position) {
        positions[towns.settlements[position]] = static_cast<std::uint32_t>(position);
    }
    std::vector<std::uint32_t> result;
    for (const std::size_t quarter : quarters.settlements) {
        result.push_back(positions[settlements[quarter].town.value()]);
    }
    return result;
}

std::vector<std::uint8_t> makeGazetteer(const std::string& placesPath, const std::string& countriesPath) {
    const auto settlements = settlementsFromRows(readPlaces(placesPath));
    auto towns = layerOf(settlements, /*areQuarters=*/false);
    auto quarters = layerOf(settlements, /*areQuarters=*/true);
    CountryTable countries;
    const auto built = buildCountryMap(readOutlines(countriesPath),
        [&countries](const std::string& code) { return countries.numberOf(code); });
    const auto map =
        CountryMap::make(built.cells, built.edges, built.vertices, built.countriesOfVertices).value();
    NameTable names;
    for (Layer* const layer : {&towns, &quarters}) {
        for (const std::size_t number : layer->settlements) {
            const auto& row = settlements[number].row;
            auto record = names.recordFor(row.name);
            record.country = countries.numberOf(row.country);
            record.countryOnMap = map.countryAt(row.coordinate).value();
            layer->records.push_back(record);
        }
    }
    const auto townOfEach = townsOfQuarters(settlements, towns, quarters);
    return gazetteerFileWithArrays({.towns = towns.arrays(),
        .quarters = quarters.arrays(),
        .townsOfQuarters = townOfEach,
        .names = names.names(),
        .countryCodes = countries.codes(),
        .cells = built.cells,
        .edges = built.edges,
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

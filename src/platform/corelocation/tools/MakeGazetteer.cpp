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

using Numbers = std::vector<std::uint32_t>;

std::vector<gazetteer::Point> pointsOf(const std::vector<Settlement>& settlements) {
    std::vector<gazetteer::Point> points;
    for (const auto& settlement : settlements) {
        points.push_back(pointAtCoordinate(settlement.row.coordinate));
        points.back().radius = static_cast<float>(settlement.radius);
    }
    return points;
}

/// Where each settlement stands in the order of the tree.
Numbers positionsIn(const BuiltPlaceTree& tree) {
    Numbers positions(tree.order.size());
    for (std::size_t position = 0; position < tree.order.size(); ++position) {
        positions[tree.order[position]] = static_cast<std::uint32_t>(position);
    }
    return positions;
}

std::vector<gazetteer::Record> recordsOf(const std::vector<Settlement>& settlements,
    const BuiltPlaceTree& tree,
    const CountryMap& map,
    CountryTable& countries,
    NameTable& names) {
    const auto positions = positionsIn(tree);
    std::vector<gazetteer::Record> records;
    for (const std::size_t number : tree.order) {
        const auto& settlement = settlements[number];
        auto record = names.recordFor(settlement.row.name);
        record.country = countries.numberOf(settlement.row.country);
        record.countryOnMap = map.countryAt(settlement.row.coordinate).value();
        record.town = positions[settlement.town.value_or(number)];
        records.push_back(record);
    }
    for (std::size_t position = 0; position < records.size(); ++position) {
        if (const auto town = records[position].town; town != position) {
            records[town].hasQuarters = 1;
        }
    }
    return records;
}

Numbers quartersAmong(const std::vector<gazetteer::Record>& records) {
    Numbers quarters;
    for (std::uint32_t position = 0; position < records.size(); ++position) {
        if (records[position].town != position) {
            quarters.push_back(position);
        }
    }
    return quarters;
}

template<typename Element, typename Index>
std::vector<Element> selected(const std::vector<Element>& elements, const std::vector<Index>& which) {
    std::vector<Element> result;
    for (const auto index : which) {
        result.push_back(elements[index]);
    }
    return result;
}

std::vector<std::uint8_t> makeGazetteer(const std::string& placesPath, const std::string& countriesPath) {
    CountryTable countries;
    const auto built = buildCountryMap(readOutlines(countriesPath),
        [&countries](const std::string& code) { return countries.numberOf(code); });
    const auto map =
        CountryMap::make(built.cells, built.edges, built.vertices, built.countriesOfVertices).value();
    const auto settlements = settlementsFromRows(readPlaces(placesPath));
    const auto places = buildPlaceTree(pointsOf(settlements));
    NameTable names;
    const auto records = recordsOf(settlements, places, map, countries, names);
    const auto quarters = quartersAmong(records);
    const auto quarterTree = buildPlaceTree(selected(places.points, quarters));
    const auto quartersInOrder = selected(quarters, quarterTree.order);
    return gazetteerFileWithArrays({.points = places.points,
        .nodes = places.nodes,
        .records = records,
        .quarterPoints = quarterTree.points,
        .quarterNodes = quarterTree.nodes,
        .quarters = quartersInOrder,
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

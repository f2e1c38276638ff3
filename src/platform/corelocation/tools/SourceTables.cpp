#include "platform/corelocation/tools/SourceTables.h"

#include <charconv>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <string_view>

namespace exifcard {
namespace {

std::vector<std::string_view> partsBetween(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    while (true) {
        const auto end = text.find(separator);
        parts.push_back(text.substr(0, end));
        if (end == std::string_view::npos) {
            return parts;
        }
        text.remove_prefix(end + 1);
    }
}

double numberFromText(std::string_view text) {
    double number = 0;
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), number);
    if (parsed.ec != std::errc() || parsed.ptr != text.data() + text.size()) {
        throw std::runtime_error("no number: " + std::string(text));
    }
    return number;
}

CLLocationCoordinate2D coordinateFromTexts(std::string_view latitude, std::string_view longitude) {
    const CLLocationCoordinate2D coordinate = {numberFromText(latitude), numberFromText(longitude)};
    if (!CLLocationCoordinate2DIsValid(coordinate)) {
        throw std::runtime_error("no point on the earth");
    }
    return coordinate;
}

/// Calls `takeRow` for each line but the first, which names the columns.
void readTable(const std::string& path,
    std::size_t columns,
    const std::function<void(const std::vector<std::string_view>&)>& takeRow) {
    std::ifstream file(path);
    std::string line;
    std::getline(file, line);
    std::size_t number = 1;
    while (std::getline(file, line)) {
        ++number;
        try {
            const auto fields = partsBetween(line, '\t');
            if (fields.size() != columns) {
                throw std::runtime_error("another number of columns");
            }
            takeRow(fields);
        } catch (const std::runtime_error& error) {
            throw std::runtime_error(path + ":" + std::to_string(number) + ": " + error.what());
        }
    }
    if (number == 1) {
        throw std::runtime_error(path + ": nothing to read");
    }
}

} // namespace

std::vector<PlaceRow> readPlaces(const std::string& path) {
    std::vector<PlaceRow> rows;
    readTable(path, 6, [&rows](const std::vector<std::string_view>& fields) {
        rows.push_back({.name = std::string(fields[0]),
            .country = std::string(fields[1]),
            .feature = std::string(fields[2]),
            .coordinate = coordinateFromTexts(fields[3], fields[4]),
            .population = numberFromText(fields[5])});
    });
    return rows;
}

std::vector<OutlineRow> readOutlines(const std::string& path) {
    std::vector<OutlineRow> rows;
    readTable(path, 2, [&rows](const std::vector<std::string_view>& fields) {
        OutlineRow row = {.country = std::string(fields[0]), .ring = {}};
        for (const std::string_view point : partsBetween(fields[1], ' ')) {
            const auto numbers = partsBetween(point, ',');
            if (numbers.size() != 2) {
                throw std::runtime_error("no point: " + std::string(point));
            }
            row.ring.push_back(coordinateFromTexts(numbers[1], numbers[0]));
        }
        if (row.ring.front() != row.ring.back()) {
            throw std::runtime_error("a ring that is not closed");
        }
        rows.push_back(std::move(row));
    });
    return rows;
}

} // namespace exifcard

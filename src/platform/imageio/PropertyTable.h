#pragma once

#include "platform/foundation/Dictionary.h"
#include "platform/imageio/TiffBlock.h"
#include "platform/imageio/XmpPacket.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace exifcard {

/// How a value is read where it stands in the binary block and where it stands in XMP.
struct Conversion {
    Value (*fromEntry)(const TiffEntry& entry);
    Value (*fromXmp)(const XmpProperty& property);
};

/// One key of a sub-dictionary.
struct PropertyRow {
    std::uint16_t tag;
    std::string_view key;
    const Conversion& conversion;
    std::string_view xmpName = {}; ///< In the table's vocabulary; empty when XMP has no such property.
};

/// The keys of one sub-dictionary, in ascending order of their tags.
struct PropertyTable {
    std::span<const PropertyRow> rows;
    std::span<const std::uint8_t> rowsByKey; ///< The numbers of the rows in ascending order of their keys.
};

/// The order in which a dictionary keeps the rows.
template<std::size_t count>
consteval std::array<std::uint8_t, count> rowsByKey(const PropertyRow (&rows)[count]) {
    std::array<std::uint8_t, count> order = {};
    for (std::size_t index = 0; index < count; ++index) {
        order[index] = static_cast<std::uint8_t>(index);
    }
    std::ranges::sort(order, {}, [&rows](std::uint8_t row) { return rows[row].key; });
    return order;
}

/// One sub-dictionary while its values come together. What is stored first stays.
class PropertyCollector {
public:
    /// @param table  Outlives the collector.
    explicit PropertyCollector(const PropertyTable& table);

    /// Stores the entry's value under the key of its tag, if the table has it.
    void addEntry(const TiffEntry& entry);
    /// Stores the property's value under every key that takes it.
    void addXmpProperty(const XmpProperty& property);
    void add(std::string_view key, Value value);

    const Value& valueForKey(std::string_view key) const;
    /// Null when nothing was stored.
    DictionaryPtr dictionary();

private:
    const PropertyTable& _table;
    std::vector<Value> _values; ///< One for each row.
};

} // namespace exifcard

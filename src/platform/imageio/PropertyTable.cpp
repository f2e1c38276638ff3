#include "platform/imageio/PropertyTable.h"

#include <algorithm>

namespace exifcard {

PropertyCollector::PropertyCollector(const PropertyTable& table) : _table(table), _values(table.rows.size()) {
}

void PropertyCollector::addEntry(const TiffEntry& entry) {
    const auto row = std::ranges::lower_bound(_table.rows, entry.tag, {}, &PropertyRow::tag);
    if (row == _table.rows.end() || row->tag != entry.tag) {
        return;
    }
    Value& value = _values[static_cast<std::size_t>(row - _table.rows.begin())];
    if (value.isNothing()) {
        value = row->conversion.fromEntry(entry);
    }
}

void PropertyCollector::addXmpProperty(const XmpProperty& property) {
    for (std::size_t index = 0; index < _values.size(); ++index) {
        const PropertyRow& row = _table.rows[index];
        if (row.xmpName == property.name && _values[index].isNothing()) {
            _values[index] = row.conversion.fromXmp(property);
        }
    }
}

void PropertyCollector::add(std::string_view key, Value value) {
    const auto row = std::ranges::find(_table.rows, key, &PropertyRow::key);
    Value& kept = _values[static_cast<std::size_t>(row - _table.rows.begin())];
    if (kept.isNothing()) {
        kept = std::move(value);
    }
}

const Value& PropertyCollector::valueForKey(std::string_view key) const {
    const auto row = std::ranges::find(_table.rows, key, &PropertyRow::key);
    return _values[static_cast<std::size_t>(row - _table.rows.begin())];
}

DictionaryPtr PropertyCollector::dictionary() {
    std::vector<Dictionary::Entry> entries;
    // No more than there are: a list keeps those of thousands of photos.
    entries.reserve(
        _values.size() - static_cast<std::size_t>(std::ranges::count_if(_values, &Value::isNothing)));
    for (const std::uint8_t row : _table.rowsByKey) {
        if (!_values[row].isNothing()) {
            entries.emplace_back(_table.rows[row].key, std::move(_values[row]));
        }
    }
    return entries.empty() ? nullptr : Dictionary::fromSortedEntries(std::move(entries));
}

} // namespace exifcard

#include "platform/foundation/Dictionary.h"

#include <algorithm>

namespace exifcard {
namespace {

template<typename Entries>
auto lowerBound(Entries& entries, std::string_view key) {
    return std::lower_bound(entries.begin(), entries.end(), key,
        [](const auto& entry, std::string_view wanted) { return entry.first < wanted; });
}

} // namespace

Dictionary::Dictionary(std::initializer_list<Entry> entries) {
    for (const auto& [key, value] : entries) {
        setObjectForKey(value, key);
    }
}

DictionaryPtr Dictionary::make(std::initializer_list<Entry> entries) {
    return std::make_shared<Dictionary>(entries);
}

DictionaryPtr Dictionary::fromSortedEntries(std::vector<Entry> entries) {
    auto dictionary = std::make_shared<Dictionary>();
    dictionary->_entries = std::move(entries);
    return dictionary;
}

const Value& Dictionary::objectForKey(std::string_view key) const {
    const auto found = lowerBound(_entries, key);
    return found != _entries.end() && found->first == key ? found->second : nothing();
}

void Dictionary::setObjectForKey(Value value, std::string_view key) {
    if (value.isNothing()) {
        removeObjectForKey(key);
        return;
    }
    const auto place = lowerBound(_entries, key);
    if (place != _entries.end() && place->first == key) {
        place->second = std::move(value);
    } else {
        _entries.emplace(place, std::string(key), std::move(value));
    }
}

void Dictionary::removeObjectForKey(std::string_view key) {
    const auto found = lowerBound(_entries, key);
    if (found != _entries.end() && found->first == key) {
        _entries.erase(found);
    }
}

DictionaryPtr Dictionary::mutableCopy() const {
    return std::make_shared<Dictionary>(*this);
}

DictionaryPtr Dictionary::copyWithItemsCopied() const {
    auto copy = mutableCopy();
    for (auto& [key, value] : copy->_entries) {
        value = value.copied();
    }
    return copy;
}

} // namespace exifcard

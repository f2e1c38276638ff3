#pragma once

#include "platform/foundation/Value.h"

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace exifcard {

/// A mutable map from text to value with reference identity: whoever holds the
/// pointer sees the same map. Entries stand in ascending byte order of their
/// keys. Not safe to change while another thread reads it.
class Dictionary {
public:
    using Entry = std::pair<std::string, Value>;

    Dictionary() = default;
    Dictionary(std::initializer_list<Entry> entries);

    static DictionaryPtr make(std::initializer_list<Entry> entries = {});
    /// Takes entries that already stand in ascending byte order of different keys and hold something.
    static DictionaryPtr fromSortedEntries(std::vector<Entry> entries);

    std::size_t count() const { return _entries.size(); }
    bool isEmpty() const { return _entries.empty(); }

    /// The value under `key`; nothing when there is none.
    const Value& objectForKey(std::string_view key) const;
    bool containsKey(std::string_view key) const { return !objectForKey(key).isNothing(); }

    /// Stores `value` under `key`, in place of what was there; storing nothing removes the entry.
    void setObjectForKey(Value value, std::string_view key);
    void removeObjectForKey(std::string_view key);

    /// A new dictionary over the same values (a shallow copy).
    DictionaryPtr mutableCopy() const;
    /// A new dictionary in which every value is copied one level deep.
    DictionaryPtr copyWithItemsCopied() const;

    auto begin() const { return _entries.begin(); }
    auto end() const { return _entries.end(); }

    bool operator==(const Dictionary& other) const { return _entries == other._entries; }

private:
    std::vector<Entry> _entries; // Ascending by key.
};

} // namespace exifcard

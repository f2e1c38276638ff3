#pragma once

#include "platform/foundation/Value.h"

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace exifcard {

/// A mutable list of values with reference identity: whoever holds the pointer
/// sees the same list. Not safe to change while another thread reads it.
class Array {
public:
    Array() = default;
    Array(std::initializer_list<Value> values) : _values(values) {}
    explicit Array(std::vector<Value> values) : _values(std::move(values)) {}

    static ArrayPtr make(std::initializer_list<Value> values = {});

    std::size_t count() const { return _values.size(); }
    bool isEmpty() const { return _values.empty(); }

    /// The element at `index`; nothing beyond the end.
    const Value& objectAtIndex(std::size_t index) const;
    /// Nothing for an empty list.
    const Value& firstObject() const { return objectAtIndex(0); }
    const Value& lastObject() const;

    void addObject(Value value) { _values.push_back(std::move(value)); }
    void replaceObjectAtIndex(std::size_t index, Value value);

    /// The texts of "%@" of all elements with `separator` between them.
    std::string componentsJoinedByString(std::string_view separator) const;

    auto begin() const { return _values.begin(); }
    auto end() const { return _values.end(); }

    bool operator==(const Array& other) const { return _values == other._values; }

private:
    std::vector<Value> _values;
};

} // namespace exifcard

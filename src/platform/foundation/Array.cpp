#include "platform/foundation/Array.h"

namespace exifcard {

ArrayPtr Array::make(std::initializer_list<Value> values) {
    return std::make_shared<Array>(values);
}

const Value& Array::objectAtIndex(std::size_t index) const {
    return index < _values.size() ? _values[index] : nothing();
}

const Value& Array::lastObject() const {
    return _values.empty() ? nothing() : _values.back();
}

void Array::replaceObjectAtIndex(std::size_t index, Value value) {
    if (index < _values.size()) {
        _values[index] = std::move(value);
    }
}

std::string Array::componentsJoinedByString(std::string_view separator) const {
    std::string joined;
    for (std::size_t index = 0; index < _values.size(); ++index) {
        if (index > 0) {
            joined += separator;
        }
        joined += _values[index].description();
    }
    return joined;
}

} // namespace exifcard

#pragma once

#include "platform/foundation/Data.h"
#include "platform/foundation/Date.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace exifcard {

class Array;
class Dictionary;
using ArrayPtr = std::shared_ptr<Array>;
using DictionaryPtr = std::shared_ptr<Dictionary>;

/// A property-list object or nothing. It keeps which kind of number it holds,
/// because the readable text of a number depends on it. Arrays and dictionaries
/// are held by reference: two values may hold the same object.
class Value {
public:
    enum class Kind { Nothing, Bool, Integer, Float, Double, Text, Date, Data, Array, Dictionary };

    Value() = default;
    // What can be stored converts by itself, so that tables of values read as data.
    // NOLINTBEGIN(google-explicit-constructor): see above.
    Value(bool value) : _held(value) {}
    Value(int value) : _held(static_cast<std::int64_t>(value)) {}
    Value(std::int64_t value) : _held(value) {}
    Value(float value) : _held(value) {}
    Value(double value) : _held(value) {}
    Value(std::string value) : _held(std::move(value)) {}
    Value(std::string_view value) : _held(std::string(value)) {}
    Value(const char* value) : _held(std::string(value)) {}
    Value(Date value) : _held(value) {}
    Value(Data value) : _held(std::move(value)) {}
    /// A null pointer makes nothing.
    Value(ArrayPtr value);
    Value(DictionaryPtr value);
    // NOLINTEND(google-explicit-constructor)

    Kind kind() const { return static_cast<Kind>(_held.index()); }
    bool isNothing() const { return kind() == Kind::Nothing; }
    /// Bool, Integer, Float or Double.
    bool isNumber() const;

    /// What is held, or null when another kind is.
    const std::string* text() const { return std::get_if<std::string>(&_held); }
    ArrayPtr array() const;
    DictionaryPtr dictionary() const;
    /// The held object looked at in passing: no reference is taken.
    const Array* arrayView() const;
    const Dictionary* dictionaryView() const;
    std::optional<Date> date() const;
    std::optional<Data> data() const;

    /// The platform's conversions of numbers and texts. A number is truncated
    /// toward zero and clamped to the type; of a text the leading number counts
    /// ("12abc" is 12). Anything else, nothing included, reads as 0.
    std::int64_t integerValue() const;
    std::int32_t intValue() const;
    float floatValue() const;
    double doubleValue() const;
    /// A number that is not 0, or a text that begins with a yes ("YES", "true", "1").
    bool boolValue() const;

    /// The text of "%@": "(null)" for nothing, "4" for 4.0, "(\n    1\n)" for an array.
    std::string description() const;

    /// The same value, but a held container is a new one over the same elements.
    Value copied() const;

    /// Same kind and equal contents; containers compare element by element. What nests too deep to be
    /// compared, as containers that hold themselves do, is unequal unless it is the same object.
    bool operator==(const Value& other) const;

private:
    bool equals(const Value& other, int level, std::size_t& comparisons) const;

    std::variant<std::monostate,
        bool,
        std::int64_t,
        float,
        double,
        std::string,
        Date,
        Data,
        ArrayPtr,
        DictionaryPtr>
        _held;
};

/// The value that stands for nothing, for answers by reference.
const Value& nothing();

} // namespace exifcard

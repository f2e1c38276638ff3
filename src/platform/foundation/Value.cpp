#include "platform/foundation/Value.h"

#include "platform/foundation/Array.h"
#include "platform/foundation/Dictionary.h"
#include "platform/foundation/NumberText.h"

#include <algorithm>
#include <limits>

namespace exifcard {
namespace {

// A container may hold itself, or twice the same one at every level; what photos and settings hold stays far
// below both.
constexpr int kDeepestComparison = 128;
constexpr std::size_t kMostComparisons = 1'000'000;

} // namespace

Value::Value(ArrayPtr value) {
    if (value) {
        _held = std::move(value);
    }
}

Value::Value(DictionaryPtr value) {
    if (value) {
        _held = std::move(value);
    }
}

bool Value::isNumber() const {
    return kind() >= Kind::Bool && kind() <= Kind::Double;
}

ArrayPtr Value::array() const {
    const auto* held = std::get_if<ArrayPtr>(&_held);
    return held ? *held : nullptr;
}

DictionaryPtr Value::dictionary() const {
    const auto* held = std::get_if<DictionaryPtr>(&_held);
    return held ? *held : nullptr;
}

const Array* Value::arrayView() const {
    const auto* held = std::get_if<ArrayPtr>(&_held);
    return held ? held->get() : nullptr;
}

const Dictionary* Value::dictionaryView() const {
    const auto* held = std::get_if<DictionaryPtr>(&_held);
    return held ? held->get() : nullptr;
}

std::optional<Date> Value::date() const {
    const auto* held = std::get_if<Date>(&_held);
    return held ? std::optional(*held) : std::nullopt;
}

std::optional<Data> Value::data() const {
    const auto* held = std::get_if<Data>(&_held);
    return held ? std::optional(*held) : std::nullopt;
}

std::int64_t Value::integerValue() const {
    switch (kind()) {
    case Kind::Bool:
        return std::get<bool>(_held) ? 1 : 0;
    case Kind::Integer:
        return std::get<std::int64_t>(_held);
    case Kind::Float:
        return saturatingInteger(std::get<float>(_held));
    case Kind::Double:
        return saturatingInteger(std::get<double>(_held));
    case Kind::Text:
        return integerFromText(std::get<std::string>(_held));
    default:
        return 0;
    }
}

std::int32_t Value::intValue() const {
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(integerValue(), Limits::min(), Limits::max()));
}

float Value::floatValue() const {
    if (kind() == Kind::Float) {
        return std::get<float>(_held);
    }
    return static_cast<float>(doubleValue());
}

double Value::doubleValue() const {
    switch (kind()) {
    case Kind::Bool:
        return std::get<bool>(_held) ? 1 : 0;
    case Kind::Integer:
        return static_cast<double>(std::get<std::int64_t>(_held));
    case Kind::Float:
        return std::get<float>(_held);
    case Kind::Double:
        return std::get<double>(_held);
    case Kind::Text:
        return doubleFromText(std::get<std::string>(_held));
    default:
        return 0;
    }
}

bool Value::boolValue() const {
    if (const auto* held = text()) {
        return boolFromText(*held);
    }
    return isNumber() && doubleValue() != 0;
}

Value Value::copied() const {
    if (const auto held = array()) {
        return std::make_shared<Array>(*held);
    }
    if (const auto held = dictionary()) {
        return held->mutableCopy();
    }
    return *this;
}

bool Value::operator==(const Value& other) const {
    std::size_t comparisons = 0;
    return equals(other, 0, comparisons);
}

bool Value::equals(const Value& other, int level, std::size_t& comparisons) const {
    if (kind() != other.kind() || level > kDeepestComparison || ++comparisons > kMostComparisons) {
        return false;
    }
    const auto areEqual = [level, &comparisons](const Value& first, const Value& second) {
        return first.equals(second, level + 1, comparisons);
    };
    if (const auto* held = arrayView()) {
        return held == other.arrayView() || std::ranges::equal(*held, *other.arrayView(), areEqual);
    }
    if (const auto* held = dictionaryView()) {
        const auto areEqualEntries = [&areEqual](const auto& first, const auto& second) {
            return first.first == second.first && areEqual(first.second, second.second);
        };
        return held == other.dictionaryView() ||
               std::ranges::equal(*held, *other.dictionaryView(), areEqualEntries);
    }
    return _held == other._held;
}

const Value& nothing() {
    static const Value value;
    return value;
}

} // namespace exifcard

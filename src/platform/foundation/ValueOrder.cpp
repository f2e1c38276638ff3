#include "platform/foundation/ValueOrder.h"

#include <cmath>

namespace exifcard {
namespace {

bool isWhole(const Value& number) {
    return number.kind() == Value::Kind::Integer || number.kind() == Value::Kind::Bool;
}

std::partial_ordering orderOfNumbers(const Value& left, const Value& right) {
    if (isWhole(left) && isWhole(right)) {
        return left.integerValue() <=> right.integerValue();
    }
    return left.doubleValue() <=> right.doubleValue();
}

/// Kinds that are in one order have one rank.
Value::Kind rankOf(const Value& value) {
    return value.isNumber() ? Value::Kind::Double : value.kind();
}

/// Not-a-number stands before all others of its kind, so that sorting ends.
std::weak_ordering orderOfUnordered(const Value& left, const Value& right) {
    const auto isNumber = [](const Value& value) {
        return value.kind() == Value::Kind::Date ? !std::isnan(value.date()->secondsSince1970)
                                                 : !std::isnan(value.doubleValue());
    };
    return isNumber(left) <=> isNumber(right);
}

} // namespace

std::partial_ordering orderOfValues(const Value& left, const Value& right) {
    if (left.isNumber() && right.isNumber()) {
        return orderOfNumbers(left, right);
    }
    if (left.text() != nullptr && right.text() != nullptr) {
        return *left.text() <=> *right.text();
    }
    if (left.date() && right.date()) {
        return *left.date() <=> *right.date();
    }
    return std::partial_ordering::unordered;
}

std::weak_ordering sortingOrderOfValues(const Value& left, const Value& right) {
    if (rankOf(left) != rankOf(right)) {
        return rankOf(left) <=> rankOf(right);
    }
    const auto order = orderOfValues(left, right);
    if (order == std::partial_ordering::unordered) {
        return orderOfUnordered(left, right);
    }
    return order < 0 ? std::weak_ordering::less
                     : (order > 0 ? std::weak_ordering::greater : std::weak_ordering::equivalent);
}

} // namespace exifcard

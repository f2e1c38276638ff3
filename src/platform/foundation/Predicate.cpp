#include "platform/foundation/Predicate.h"

#include "platform/foundation/Array.h"
#include "platform/foundation/Dictionary.h"
#include "platform/foundation/PredicateMatching.h"
#include "platform/foundation/RegularExpression.h"
#include "platform/foundation/TextMatching.h"
#include "platform/foundation/ValueOrder.h"

#include <fmt/format.h>

#include <algorithm>

namespace exifcard {
namespace {

using Operator = PredicateOperator;
using Type = CompoundPredicate::Type;

/// As much of a wrong format as a line of a log or a terminal shows well.
constexpr std::size_t kLongestExcerpt = 40;

std::string excerptAt(std::string_view format, std::size_t offset) {
    std::size_t end = std::min(format.size(), offset + kLongestExcerpt);
    while (end < format.size() && (static_cast<unsigned char>(format[end]) & 0xC0U) == 0x80U) {
        --end; // Never within a character.
    }
    return std::string(format.substr(offset, std::max(end, offset) - offset));
}

std::string unparsable(std::string_view format, std::size_t offset, std::string_view cause) {
    return fmt::format(
        "Unable to parse the format string \"{}\", at offset {}: {}", excerptAt(format, 0), offset, cause);
}

Value valueOfExpression(const PredicateExpression& expression, const KeyValueLookup& object) {
    if (const auto* const constant = std::get_if<Value>(&expression)) {
        return *constant;
    }
    const auto* const key = std::get_if<PredicateKeyPath>(&expression);
    return object(key != nullptr ? std::string_view(key->path) : std::string_view());
}

bool evaluate(const ComparisonPredicate& comparison, const KeyValueLookup& object) {
    return comparison.holds(
        valueOfExpression(comparison.left, object), valueOfExpression(comparison.right, object));
}

bool evaluate(const CompoundPredicate& compound, const KeyValueLookup& object) {
    const auto holds = [&object](const PredicatePtr& part) { return part->evaluateWithObject(object); };
    switch (compound.type) {
    case Type::Not:
        return std::ranges::none_of(compound.subpredicates, holds);
    case Type::And:
        return std::ranges::all_of(compound.subpredicates, holds);
    case Type::Or:
        break;
    }
    return std::ranges::any_of(compound.subpredicates, holds);
}

bool isEqual(const ComparisonPredicate& comparison, const Value& left, const Value& right) {
    if (left.text() != nullptr && right.text() != nullptr) {
        return foldedForComparison(comparison, *left.text()) ==
               foldedForComparison(comparison, *right.text());
    }
    return left == right || orderOfValues(left, right) == std::partial_ordering::equivalent;
}

bool hasElement(const ComparisonPredicate& comparison, const Array& list, const Value& element) {
    return std::ranges::any_of(
        list, [&](const Value& candidate) { return isEqual(comparison, candidate, element); });
}

bool contains(const ComparisonPredicate& comparison, const Value& whole, const Value& part) {
    if (const Array* const list = whole.arrayView()) {
        return hasElement(comparison, *list, part);
    }
    return textHolds(comparison, Operator::Contains, whole, part);
}

std::partial_ordering order(const ComparisonPredicate& comparison, const Value& left, const Value& right) {
    if (left.text() != nullptr && right.text() != nullptr) {
        return foldedForComparison(comparison, *left.text()) <=>
               foldedForComparison(comparison, *right.text());
    }
    return orderOfValues(left, right);
}

bool isBetween(const ComparisonPredicate& comparison, const Value& value, const Value& limits) {
    const Array* const list = limits.arrayView();
    return list != nullptr && list->count() == 2 && order(comparison, value, list->firstObject()) >= 0 &&
           order(comparison, value, list->lastObject()) <= 0;
}

Value valueAtPath(const Value& object, std::string_view path) {
    Value value = object;
    while (!path.empty() && !value.isNothing()) {
        const auto dot = std::min(path.find('.'), path.size());
        const auto dictionary = value.dictionary();
        value = dictionary ? dictionary->objectForKey(path.substr(0, dot)) : nothing();
        path.remove_prefix(std::min(dot + 1, path.size()));
    }
    return value;
}

} // namespace

KeyValueLookup keyValueLookupOf(const Value& object) {
    return [object](std::string_view keyPath) { return valueAtPath(object, keyPath); };
}

bool ComparisonPredicate::holds(const Value& leftValue, const Value& rightValue) const {
    switch (type) {
    case Operator::Equal:
        return isEqual(*this, leftValue, rightValue);
    case Operator::NotEqual:
        return !isEqual(*this, leftValue, rightValue);
    case Operator::Less:
        return order(*this, leftValue, rightValue) < 0;
    case Operator::LessOrEqual:
        return order(*this, leftValue, rightValue) <= 0;
    case Operator::Greater:
        return order(*this, leftValue, rightValue) > 0;
    case Operator::GreaterOrEqual:
        return order(*this, leftValue, rightValue) >= 0;
    case Operator::Contains:
        return contains(*this, leftValue, rightValue);
    case Operator::In:
        return contains(*this, rightValue, leftValue);
    case Operator::Between:
        return isBetween(*this, leftValue, rightValue);
    default:
        return textHolds(*this, type, leftValue, rightValue);
    }
}

bool Predicate::evaluateWithObject(const KeyValueLookup& object) const {
    return std::visit([&object](const auto& node) { return evaluate(node, object); }, _node);
}

PredicateFormatException::PredicateFormatException(
    std::string_view format, std::size_t offset, std::string_view cause)
    : PlatformException("NSInvalidArgumentException", unparsable(format, offset, cause))
    , _offset(offset)
    , _excerpt(excerptAt(format, offset)) {
}

} // namespace exifcard

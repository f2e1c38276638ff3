#pragma once

#include "platform/foundation/Predicate.h"

#include <memory>
#include <string>
#include <string_view>

namespace exifcard {

/// The text without what the comparison ignores.
std::string foldedForComparison(const ComparisonPredicate& comparison, std::string_view text);

/// What a pattern of the comparison compiles to; null when it is none.
std::shared_ptr<const RegularExpression> patternForComparison(
    const ComparisonPredicate& comparison, std::string_view pattern);

/// Whether one of the operators of texts holds; never for a side that is no text.
bool textHolds(
    const ComparisonPredicate& comparison, PredicateOperator type, const Value& left, const Value& right);

} // namespace exifcard

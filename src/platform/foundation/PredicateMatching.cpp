#include "platform/foundation/PredicateMatching.h"

#include "platform/foundation/RegularExpression.h"
#include "platform/foundation/TextMatching.h"

namespace exifcard {
namespace {

bool matchesPattern(const ComparisonPredicate& comparison, std::string_view text, std::string_view pattern) {
    const auto compiled = comparison.pattern ? comparison.pattern : patternForComparison(comparison, pattern);
    return compiled &&
           compiled->matchesWhole(foldedText(text, /*isCaseIgnored=*/false, comparison.areDiacriticsIgnored));
}

} // namespace

std::string foldedForComparison(const ComparisonPredicate& comparison, std::string_view text) {
    return foldedText(text, comparison.isCaseIgnored, comparison.areDiacriticsIgnored);
}

std::shared_ptr<const RegularExpression> patternForComparison(
    const ComparisonPredicate& comparison, std::string_view pattern) {
    // The case is left to the expression: "\W" must not become "\w".
    return RegularExpression::make(
        foldedText(pattern, /*isCaseIgnored=*/false, comparison.areDiacriticsIgnored),
        comparison.isCaseIgnored);
}

bool textHolds(
    const ComparisonPredicate& comparison, PredicateOperator type, const Value& left, const Value& right) {
    if (left.text() == nullptr || right.text() == nullptr) {
        return false;
    }
    if (type == PredicateOperator::Matches) {
        return matchesPattern(comparison, *left.text(), *right.text());
    }
    const auto text = foldedForComparison(comparison, *left.text());
    const auto part = foldedForComparison(comparison, *right.text());
    switch (type) {
    case PredicateOperator::BeginsWith:
        return text.starts_with(part);
    case PredicateOperator::EndsWith:
        return text.ends_with(part);
    case PredicateOperator::Like:
        return matchesWildcards(text, part);
    default:
        return text.find(part) != std::string::npos;
    }
}

} // namespace exifcard

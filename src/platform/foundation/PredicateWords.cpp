#include "platform/foundation/PredicateWords.h"

#include "platform/foundation/ASCII.h"

#include <algorithm>

namespace exifcard {
namespace {

using Operator = PredicateOperator;

struct OperatorSpelling {
    std::string_view spelling;
    Operator type;
};

/// The first of an operator is how it is written.
constexpr OperatorSpelling kOperators[] = {
    {"==", Operator::Equal},
    {"=", Operator::Equal},
    {"!=", Operator::NotEqual},
    {"<>", Operator::NotEqual},
    {"<", Operator::Less},
    {"<=", Operator::LessOrEqual},
    {"=<", Operator::LessOrEqual},
    {">", Operator::Greater},
    {">=", Operator::GreaterOrEqual},
    {"=>", Operator::GreaterOrEqual},
    {"CONTAINS", Operator::Contains},
    {"BEGINSWITH", Operator::BeginsWith},
    {"ENDSWITH", Operator::EndsWith},
    {"LIKE", Operator::Like},
    {"MATCHES", Operator::Matches},
    {"IN", Operator::In},
    {"BETWEEN", Operator::Between},
};

constexpr std::string_view kOtherKeywords[] = {"AND", "OR", "NOT", "TRUEPREDICATE", "FALSEPREDICATE", "CAST",
    "YES", "NO", "TRUE", "FALSE", "NULL", "NIL", "SELF"};

} // namespace

bool isReservedPredicateWord(std::string_view word) {
    const auto isWord = [word](std::string_view keyword) { return isEqualIgnoringCase(word, keyword); };
    return predicateOperatorSpelled(word) || std::ranges::any_of(kOtherKeywords, isWord);
}

std::optional<PredicateOperator> predicateOperatorSpelled(std::string_view spelling) {
    const auto isIt = [spelling](const OperatorSpelling& known) {
        return isEqualIgnoringCase(spelling, known.spelling);
    };
    const auto* const found = std::ranges::find_if(kOperators, isIt);
    return found != std::end(kOperators) ? std::optional(found->type) : std::nullopt;
}

std::string_view spellingOfPredicateOperator(PredicateOperator type) {
    return std::ranges::find(kOperators, type, &OperatorSpelling::type)->spelling;
}

} // namespace exifcard

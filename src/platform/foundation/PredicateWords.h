#pragma once

#include "platform/foundation/Predicate.h"

#include <optional>
#include <string_view>

namespace exifcard {

/// The platform writes a date in seconds from the start of 2001; this is it, in seconds since 1970.
constexpr double kPredicateReferenceDate = 978307200;

/// Whether the word is no key, unless "#" stands before it.
bool isReservedPredicateWord(std::string_view word);

/// The operator of a word or symbol; nothing for any other.
std::optional<PredicateOperator> predicateOperatorSpelled(std::string_view spelling);
/// How the operator is written.
std::string_view spellingOfPredicateOperator(PredicateOperator type);

} // namespace exifcard

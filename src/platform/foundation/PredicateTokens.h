#pragma once

#include "platform/foundation/Value.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace exifcard {

/// A piece of a predicate's format.
struct PredicateToken {
    enum class Kind { End, Word, Key, Number, Text, Symbol, Placeholder };

    Kind kind = Kind::End;
    std::size_t offset = 0;  ///< In bytes from the start of the format.
    std::string_view source; ///< As it is written; of a key without its "#".
    Value value;             ///< Of a number or a text.
};

/// The pieces of a format, which must outlive them, with `End` as the last.
/// @throws PredicateFormatException
std::vector<PredicateToken> predicateTokens(std::string_view format);

} // namespace exifcard

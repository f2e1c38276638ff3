#pragma once

#include "platform/foundation/PlatformException.h"
#include "platform/foundation/Value.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace exifcard {

class RegularExpression;

/// What an object answers for a key path ("creationDate"): nothing for a path that it does not know. The
/// empty path asks for the object itself.
using KeyValueLookup = std::function<Value(std::string_view keyPath)>;
/// The lookup of a dictionary, in which "a.b" is the entry "b" of its entry "a". Anything else answers only
/// for itself.
KeyValueLookup keyValueLookupOf(const Value& object);

/// A path that the object is asked for, in its own case; never empty.
struct PredicateKeyPath {
    std::string path;
};
/// The object itself.
struct PredicateSelf {};

/// One side of a comparison. A constant may be nothing (NULL) or an array.
using PredicateExpression = std::variant<Value, PredicateKeyPath, PredicateSelf>;

enum class PredicateOperator {
    Equal,
    NotEqual,
    Less,
    LessOrEqual,
    Greater,
    GreaterOrEqual,
    Contains,
    BeginsWith,
    EndsWith,
    Like,
    Matches,
    In,
    Between
};

/// Two sides and what is asked of them.
struct ComparisonPredicate {
    PredicateExpression left;
    PredicateOperator type = PredicateOperator::Equal;
    PredicateExpression right;
    bool isCaseIgnored = false;        ///< [c]
    bool areDiacriticsIgnored = false; ///< [d]
    /// Of `Matches` with a constant on its right, else null.
    std::shared_ptr<const RegularExpression> pattern = nullptr;

    /// Whether the two values stand so.
    ///
    /// Numbers of every kind compare with each other, and texts, dates and data with their own kind. Any
    /// other two values are unequal and in no order, nothing included, which equals only itself; `NotEqual`
    /// is the opposite of `Equal` in every case. Texts compare byte by byte, so by code point. A text `In` a
    /// text is a part of it; the empty text is part of every text. Both ends of `Between` count.
    bool holds(const Value& leftValue, const Value& rightValue) const;
};

class Predicate;
using PredicatePtr = std::shared_ptr<const Predicate>;

/// Parts that must all hold, any of which must hold, or the one part that must not. `And` without parts is
/// always true, `Or` without parts never.
struct CompoundPredicate {
    enum class Type { Not = 0, And = 1, Or = 2 };
    Type type = Type::And;
    std::vector<PredicatePtr> subpredicates;
};

/// A condition on objects, such as "favorite = YES AND title CONTAINS[cd] 'sea'". Immutable.
///
/// What is asked has two answers only: NOT of what does not hold holds, with an absent value too.
class Predicate {
public:
    using Node = std::variant<ComparisonPredicate, CompoundPredicate>;

    /// Limits of a format, so that whoever compiles the tree need not set any of its own. What people and
    /// programs write stays far below them.
    static constexpr std::size_t kLongestFormat = 16384; ///< In bytes.
    static constexpr std::size_t kDeepestNesting = 64;   ///< Parentheses and NOTs; about as deep is the tree.
    static constexpr std::size_t kMostComparisons = 500;
    static constexpr std::size_t kMostListElements = 10000; ///< Of all lists and `arguments` arrays together.

    /// Reads a format of the platform's predicate language.
    ///
    /// @param arguments  In the order of their placeholders: "%@" takes any value as it is, "%d %i %u %ld %lu
    ///                   %f" a number, "%K" the text of a key path.
    /// @throws PredicateFormatException
    static PredicatePtr predicateWithFormat(
        std::string_view format, const std::vector<Value>& arguments = {});

    explicit Predicate(Node node) : _node(std::move(node)) {}

    const Node& node() const { return _node; }
    bool evaluateWithObject(const KeyValueLookup& object) const;
    /// A format that reads as this predicate, as far as its constants can be written.
    std::string predicateFormat() const;

private:
    const Node _node;
};

/// "NSInvalidArgumentException": a format that is none, and where.
class PredicateFormatException : public PlatformException {
public:
    /// @param offset  Where the fault is, in bytes from the start of `format`, at most its size.
    PredicateFormatException(std::string_view format, std::size_t offset, std::string_view cause);

    std::size_t offset() const { return _offset; }
    /// What stands at the fault, cut to a readable length; empty at the end of the format.
    const std::string& excerpt() const { return _excerpt; }

private:
    std::size_t _offset;
    std::string _excerpt;
};

} // namespace exifcard

#pragma once

#include "platform/foundation/Predicate.h"
#include "platform/foundation/SortDescriptor.h"
#include "platform/foundation/Value.h"
#include "platform/sqlite/SQLiteDatabase.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace exifcard {

/// A key that may be asked for in a predicate or sorted by, and what it is in the catalogue.
struct QueryKey {
    enum class Kind {
        Number,
        Text,
        Date,
        Identifier, ///< Texts in which `expression` is what stands before `suffix`.
        Presence    ///< Only whether there is one can be asked; `expression` is 0 or 1.
    };

    std::string_view name;
    std::string_view expression;
    Kind kind = Kind::Number;
    std::string_view suffix = {};
};

/// A comparison that SQL cannot make itself: it asks `predicate_holds` for it, by its index.
struct ForeignComparison {
    ComparisonPredicate comparison;
    bool isLeftDate = false;
    bool isRightDate = false;
};
using ForeignComparisons = std::vector<ForeignComparison>;

/// Puts a query together, piece by piece.
struct QueryText {
    std::string sql;
    std::vector<Value> arguments;
    std::shared_ptr<ForeignComparisons> comparisons = std::make_shared<ForeignComparisons>();

    void add(std::string_view text) { sql += text; }
    void add(std::string_view text, Value argument) {
        sql += text;
        arguments.push_back(std::move(argument));
    }
    /// Makes the query on that connection.
    SQLiteStatement on(SQLiteDatabase& database) const;
};

/// Adds the condition of a predicate. It means exactly what the predicate does, absent values included.
/// @throws PlatformException "Unsupported predicate in fetch options" for an unknown key and for what a key
///         cannot be asked.
void addPredicate(QueryText& query, const Predicate& predicate, std::span<const QueryKey> keys);

/// Adds "ORDER BY" and the terms of the descriptors.
/// @param tieBreak  The column that makes the order definite; it runs as the last descriptor does.
/// @throws PlatformException "Unsupported sort descriptor in fetch options" for an unknown key.
void addOrder(QueryText& query,
    std::span<const SortDescriptor> descriptors,
    std::span<const QueryKey> keys,
    std::string_view tieBreak);

} // namespace exifcard

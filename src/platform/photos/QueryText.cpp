#include "platform/photos/QueryText.h"

#include "platform/foundation/Array.h"
#include "platform/foundation/PlatformException.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <variant>

namespace exifcard {
namespace {

using Kind = QueryKey::Kind;

constexpr std::string_view kFunction = "predicate_holds";
/// Longer lists are compared one by one; it keeps a query below what SQLite takes.
constexpr std::size_t kMostListedArguments = 1000;

struct OperatorText {
    PredicateOperator type;
    std::string_view sql;
    PredicateOperator mirrored; ///< What it is when the sides change places.
};
constexpr OperatorText kOperators[] = {
    {PredicateOperator::Equal, "=", PredicateOperator::Equal},
    {PredicateOperator::NotEqual, "IS NOT", PredicateOperator::NotEqual},
    {PredicateOperator::Less, "<", PredicateOperator::Greater},
    {PredicateOperator::LessOrEqual, "<=", PredicateOperator::GreaterOrEqual},
    {PredicateOperator::Greater, ">", PredicateOperator::Less},
    {PredicateOperator::GreaterOrEqual, ">=", PredicateOperator::LessOrEqual},
};

const OperatorText* operatorText(PredicateOperator type) {
    const auto* const found = std::ranges::find(kOperators, type, &OperatorText::type);
    return found == std::end(kOperators) ? nullptr : found;
}

[[noreturn]] void refuse(std::string_view what) {
    throw PlatformException("NSInvalidArgumentException", std::string(what));
}

const QueryKey* keyNamed(std::string_view name, std::span<const QueryKey> keys) {
    const auto found = std::ranges::find(keys, name, &QueryKey::name);
    return found == keys.end() ? nullptr : &*found;
}

bool isOfKind(const Value& value, Kind kind) {
    switch (kind) {
    case Kind::Number:
        return value.isNumber();
    case Kind::Date:
        return value.date().has_value();
    default:
        return value.text() != nullptr;
    }
}

/// The text of a key; of an identifier the whole one.
std::string expressionOf(const QueryKey& key) {
    return key.kind == Kind::Identifier ? fmt::format("({} || '{}')", key.expression, key.suffix)
                                        : std::string(key.expression);
}

class Compiler {
public:
    Compiler(QueryText& query, const Predicate& whole, std::span<const QueryKey> keys)
        : _query(query)
        , _whole(whole)
        , _keys(keys) {}

    void add(const Predicate& predicate) {
        std::visit([this](const auto& node) { addNode(node); }, predicate.node());
    }

private:
    void addNode(const CompoundPredicate& compound) {
        if (compound.type == CompoundPredicate::Type::Not) {
            // What is neither true nor false, for a value is absent, does not hold.
            _query.add("(");
            add(*compound.subpredicates.front());
            _query.add(") IS NOT TRUE");
            return;
        }
        const bool isAnd = compound.type == CompoundPredicate::Type::And;
        _query.add(compound.subpredicates.empty() ? (isAnd ? "(1" : "(0") : "(");
        std::string_view separator;
        for (const PredicatePtr& part : compound.subpredicates) {
            _query.add(separator);
            add(*part);
            separator = isAnd ? " AND " : " OR ";
        }
        _query.add(")");
    }

    void addNode(const ComparisonPredicate& comparison) {
        const QueryKey* const left = keyOf(comparison.left);
        const QueryKey* const right = keyOf(comparison.right);
        if (left == nullptr && right == nullptr) {
            const bool holds =
                comparison.holds(std::get<Value>(comparison.left), std::get<Value>(comparison.right));
            _query.add(holds ? "1" : "0");
            return;
        }
        const bool isDone =
            addPresence(comparison, left, right) ||
            (left != nullptr && addWithConstant(comparison, *left, comparison.type, comparison.right)) ||
            addMirrored(comparison, left, right);
        if (!isDone) {
            addForeign(comparison, left, right);
        }
    }

    /// Null for a constant.
    const QueryKey* keyOf(const PredicateExpression& side) const {
        if (std::holds_alternative<Value>(side)) {
            return nullptr;
        }
        const auto* const path = std::get_if<PredicateKeyPath>(&side);
        const QueryKey* const key = keyNamed(path == nullptr ? "SELF" : std::string_view(path->path), _keys);
        if (key == nullptr) {
            refuseWhole();
        }
        return key;
    }

    [[noreturn]] void refuseWhole() const {
        refuse("Unsupported predicate in fetch options: " + _whole.predicateFormat());
    }

    /// "location != NULL" and its like; nothing else can be asked of such a key.
    bool addPresence(const ComparisonPredicate& comparison, const QueryKey* left, const QueryKey* right) {
        const QueryKey* const key = left != nullptr ? left : right;
        const PredicateExpression& other = left != nullptr ? comparison.right : comparison.left;
        const bool asksPresence = (left != nullptr && left->kind == Kind::Presence) ||
                                  (right != nullptr && right->kind == Kind::Presence);
        if (!asksPresence) {
            return false;
        }
        const auto* const constant = std::get_if<Value>(&other);
        const bool isEqual = comparison.type == PredicateOperator::Equal;
        if (constant == nullptr || !constant->isNothing() ||
            (!isEqual && comparison.type != PredicateOperator::NotEqual)) {
            refuseWhole();
        }
        _query.add(fmt::format("{} = {}", key->expression, isEqual ? 0 : 1));
        return true;
    }

    /// A constant on the left of an operator that can be turned round.
    bool addMirrored(const ComparisonPredicate& comparison, const QueryKey* left, const QueryKey* right) {
        const OperatorText* const text = operatorText(comparison.type);
        return left == nullptr && right != nullptr && text != nullptr &&
               addWithConstant(comparison, *right, text->mirrored, comparison.left);
    }

    bool addWithConstant(const ComparisonPredicate& comparison,
        const QueryKey& key,
        PredicateOperator type,
        const PredicateExpression& other) {
        const auto* const constant = std::get_if<Value>(&other);
        if (constant == nullptr || comparison.isCaseIgnored || comparison.areDiacriticsIgnored) {
            return false;
        }
        if (type == PredicateOperator::In) {
            return addList(key, *constant);
        }
        if (type == PredicateOperator::Contains && key.kind != Kind::Number &&
            isOfKind(*constant, key.kind)) {
            _query.add(fmt::format("instr({}, ?) > 0", expressionOf(key)), *constant);
            return true;
        }
        const OperatorText* const text = operatorText(type);
        if (text == nullptr) {
            return false;
        }
        if (constant->isNothing()) {
            return addNothing(key, type);
        }
        if (!isOfKind(*constant, key.kind)) {
            // Values of two kinds are unequal and in no order.
            _query.add(type == PredicateOperator::NotEqual ? "1" : "0");
            return true;
        }
        addSimple(key, *text, *constant);
        return true;
    }

    bool addNothing(const QueryKey& key, PredicateOperator type) {
        const bool isEqual = type == PredicateOperator::Equal;
        if (!isEqual && type != PredicateOperator::NotEqual) {
            return false;
        }
        _query.add(fmt::format("{} {}", key.expression, isEqual ? "IS NULL" : "IS NOT NULL"));
        return true;
    }

    void addSimple(const QueryKey& key, const OperatorText& text, const Value& constant) {
        const bool isWhole = constant.kind() == Value::Kind::Integer || constant.kind() == Value::Kind::Bool;
        if (isWhole) {
            // Spelled out, so that an index of just these rows is seen to fit.
            _query.add(fmt::format("{} {} {}", key.expression, text.sql, constant.integerValue()));
        } else if (key.kind == Kind::Identifier && text.type == PredicateOperator::Equal) {
            addIdentifier(key, *constant.text());
        } else {
            _query.add(fmt::format("{} {} ?", expressionOf(key), text.sql), constant);
        }
    }

    /// Asks the index of identifiers.
    void addIdentifier(const QueryKey& key, const std::string& identifier) {
        if (!identifier.ends_with(key.suffix)) {
            _query.add("0");
            return;
        }
        _query.add(fmt::format("{} = ?", key.expression),
            identifier.substr(0, identifier.size() - key.suffix.size()));
    }

    bool addList(const QueryKey& key, const Value& constant) {
        const Array* const list = constant.arrayView();
        if (list == nullptr || list->count() > kMostListedArguments ||
            std::ranges::any_of(*list, [](const Value& value) { return value.isNothing(); })) {
            return false;
        }
        _query.add(fmt::format("{} IN (", expressionOf(key)));
        std::string_view separator;
        for (const Value& value : *list) {
            if (isOfKind(value, key.kind)) {
                _query.add(fmt::format("{}?", separator), value);
                separator = ", ";
            }
        }
        _query.add(")");
        return true;
    }

    void addForeign(const ComparisonPredicate& comparison, const QueryKey* left, const QueryKey* right) {
        const auto isDate = [](const QueryKey* key) { return key != nullptr && key->kind == Kind::Date; };
        const auto side = [](const QueryKey* key) {
            return key == nullptr ? std::string("NULL") : expressionOf(*key);
        };
        _query.add(
            fmt::format("{}({}, {}, {})", kFunction, _query.comparisons->size(), side(left), side(right)));
        _query.comparisons->push_back({comparison, isDate(left), isDate(right)});
    }

    QueryText& _query;
    const Predicate& _whole;
    std::span<const QueryKey> _keys;
};

/// One side of a foreign comparison, with the value that the row has for a key.
Value sideValue(const PredicateExpression& side, const Value& column, bool isDate) {
    if (const auto* const constant = std::get_if<Value>(&side)) {
        return *constant;
    }
    return isDate && !column.isNothing() ? Value(Date{column.doubleValue()}) : column;
}

} // namespace

SQLiteStatement QueryText::on(SQLiteDatabase& database) const {
    if (!comparisons->empty()) {
        database.setFunction(std::string(kFunction), [foreign = comparisons](std::span<const Value> given) {
            const ForeignComparison& asked = foreign->at(static_cast<std::size_t>(given[0].integerValue()));
            return asked.comparison.holds(sideValue(asked.comparison.left, given[1], asked.isLeftDate),
                sideValue(asked.comparison.right, given[2], asked.isRightDate));
        });
    }
    return database.query(sql, arguments);
}

void addPredicate(QueryText& query, const Predicate& predicate, std::span<const QueryKey> keys) {
    Compiler(query, predicate, keys).add(predicate);
}

void addOrder(QueryText& query,
    std::span<const SortDescriptor> descriptors,
    std::span<const QueryKey> keys,
    std::string_view tieBreak) {
    query.add(" ORDER BY ");
    bool isAscending = true;
    for (const SortDescriptor& descriptor : descriptors) {
        const QueryKey* const key = keyNamed(descriptor.key, keys);
        if (key == nullptr || key->kind == Kind::Presence) {
            refuse("Unsupported sort descriptor in fetch options: " + descriptor.key);
        }
        isAscending = descriptor.ascending;
        query.add(fmt::format("{}{}, ", key->expression, isAscending ? "" : " DESC"));
    }
    query.add(fmt::format("{}{}", tieBreak, isAscending ? "" : " DESC"));
}

} // namespace exifcard

#include "platform/foundation/ASCII.h"
#include "platform/foundation/Array.h"
#include "platform/foundation/Predicate.h"
#include "platform/foundation/PredicateWords.h"

#include <fmt/format.h>

#include <algorithm>

namespace exifcard {
namespace {

using Kind = Value::Kind;
using Type = CompoundPredicate::Type;

std::string quoted(std::string_view text) {
    constexpr std::pair<char, char> kEscapes[] = {
        {'"', '"'}, {'\\', '\\'}, {'\n', 'n'}, {'\r', 'r'}, {'\t', 't'}};
    std::string result = "\"";
    for (const char letter : text) {
        const auto* const escape = std::ranges::find(kEscapes, letter, &std::pair<char, char>::first);
        if (escape != std::end(kEscapes)) {
            result += '\\';
        }
        result += escape != std::end(kEscapes) ? escape->second : letter;
    }
    return result + '"';
}

std::string textOfConstant(const Value& value);

std::string textOfList(const Array& list) {
    std::vector<std::string> elements;
    std::ranges::transform(list, std::back_inserter(elements), textOfConstant);
    return fmt::format("{{{}}}", fmt::join(elements, ", "));
}

std::string textOfConstant(const Value& value) {
    switch (value.kind()) {
    case Kind::Nothing:
        return "NULL";
    case Kind::Bool:
        return value.boolValue() ? "YES" : "NO";
    case Kind::Integer:
        return fmt::to_string(value.integerValue());
    case Kind::Float:
    case Kind::Double:
        return fmt::to_string(
            value.doubleValue() + 0.0); // "-0" would be read as a whole number without sign.
    case Kind::Date:
        return fmt::format("CAST({}, \"NSDate\")", value.date()->secondsSince1970 - kPredicateReferenceDate);
    case Kind::Array:
        return textOfList(*value.arrayView());
    default:
        return quoted(value.text() != nullptr ? *value.text() : value.description());
    }
}

/// The path, with "#" where it would be read as something else.
std::string textOfPath(const std::string& path) {
    const auto firstKey = std::string_view(path).substr(0, path.find('.'));
    const bool needsMark = isReservedPredicateWord(path) || isEqualIgnoringCase(firstKey, "SELF");
    return needsMark ? "#" + path : path;
}

std::string textOfExpression(const PredicateExpression& expression) {
    if (const auto* const constant = std::get_if<Value>(&expression)) {
        return textOfConstant(*constant);
    }
    const auto* const key = std::get_if<PredicateKeyPath>(&expression);
    return key != nullptr ? textOfPath(key->path) : "SELF";
}

std::string textOfNode(const ComparisonPredicate& comparison) {
    const std::string options =
        fmt::format("{}{}", comparison.isCaseIgnored ? "c" : "", comparison.areDiacriticsIgnored ? "d" : "");
    return fmt::format("{} {}{} {}", textOfExpression(comparison.left),
        spellingOfPredicateOperator(comparison.type), options.empty() ? "" : "[" + options + "]",
        textOfExpression(comparison.right));
}

/// The part, in parentheses where it binds less than the whole; so the text is never nested deeper than
/// the format that was read.
std::string textOfPart(const Predicate& part, Type whole) {
    const auto* const compound = std::get_if<CompoundPredicate>(&part.node());
    const bool bindsMore = compound == nullptr || compound->type == Type::Not ||
                           compound->subpredicates.empty() ||
                           (compound->type == Type::And && whole == Type::Or);
    return bindsMore ? part.predicateFormat() : fmt::format("({})", part.predicateFormat());
}

std::string textOfNode(const CompoundPredicate& compound) {
    if (compound.subpredicates.empty()) {
        return compound.type == Type::And ? "TRUEPREDICATE" : "FALSEPREDICATE";
    }
    std::vector<std::string> parts;
    for (const auto& part : compound.subpredicates) {
        parts.push_back(textOfPart(*part, compound.type));
    }
    if (compound.type == Type::Not) {
        return "NOT " + parts.front();
    }
    return fmt::to_string(fmt::join(parts, compound.type == Type::And ? " AND " : " OR "));
}

} // namespace

std::string Predicate::predicateFormat() const {
    return std::visit([](const auto& node) { return textOfNode(node); }, _node);
}

} // namespace exifcard

#include "platform/foundation/ASCII.h"
#include "platform/foundation/Array.h"
#include "platform/foundation/Predicate.h"
#include "platform/foundation/PredicateMatching.h"
#include "platform/foundation/PredicateTokens.h"
#include "platform/foundation/PredicateWords.h"
#include "platform/foundation/RegularExpression.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

namespace exifcard {
namespace {

using Kind = PredicateToken::Kind;
using Operator = PredicateOperator;
using Type = CompoundPredicate::Type;

struct NamedConstant {
    std::string_view name;
    Value value;
};

bool isWord(const PredicateToken& token, std::string_view keyword) {
    return token.kind == Kind::Word && isEqualIgnoringCase(token.source, keyword);
}

PredicatePtr makePredicate(Predicate::Node node) {
    return std::make_shared<const Predicate>(std::move(node));
}

/// Reads by recursive descent, from the operators that bind least to those that bind most.
class Parser {
public:
    Parser(std::string_view format, const std::vector<Value>& arguments)
        : _format(format)
        , _arguments(arguments)
        , _tokens(predicateTokens(format)) {}

    PredicatePtr parse() {
        auto predicate = takeAlternatives();
        if (current().kind != Kind::End) {
            fail(R"("AND", "OR" or the end is expected)");
        }
        return predicate;
    }

private:
    const PredicateToken& current() const { return _tokens[_at]; }
    void advance() { _at += current().kind == Kind::End ? 0 : 1; }

    [[noreturn]] void failAt(const PredicateToken& token, std::string_view cause) const {
        throw PredicateFormatException(_format, token.offset, cause);
    }
    [[noreturn]] void fail(std::string_view cause) const { failAt(current(), cause); }

    bool takeSymbol(std::string_view symbol) {
        const bool isThere = current().kind == Kind::Symbol && current().source == symbol;
        if (isThere) {
            advance();
        }
        return isThere;
    }

    bool takeWord(std::string_view keyword) {
        const bool isThere = isWord(current(), keyword);
        if (isThere) {
            advance();
        }
        return isThere;
    }

    void requireSymbol(std::string_view symbol) {
        if (!takeSymbol(symbol)) {
            fail(fmt::format(R"("{}" is expected)", symbol));
        }
    }

    PredicatePtr takeAlternatives() {
        CompoundPredicate alternatives{Type::Or, {takeConjunction()}};
        while (takeSymbol("||") || takeWord("OR")) {
            alternatives.subpredicates.push_back(takeConjunction());
        }
        return asOne(std::move(alternatives));
    }

    PredicatePtr takeConjunction() {
        CompoundPredicate parts{Type::And, {takeNegation()}};
        while (takeSymbol("&&") || takeWord("AND")) {
            parts.subpredicates.push_back(takeNegation());
        }
        return asOne(std::move(parts));
    }

    static PredicatePtr asOne(CompoundPredicate compound) {
        return compound.subpredicates.size() == 1 ? compound.subpredicates.front()
                                                  : makePredicate(std::move(compound));
    }

    PredicatePtr takeNegation() {
        if (takeSymbol("!") || takeWord("NOT")) {
            return nested([this] { return makePredicate(CompoundPredicate{Type::Not, {takeNegation()}}); });
        }
        if (takeSymbol("(")) {
            return nested([this] {
                auto inner = takeAlternatives();
                requireSymbol(")");
                return inner;
            });
        }
        return takeComparison();
    }

    template<typename Take>
    PredicatePtr nested(const Take& take) {
        if (++_depth > Predicate::kDeepestNesting) {
            fail("the predicate is nested too deeply");
        }
        auto predicate = take();
        --_depth;
        return predicate;
    }

    PredicatePtr takeComparison() {
        if (++_comparisons > Predicate::kMostComparisons) {
            fail("the predicate has too many comparisons");
        }
        if (takeWord("TRUEPREDICATE")) {
            return makePredicate(CompoundPredicate{Type::And, {}});
        }
        if (takeWord("FALSEPREDICATE")) {
            return makePredicate(CompoundPredicate{Type::Or, {}});
        }
        ComparisonPredicate comparison;
        comparison.left = takeExpression();
        comparison.type = takeOperator();
        takeOptions(comparison);
        const auto rightToken = current();
        comparison.right = takeExpression();
        checkRightSide(comparison, rightToken);
        return makePredicate(std::move(comparison));
    }

    Operator takeOperator() {
        const auto& token = current();
        const bool canBe = token.kind == Kind::Symbol || token.kind == Kind::Word;
        const auto type = canBe ? predicateOperatorSpelled(token.source) : std::nullopt;
        if (!type) {
            fail(R"(a comparison such as "=" or "CONTAINS" is expected)");
        }
        advance();
        return *type;
    }

    void takeOptions(ComparisonPredicate& comparison) {
        if (!takeSymbol("[")) {
            return;
        }
        const auto options = current().kind == Kind::Word ? current().source : std::string_view();
        const auto isOption = [](char letter) { return letter == 'c' || letter == 'd'; };
        if (options.empty() || !std::ranges::all_of(options, isOption)) {
            fail(R"("c", "d" or "cd" is expected)");
        }
        comparison.isCaseIgnored = options.find('c') != std::string_view::npos;
        comparison.areDiacriticsIgnored = options.find('d') != std::string_view::npos;
        advance();
        requireSymbol("]");
    }

    void checkRightSide(ComparisonPredicate& comparison, const PredicateToken& token) const {
        const auto* const constant = std::get_if<Value>(&comparison.right);
        if (constant == nullptr) {
            return;
        }
        const Array* const list = constant->arrayView();
        if (comparison.type == Operator::Between && (list == nullptr || list->count() != 2)) {
            failAt(token, R"(two limits such as "{1, 2}" are expected)");
        }
        if (comparison.type == Operator::In && list == nullptr && constant->text() == nullptr) {
            failAt(token, R"(a list such as "{1, 2}" or a text is expected)");
        }
        if (comparison.type == Operator::Matches) {
            comparison.pattern = patternOfConstant(comparison, *constant);
            if (!comparison.pattern) {
                failAt(token, "a regular expression is expected");
            }
        }
    }

    static std::shared_ptr<const RegularExpression> patternOfConstant(
        const ComparisonPredicate& comparison, const Value& constant) {
        const std::string* const text = constant.text();
        return text == nullptr ? nullptr : patternForComparison(comparison, *text);
    }

    PredicateExpression takeExpression() {
        const auto token = current();
        advance();
        switch (token.kind) {
        case Kind::Number:
        case Kind::Text:
            return token.value;
        case Kind::Key:
            return PredicateKeyPath{std::string(token.source)};
        case Kind::Placeholder:
            return takeArgument(token);
        case Kind::Word:
            return expressionOfWord(token);
        default:
            break;
        }
        if (token.kind == Kind::Symbol && token.source == "{") {
            return takeList();
        }
        failAt(token, "a key or a value is expected");
    }

    PredicateExpression expressionOfWord(const PredicateToken& token) {
        static const NamedConstant kConstants[] = {
            {"YES", true}, {"TRUE", true}, {"NO", false}, {"FALSE", false}, {"NULL", {}}, {"NIL", {}}};
        for (const auto& [name, value] : kConstants) {
            if (isWord(token, name)) {
                return value;
            }
        }
        if (isWord(token, "SELF")) {
            return PredicateSelf{};
        }
        if (isWord(token, "CAST")) {
            return takeDate();
        }
        if (isReservedPredicateWord(token.source)) {
            failAt(token, "a key or a value is expected");
        }
        constexpr std::string_view kSelfPrefix = "SELF.";
        const bool isOfSelf = token.source.size() > kSelfPrefix.size() &&
                              isEqualIgnoringCase(token.source.substr(0, kSelfPrefix.size()), kSelfPrefix);
        return PredicateKeyPath{std::string(token.source.substr(isOfSelf ? kSelfPrefix.size() : 0))};
    }

    /// The rest of "CAST(12.5, "NSDate")", as the platform writes a date.
    Value takeDate() {
        requireSymbol("(");
        if (current().kind != Kind::Number) {
            fail("a number of seconds since 2001 is expected");
        }
        const double seconds = current().value.doubleValue();
        advance();
        requireSymbol(",");
        if (current().kind != Kind::Text || *current().value.text() != "NSDate") {
            fail(R"("NSDate" is expected)");
        }
        advance();
        requireSymbol(")");
        return Date{seconds + kPredicateReferenceDate};
    }

    PredicateExpression takeArgument(const PredicateToken& placeholder) {
        if (_nextArgument == _arguments.size()) {
            failAt(placeholder, "the placeholder has no argument");
        }
        const Value& argument = _arguments[_nextArgument++];
        if (placeholder.source == "%@") {
            countElements(placeholder, argument.arrayView() != nullptr ? argument.arrayView()->count() : 0);
            return argument.copied();
        }
        if (placeholder.source == "%K") {
            if (argument.text() == nullptr || argument.text()->empty()) {
                failAt(placeholder, "its argument is no key");
            }
            return PredicateKeyPath{*argument.text()};
        }
        if (!argument.isNumber()) {
            failAt(placeholder, "its argument is no number");
        }
        return argument;
    }

    Value takeList() {
        std::vector<Value> elements;
        while (!takeSymbol("}")) {
            if (!elements.empty()) {
                requireSymbol(",");
            }
            const auto token = current();
            const auto element = takeExpression();
            const auto* const constant = std::get_if<Value>(&element);
            if (constant == nullptr || constant->arrayView() != nullptr) {
                failAt(token, "a value is expected in a list");
            }
            countElements(token, 1);
            elements.push_back(*constant);
        }
        return std::make_shared<Array>(std::move(elements));
    }

    void countElements(const PredicateToken& token, std::size_t count) {
        if (count > Predicate::kMostListElements - _listElements) {
            failAt(token, "the lists have too many elements");
        }
        _listElements += count;
    }

    const std::string_view _format;
    const std::vector<Value>& _arguments;
    const std::vector<PredicateToken> _tokens;
    std::size_t _at = 0;
    std::size_t _nextArgument = 0;
    std::size_t _depth = 0;
    std::size_t _comparisons = 0;
    std::size_t _listElements = 0;
};

} // namespace

PredicatePtr Predicate::predicateWithFormat(std::string_view format, const std::vector<Value>& arguments) {
    return Parser(format, arguments).parse();
}

} // namespace exifcard

#include "platform/foundation/PredicateTokens.h"

#include "platform/foundation/Predicate.h"
#include "platform/foundation/UTF8.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <system_error>

namespace exifcard {
namespace {

using Kind = PredicateToken::Kind;

/// The longer ones first, so that the longest that fits is taken.
constexpr std::string_view kSymbols[] = {"==", "=<", "=>", "!=", "<>", "<=", ">=", "&&", "||", "=", "!", "<",
    ">", "(", ")", "{", "}", "[", "]", ","};
constexpr std::string_view kPlaceholders[] = {
    "%@", "%K", "%d", "%i", "%u", "%f", "%ld", "%li", "%lu", "%lf", "%lld", "%lli", "%llu"};

constexpr std::string_view kSpace = " \t\r\n\f\v";

bool isDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

/// Letters of every script may stand in a key.
bool isWordStart(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || byte == '_' || byte == '$' ||
           static_cast<signed char>(byte) < 0;
}

bool isWordPart(char byte) {
    return isWordStart(byte) || isDigit(byte) || byte == '.';
}

char unescaped(char letter) {
    constexpr std::pair<char, char> kEscapes[] = {{'n', '\n'}, {'r', '\r'}, {'t', '\t'}};
    const auto* const found = std::ranges::find(kEscapes, letter, &std::pair<char, char>::first);
    return found != std::end(kEscapes) ? found->second : letter;
}

class Scanner {
public:
    explicit Scanner(std::string_view format) : _format(format) {}

    PredicateToken next() {
        _at = std::min(_format.find_first_not_of(kSpace, _at), _format.size());
        if (_at == _format.size()) {
            return {Kind::End, _at, {}, {}};
        }
        const char first = _format[_at];
        if (first == '"' || first == '\'') {
            return takeText(first);
        }
        if (first == '%') {
            return takeOneOf(kPlaceholders, Kind::Placeholder, "an unknown placeholder");
        }
        if (startsNumber()) {
            return takeNumber();
        }
        if (first == '#' || isWordStart(first)) {
            return takeWord();
        }
        return takeOneOf(kSymbols, Kind::Symbol, "an unknown character");
    }

private:
    [[noreturn]] void fail(std::size_t offset, std::string_view cause) const {
        throw PredicateFormatException(_format, offset, cause);
    }

    PredicateToken take(Kind kind, std::size_t length, Value value = {}) {
        PredicateToken token{kind, _at, _format.substr(_at, length), std::move(value)};
        _at += length;
        return token;
    }

    template<std::size_t count>
    PredicateToken takeOneOf(
        const std::string_view (&spellings)[count], Kind kind, std::string_view otherwise) {
        const auto rest = _format.substr(_at);
        const auto* longest = std::end(spellings);
        for (const auto* spelling = std::begin(spellings); spelling != std::end(spellings); ++spelling) {
            const bool isLonger = longest == std::end(spellings) || spelling->size() > longest->size();
            if (rest.starts_with(*spelling) && isLonger) {
                longest = spelling;
            }
        }
        if (longest == std::end(spellings)) {
            fail(_at, otherwise);
        }
        return take(kind, longest->size());
    }

    PredicateToken takeWord() {
        const bool isKey = _format[_at] == '#'; // Lets a key be named like a keyword.
        _at += isKey ? 1 : 0;
        const auto rest = _format.substr(_at);
        const auto length =
            static_cast<std::size_t>(std::ranges::find_if_not(rest, isWordPart) - rest.begin());
        if (length == 0 || !isWordStart(rest.front())) {
            fail(_at - 1, "a key is expected after \"#\"");
        }
        return take(isKey ? Kind::Key : Kind::Word, length);
    }

    bool startsNumber() const {
        const auto rest = _format.substr(_at);
        const auto digits = rest.substr(rest.front() == '-' || rest.front() == '+' ? 1 : 0);
        return !digits.empty() &&
               (isDigit(digits[0]) || (digits.size() > 1 && digits[0] == '.' && isDigit(digits[1])));
    }

    PredicateToken takeNumber() {
        const char* const start = _format.data() + _at + (_format[_at] == '+' ? 1 : 0);
        const char* const end = _format.data() + _format.size();
        double real = 0;
        const auto parsed = std::from_chars(start, end, real);
        if (parsed.ec != std::errc()) {
            fail(_at, "the number is out of range");
        }
        const auto length = static_cast<std::size_t>(parsed.ptr - _format.data()) - _at;
        if (parsed.ptr != end && isWordPart(*parsed.ptr)) {
            fail(_at, "what begins as a number does not end as one");
        }
        std::int64_t integer = 0;
        const auto whole = std::from_chars(start, parsed.ptr, integer);
        const bool isWhole = whole.ec == std::errc() && whole.ptr == parsed.ptr;
        return take(Kind::Number, length, isWhole ? Value(integer) : Value(real));
    }

    PredicateToken takeText(char quote) {
        std::string text;
        for (std::size_t at = _at + 1; at < _format.size(); ++at) {
            if (_format[at] == quote) {
                return take(Kind::Text, at + 1 - _at, std::move(text));
            }
            if (_format[at] == '\\' && at + 1 < _format.size()) {
                text += unescaped(_format[++at]);
            } else {
                text += _format[at];
            }
        }
        fail(_at, "the text does not end");
    }

    const std::string_view _format;
    std::size_t _at = 0;
};

} // namespace

std::vector<PredicateToken> predicateTokens(std::string_view format) {
    if (format.size() > Predicate::kLongestFormat) {
        throw PredicateFormatException(format, Predicate::kLongestFormat, "the format is too long");
    }
    if (!isValidUTF8(format)) {
        throw PredicateFormatException(format, 0, "the format is no UTF-8 text");
    }
    std::vector<PredicateToken> tokens;
    Scanner scanner(format);
    do {
        tokens.push_back(scanner.next());
    } while (tokens.back().kind != Kind::End);
    return tokens;
}

} // namespace exifcard

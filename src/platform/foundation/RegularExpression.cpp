#include "platform/foundation/RegularExpression.h"

#include <unicode/regex.h>

#include <cstddef>
#include <cstdint>
#include <limits>

namespace exifcard {
namespace {

/// Compiling takes memory in proportion.
constexpr std::size_t kLongestPattern = 16384;
/// In steps of ICU's engine, which are about milliseconds: patterns that backtrack without end are given up.
constexpr std::int32_t kLongestSearch = 20;
/// In bytes of ICU's own stack, which lies on the heap.
constexpr std::int32_t kDeepestSearch = 4 << 20;
/// ICU counts UTF-16 units in 32 bits.
constexpr std::size_t kLongestText = std::numeric_limits<std::int32_t>::max() / 4;

} // namespace

class RegularExpression::Implementation {
public:
    explicit Implementation(std::unique_ptr<const icu::RegexPattern> pattern)
        : _pattern(std::move(pattern)) {}

    bool matchesWhole(const icu::UnicodeString& text) const {
        auto status = U_ZERO_ERROR;
        const std::unique_ptr<icu::RegexMatcher> matcher(_pattern->matcher(text, status));
        if (matcher == nullptr || U_FAILURE(status) != 0) {
            return false;
        }
        matcher->setTimeLimit(kLongestSearch, status);
        matcher->setStackLimit(kDeepestSearch, status);
        const bool fits = matcher->matches(status) != 0;
        return U_SUCCESS(status) != 0 && fits;
    }

private:
    const std::unique_ptr<const icu::RegexPattern> _pattern;
};

RegularExpression::RegularExpression(std::unique_ptr<const Implementation> implementation)
    : _implementation(std::move(implementation)) {
}

RegularExpression::~RegularExpression() = default;

std::shared_ptr<const RegularExpression> RegularExpression::make(
    std::string_view pattern, bool isCaseIgnored) {
    if (pattern.size() > kLongestPattern) {
        return nullptr;
    }
    auto status = U_ZERO_ERROR;
    UParseError place = {};
    std::unique_ptr<const icu::RegexPattern> compiled(icu::RegexPattern::compile(
        icu::UnicodeString::fromUTF8(pattern), isCaseIgnored ? UREGEX_CASE_INSENSITIVE : 0, place, status));
    if (compiled == nullptr || U_FAILURE(status) != 0) {
        return nullptr;
    }
    return std::shared_ptr<const RegularExpression>(
        new RegularExpression(std::make_unique<const Implementation>(std::move(compiled))));
}

bool RegularExpression::matchesWhole(std::string_view text) const {
    return text.size() <= kLongestText && _implementation->matchesWhole(icu::UnicodeString::fromUTF8(text));
}

} // namespace exifcard

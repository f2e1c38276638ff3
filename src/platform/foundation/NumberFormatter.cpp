#include "platform/foundation/NumberFormatter.h"

#include "platform/foundation/NumberSymbols.h"

#include <unicode/numberformatter.h>

#include <algorithm>
#include <iterator>

namespace exifcard {
namespace {

using icu::number::LocalizedNumberFormatter;
using icu::number::Precision;

/// More digits than any double has.
constexpr int kMostFractionDigits = 340;

/// In the order of NumberFormatter::RoundingMode.
constexpr UNumberFormatRoundingMode kRoundingModes[] = {UNUM_ROUND_CEILING, UNUM_ROUND_FLOOR, UNUM_ROUND_DOWN,
    UNUM_ROUND_UP, UNUM_ROUND_HALFEVEN, UNUM_ROUND_HALFDOWN, UNUM_ROUND_HALFUP};

LocalizedNumberFormatter makeFormatter(NumberFormatter::Options options, const Locale& locale) {
    const auto mode = std::min(static_cast<std::size_t>(options.roundingMode), std::size(kRoundingModes) - 1);
    auto formatter = icu::number::NumberFormatter::withLocale(icu::Locale(locale.identifier().c_str()))
                         .symbols(numberSymbols(locale))
                         .precision(Precision::maxFraction(
                             std::clamp(options.maximumFractionDigits, 0, kMostFractionDigits)))
                         .roundingMode(kRoundingModes[mode]);
    if (options.style == NumberFormatter::Style::Decimal) {
        return formatter;
    }
    // Intended: without a style there is no leading zero either.
    return formatter.grouping(UNUM_GROUPING_OFF).integerWidth(icu::number::IntegerWidth::zeroFillTo(0));
}

} // namespace

/// ICU's formatter is immutable, so threads may share it.
class NumberFormatter::Implementation {
public:
    Implementation(Options options, const Locale& locale) : _formatter(makeFormatter(options, locale)) {}

    std::string text(double number) const {
        auto status = U_ZERO_ERROR;
        std::string text;
        return _formatter.formatDouble(number, status).toString(status).toUTF8String(text);
    }

private:
    LocalizedNumberFormatter _formatter;
};

NumberFormatter::NumberFormatter(Options options, const Locale& locale)
    : _implementation(std::make_unique<const Implementation>(options, locale)) {
}

NumberFormatter::~NumberFormatter() = default;

std::string NumberFormatter::stringFromNumber(double number) const {
    return _implementation->text(number);
}

} // namespace exifcard

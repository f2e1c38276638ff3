#include "platform/foundation/ByteCountFormatter.h"

#include "platform/foundation/LocalizedString.h"
#include "platform/foundation/NumberSymbols.h"

#include <unicode/numberformatter.h>

#include <array>
#include <cmath>
#include <iterator>

namespace exifcard {
namespace {

/// Bytes, then each unit a thousand (or 1024) of the one before. No number of bytes reaches beyond the last.
constexpr const char* kUnits[] = {
    N_("%@ bytes"),
    N_("%@ KB"),
    N_("%@ MB"),
    N_("%@ GB"),
    N_("%@ TB"),
    N_("%@ PB"),
    N_("%@ EB"),
};

constexpr std::size_t kMostFractionDigits = 2;
using Digits = icu::number::LocalizedNumberFormatter;
using DigitsByFraction =
    std::array<Digits, kMostFractionDigits + 1>; ///< Indexed by the number of fraction digits.

DigitsByFraction makeDigits(bool zeroPadsFractionDigits, const Locale& locale) {
    const auto plain = icu::number::NumberFormatter::withLocale(icu::Locale(locale.identifier().c_str()))
                           .symbols(numberSymbols(locale));
    DigitsByFraction digits;
    for (std::size_t count = 0; count < digits.size(); ++count) {
        const auto most = static_cast<int>(count);
        digits[count] =
            plain.precision(icu::number::Precision::minMaxFraction(zeroPadsFractionDigits ? most : 0, most));
    }
    return digits;
}

double rounded(double value, std::size_t fractionDigits) {
    const double scale = std::pow(10, static_cast<double>(fractionDigits));
    return std::nearbyint(value * scale) / scale;
}

/// None for bytes and KB, one for MB, two above.
std::size_t adaptiveFractionDigits(std::size_t unit) {
    return unit < 2 ? 0 : std::min(unit - 1, kMostFractionDigits);
}

/// As many as make three significant digits of `value`, which is not negative.
std::size_t threeDigitsFractionDigits(double value) {
    if (rounded(value, 2) < 10) {
        return 2;
    }
    return rounded(value, 1) < 100 ? 1 : 0;
}

struct Amount {
    double value = 0; ///< Not negative.
    std::size_t unit = 0;
    std::size_t fractionDigits = 0;
};

/// In the largest unit of which it is at least one as it is written: 999,999 bytes are "1 MB", not "1,000
/// KB".
Amount amountOfBytes(double bytes, double base, bool isAdaptive) {
    Amount amount{.value = bytes};
    double bytesInUnit = 1;
    while (rounded(amount.value, amount.fractionDigits) >= base && amount.unit + 1 < std::size(kUnits)) {
        bytesInUnit *= base;
        amount.value = bytes / bytesInUnit;
        ++amount.unit;
        amount.fractionDigits =
            isAdaptive ? adaptiveFractionDigits(amount.unit) : threeDigitsFractionDigits(amount.value);
    }
    return amount;
}

} // namespace

/// ICU's formatters are immutable, so threads may share them.
class ByteCountFormatter::Implementation {
public:
    Implementation(Options options, const Locale& locale)
        : _options(options)
        , _digits(makeDigits(options.zeroPadsFractionDigits, locale)) {}

    std::string text(std::int64_t count) const {
        if (count == 0) {
            return std::string(localizedString("Zero KB"));
        }
        const bool isDecimal =
            _options.countStyle == CountStyle::File || _options.countStyle == CountStyle::Decimal;
        const auto bytes = static_cast<double>(count);
        const Amount amount = amountOfBytes(std::abs(bytes), isDecimal ? 1000 : 1024, _options.isAdaptive);
        const auto number = digits(std::copysign(amount.value, bytes), amount.fractionDigits);
        const bool isOneByte = amount.unit == 0 && amount.value == 1;
        auto text = isOneByte ? localizedStringWithFormat("%@ byte", {number})
                              : localizedStringWithFormat(kUnits[amount.unit], {number});
        if (!_options.includesActualByteCount || amount.unit == 0) {
            return text;
        }
        return localizedStringWithFormat("%@ (%@ bytes)", {text, digits(count)});
    }

private:
    std::string digits(double value, std::size_t fractionDigits) const {
        auto status = U_ZERO_ERROR;
        std::string text;
        return _digits[fractionDigits].formatDouble(value, status).toString(status).toUTF8String(text);
    }
    std::string digits(std::int64_t value) const {
        auto status = U_ZERO_ERROR;
        std::string text;
        return _digits.front().formatInt(value, status).toString(status).toUTF8String(text);
    }

    const Options _options;
    const DigitsByFraction _digits;
};

ByteCountFormatter::ByteCountFormatter(Options options, const Locale& locale)
    : _implementation(std::make_unique<const Implementation>(options, locale)) {
}

ByteCountFormatter::~ByteCountFormatter() = default;

std::string ByteCountFormatter::stringFromByteCount(std::int64_t count) const {
    return _implementation->text(count);
}

} // namespace exifcard

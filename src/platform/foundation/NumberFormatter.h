#pragma once

#include "platform/foundation/Locale.h"

#include <memory>
#include <string>

namespace exifcard {

/// Writes numbers by a style, as the user's locale has it.
///
/// Thread-safe; making one costs some ten microseconds, so keep it.
class NumberFormatter {
public:
    enum class Style { None = 0, Decimal = 1 };
    enum class RoundingMode {
        Ceiling = 0,
        Floor = 1,
        Down = 2,
        Up = 3,
        HalfEven = 4,
        HalfDown = 5,
        HalfUp = 6
    };

    struct Options {
        /// Without a style there is no grouping and no leading zero: 0.3072 is ".4" with one digit, ceiling.
        Style style = Style::None;
        int maximumFractionDigits = 0;
        RoundingMode roundingMode = RoundingMode::HalfEven;
    };

    explicit NumberFormatter(Options options, const Locale& locale = Locale::current());
    ~NumberFormatter();
    NumberFormatter(const NumberFormatter&) = delete;
    NumberFormatter& operator=(const NumberFormatter&) = delete;

    std::string stringFromNumber(double number) const;

private:
    class Implementation;
    std::unique_ptr<const Implementation> _implementation;
};

} // namespace exifcard

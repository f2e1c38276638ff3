#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace exifcard {

/// No text of the system is wider or more exact; a translation that asks for more is wrong.
inline constexpr std::size_t kWidestFormatField = 512;
inline constexpr std::size_t kHighestFormatPrecision = 512;
/// Positions count from 1. No format takes more arguments.
inline constexpr std::size_t kHighestFormatPosition = 32;

/// One "%…" of a format, read but not filled.
struct FormatConversion {
    /// What it is filled with. Percent is "%%", Nothing what cannot be filled.
    enum class Takes { Nothing, Percent, Integer, Real, Object };

    Takes takes = Takes::Nothing;
    char letter = '\0';
    unsigned integerBits = 32; ///< What of an integer argument counts.
    std::size_t position = 0;  ///< From 1; 0 takes the argument after the one before.
    std::size_t width = 0;     ///< In characters.
    std::optional<std::size_t> precision;
    bool isLeftAligned = false;
    bool showsPlus = false;
    bool showsSpace = false;
    bool isAlternate = false; ///< "#"
    bool padsWithZeros = false;
    std::string_view written; ///< From the "%" to its letter, or to where it went wrong.

    /// Takes the conversion off the front of `rest`, which begins with "%".
    static FormatConversion takeFrom(std::string_view& rest);
};

} // namespace exifcard

#pragma once

#include <cstdint>

namespace exifcard {

/// Integer arithmetic.
struct Math {
    /// Euclid's greatest common divisor. 0 of two zeros; of negative numbers it
    /// has the sign that the remainders leave.
    static std::int64_t gcdWithA(std::int64_t a, std::int64_t b);
};

} // namespace exifcard

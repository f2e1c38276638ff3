#pragma once

#include <cstddef>
#include <optional>

namespace exifcard {

/// a + b, or nothing on overflow. For sizes and offsets that a file gives.
inline std::optional<std::size_t> checkedSum(std::size_t a, std::size_t b) {
    std::size_t sum = 0;
    return __builtin_add_overflow(a, b, &sum) ? std::nullopt : std::optional(sum);
}

/// a · b, or nothing on overflow.
inline std::optional<std::size_t> checkedProduct(std::size_t a, std::size_t b) {
    std::size_t product = 0;
    return __builtin_mul_overflow(a, b, &product) ? std::nullopt : std::optional(product);
}

} // namespace exifcard

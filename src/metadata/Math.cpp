#include "metadata/Math.h"

namespace exifcard {

std::int64_t Math::gcdWithA(std::int64_t a, std::int64_t b) {
    while (b != 0) {
        // The smallest integer has no remainder by -1 in the processor.
        const std::int64_t remainder = b == -1 ? 0 : a % b;
        a = b;
        b = remainder;
    }
    return a;
}

} // namespace exifcard

#include "library/CombinedProgress.h"

#include <algorithm>
#include <cmath>

namespace exifcard {

CombinedProgress::State CombinedProgress::update(std::size_t slot, double fraction) {
    const std::lock_guard lock(_mutex);
    _fractions[slot] = fraction;
    float sum = 0;
    for (const double one : _fractions) {
        sum += static_cast<float>(one);
    }
    const auto isPartWay = [](double one) { return one != std::floor(one); };
    return {std::ranges::any_of(_fractions, isPartWay), sum / static_cast<float>(_fractions.size())};
}

} // namespace exifcard

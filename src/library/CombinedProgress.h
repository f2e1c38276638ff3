#pragma once

#include <cstddef>
#include <mutex>
#include <vector>

namespace exifcard {

/// How far the downloads of many assets have come together. Thread-safe.
class CombinedProgress {
public:
    explicit CombinedProgress(std::size_t count) : _fractions(count, 0.0) {}

    struct State {
        bool isDownloading = false; ///< Some asset has begun and is not at its end.
        float mean = 0;             ///< 0 … 1
    };

    /// Notes one asset's fraction and answers for all.
    State update(std::size_t slot, double fraction);

private:
    std::mutex _mutex;
    std::vector<double> _fractions; // One an asset, 0 … 1. Guarded by _mutex.
};

} // namespace exifcard

#pragma once

#include "platform/photos/import/AssetReading.h"

#include <cstddef>
#include <functional>

namespace exifcard {

/// What is done with so many groups of files.
struct ReadAheadSteps {
    std::size_t count = 0;
    /// Reads a group; called by several threads at once.
    std::function<ReadGroup(std::size_t position)> read;
    /// Takes what was read, in any order; called by the calling thread alone.
    std::function<void(std::size_t position, ReadGroup group)> take;
    /// Whether the rest is to be left out; asked by several threads at once.
    std::function<bool()> isStopped;
};

/// Reads groups with up to `jobs` threads, the calling one among them, which also takes what all of them
/// read. No thread is made for one job. A bounded number of read groups waits. Returns when all are taken.
void readAhead(unsigned jobs, const ReadAheadSteps& steps);

} // namespace exifcard

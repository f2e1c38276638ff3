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

/// Reads groups with `jobs` threads while the calling one takes what they read: it often waits for the disk,
/// and no processor shall be idle then. For one job or one group no thread is made. A bounded number of read
/// groups waits. Returns when all are taken.
void readAhead(unsigned jobs, const ReadAheadSteps& steps);

} // namespace exifcard

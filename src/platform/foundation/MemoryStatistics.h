#pragma once

#include <cstdint>
#include <optional>

namespace exifcard {

/// The machine's memory, in bytes.
struct MemoryStatistics {
    std::uint64_t pageSize = 0;
    std::uint64_t active = 0;
    std::uint64_t inactive = 0;
    std::uint64_t wired = 0; ///< The kernel's, and what is locked.
    std::uint64_t free = 0;
};

/// Nothing where the system does not tell.
std::optional<MemoryStatistics> memoryStatistics();

} // namespace exifcard

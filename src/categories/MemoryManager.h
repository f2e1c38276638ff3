#pragma once

#include <cstdint>

namespace exifcard {

/// What the machine's memory is used for, in pages.
struct MemoryPages {
    std::uint32_t active = 0;
    std::uint32_t inactive = 0;
    std::uint32_t wired = 0; ///< Not to be moved or written out.
    std::uint32_t free = 0;
};

/// In mebibytes.
struct MemoryReport {
    std::uint32_t used = 0;
    std::uint32_t free = 0;
    std::uint32_t total = 0;
};

/// Writes how much memory there is into the log.
class MemoryManager {
public:
    /// "used: %u free: %u total: %u", in mebibytes.
    static void report_memory();

    /// Intended: bytes are counted in 32 bits, so that from 4 GiB on the report begins at 0 again.
    static MemoryReport reportOf(const MemoryPages& pages, std::uint32_t pageSize);
};

} // namespace exifcard

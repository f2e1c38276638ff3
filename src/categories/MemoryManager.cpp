#include "categories/MemoryManager.h"

#include "platform/foundation/Log.h"
#include "platform/foundation/MemoryStatistics.h"

namespace exifcard {

MemoryReport MemoryManager::reportOf(const MemoryPages& pages, std::uint32_t pageSize) {
    constexpr unsigned kMebibyte = 20;
    const std::uint32_t used = (pages.active + pages.inactive + pages.wired) * pageSize;
    const std::uint32_t free = pages.free * pageSize;
    const std::uint32_t total = used + free;
    return {used >> kMebibyte, free >> kMebibyte, total >> kMebibyte};
}

void MemoryManager::report_memory() {
    const auto statistics = memoryStatistics();
    if (!statistics) {
        debugLog("Failed to fetch vm statistics");
    }
    const MemoryStatistics bytes = statistics.value_or(MemoryStatistics());
    const auto pages = [&bytes](std::uint64_t count) {
        return bytes.pageSize > 0 ? static_cast<std::uint32_t>(count / bytes.pageSize) : 0;
    };
    const MemoryReport report =
        reportOf({pages(bytes.active), pages(bytes.inactive), pages(bytes.wired), pages(bytes.free)},
            static_cast<std::uint32_t>(bytes.pageSize));
    debugLog("used: %u free: %u total: %u", {report.used, report.free, report.total});
}

} // namespace exifcard

#include "platform/foundation/MemoryStatistics.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>

#include <unistd.h>

namespace exifcard {
namespace {

struct Counter {
    std::string_view name;
    std::uint64_t MemoryStatistics::*sum;
};

constexpr Counter kCounters[] = {
    {"Active:", &MemoryStatistics::active},
    {"Inactive:", &MemoryStatistics::inactive},
    {"MemFree:", &MemoryStatistics::free},
    {"Unevictable:", &MemoryStatistics::wired},
    {"SUnreclaim:", &MemoryStatistics::wired},
    {"KernelStack:", &MemoryStatistics::wired},
    {"PageTables:", &MemoryStatistics::wired},
};

} // namespace

std::optional<MemoryStatistics> memoryStatistics() {
    constexpr std::uint64_t kKibibyte = 1024;
    std::ifstream file("/proc/meminfo");
    MemoryStatistics statistics;
    std::string name;
    std::uint64_t kibibytes = 0;
    std::string unit;
    while (file >> name >> kibibytes && std::getline(file, unit)) {
        const auto* const counter = std::ranges::find(kCounters, name, &Counter::name);
        if (counter != std::end(kCounters)) {
            statistics.*(counter->sum) += kibibytes * kKibibyte;
        }
    }
    statistics.pageSize = static_cast<std::uint64_t>(std::max(0L, sysconf(_SC_PAGESIZE)));
    return statistics.active > 0 && statistics.pageSize > 0 ? std::optional(statistics) : std::nullopt;
}

} // namespace exifcard

#pragma once

#include <cstdio>
#include <memory>

#include <unistd.h>

namespace exifcard {

/// What this process holds of the memory at this moment, in KiB; 0 where the system does not tell.
inline long residentKibibytes() {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(
        std::fopen("/proc/self/statm", "r"), std::fclose);
    long total = 0;
    long resident = 0;
    if (!file || std::fscanf(file.get(), "%ld %ld", &total, &resident) != 2) {
        return 0;
    }
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

} // namespace exifcard

#pragma once

#include <cstdio>
#include <ctime>

namespace exifcard {

/// Tells whoever started this process that what it waits for is on screen, and prints the processor time in
/// milliseconds that it took.
inline void tellShown() {
    timespec spent{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &spent);
    std::printf("%.2f\n", double(spent.tv_sec) * 1e3 + double(spent.tv_nsec) / 1e6);
    std::fflush(stdout);
}

} // namespace exifcard

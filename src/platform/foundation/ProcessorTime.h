#pragma once

#include <ctime>

namespace exifcard {

/// The processor time of the calling thread, in seconds: unlike a clock, it fails no file on a busy machine.
inline double processorSecondsOfThread() {
    constexpr double kNanosecond = 1e-9;
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * kNanosecond;
}

} // namespace exifcard

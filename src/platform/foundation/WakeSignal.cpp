#include "platform/foundation/WakeSignal.h"

#include <cerrno>
#include <ctime>

namespace exifcard {

WakeSignal::WakeSignal() {
    sem_init(&_semaphore, 0, 0);
}

WakeSignal::~WakeSignal() {
    sem_destroy(&_semaphore);
}

void WakeSignal::wake() {
    sem_post(&_semaphore);
}

bool WakeSignal::waitUntil(std::chrono::steady_clock::time_point time) {
    using std::chrono::duration_cast;
    const auto sinceStart = time.time_since_epoch(); // The steady clock is the system's monotonic one.
    const auto seconds = duration_cast<std::chrono::seconds>(sinceStart);
    const auto rest = duration_cast<std::chrono::nanoseconds>(sinceStart - seconds);
    const timespec until = {.tv_sec = seconds.count(), .tv_nsec = rest.count()};
    while (sem_clockwait(&_semaphore, CLOCK_MONOTONIC, &until) != 0) {
        if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

} // namespace exifcard

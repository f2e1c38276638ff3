#pragma once

#include <semaphore.h>

#include <chrono>

namespace exifcard {

/// Wakes threads that wait for work. Waking never waits itself: a condition variable does so, for threads
/// that were woken before and have not run since, and where those come last on a busy machine that takes half
/// a second.
class WakeSignal {
public:
    WakeSignal();
    ~WakeSignal();
    WakeSignal(const WakeSignal&) = delete;
    WakeSignal& operator=(const WakeSignal&) = delete;

    /// Lets one thread go on: one that waits, or the next that does.
    void wake();
    /// @return False when the time comes first.
    bool waitUntil(std::chrono::steady_clock::time_point time);

private:
    sem_t _semaphore = {};
};

} // namespace exifcard

#include "platform/foundation/DispatchQueue.h"

#include <condition_variable>
#include <deque>
#include <mutex>

namespace exifcard {
namespace {

/// One waiting thread, on its own stack.
struct Waiter {
    std::condition_variable changed;
    bool isSignalled = false;
};

} // namespace

struct DispatchSemaphore::State {
    std::mutex mutex;
    long value = 0;              // Guarded by mutex.
    std::deque<Waiter*> waiters; // The longest waiting first. Guarded by mutex.
};

DispatchSemaphore::DispatchSemaphore(long value) : _state(std::make_shared<State>()) {
    _state->value = value;
}

DispatchSemaphore::~DispatchSemaphore() = default;

void DispatchSemaphore::signal() {
    // Whoever waits may destroy the semaphore as soon as it goes on.
    const auto state = _state;
    const std::lock_guard lock(state->mutex);
    if (state->waiters.empty()) {
        ++state->value;
        return;
    }
    Waiter& first = *state->waiters.front();
    state->waiters.pop_front();
    first.isSignalled = true;
    first.changed.notify_one(); // Under the lock: afterwards the waiter may be gone.
}

long DispatchSemaphore::wait() {
    const auto state = _state;
    Waiter self;
    {
        const std::lock_guard lock(state->mutex);
        if (state->value > 0) {
            --state->value;
            return 0;
        }
        state->waiters.push_back(&self);
    }
    const BlockingSection blocking; // It may start a thread; whoever signals does not wait for that.
    std::unique_lock lock(state->mutex);
    self.changed.wait(lock, [&self] { return self.isSignalled; });
    return 0;
}

} // namespace exifcard

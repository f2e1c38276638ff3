#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/DispatchThreadPool.h"

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <utility>
#include <vector>

namespace exifcard {
namespace {

struct Notification {
    DispatchQueue* queue = nullptr;
    std::shared_ptr<DispatchQueue> keptQueue; // Null for a global queue, which nobody can end.
    DispatchQueue::Block block;
};

} // namespace

struct DispatchGroup::State {
    std::mutex mutex;
    std::condition_variable isEmpty;
    std::size_t count = 0;                   // Guarded by mutex.
    std::vector<Notification> notifications; // Guarded by mutex.
};

DispatchGroup::DispatchGroup() : _state(std::make_shared<State>()) {
}

DispatchGroup::~DispatchGroup() = default;

void DispatchGroup::enter() {
    const std::lock_guard lock(_state->mutex);
    ++_state->count;
}

void DispatchGroup::leave() {
    // Whoever waits may destroy the group as soon as the count is 0.
    const auto state = _state;
    std::vector<Notification> due;
    {
        const std::lock_guard lock(state->mutex);
        if (state->count == 0) {
            endProgram("a dispatch group was left more often than entered");
        }
        if (--state->count > 0) {
            return;
        }
        due.swap(state->notifications);
        state->isEmpty.notify_all();
    }
    for (Notification& notification : due) {
        notification.queue->async(std::move(notification.block));
    }
}

void DispatchGroup::notify(DispatchQueue& queue, DispatchQueue::Block block) {
    {
        const std::lock_guard lock(_state->mutex);
        if (_state->count > 0) {
            _state->notifications.push_back({&queue, queue.weak_from_this().lock(), std::move(block)});
            return;
        }
    }
    queue.async(std::move(block));
}

void DispatchGroup::wait() {
    const auto state = _state;
    {
        const std::lock_guard lock(state->mutex);
        if (state->count == 0) {
            return;
        }
    }
    const BlockingSection blocking; // It may start a thread; whoever leaves does not wait for that.
    std::unique_lock lock(state->mutex);
    state->isEmpty.wait(lock, [&state] { return state->count == 0; });
}

} // namespace exifcard

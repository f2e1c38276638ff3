#include "platform/photos/SerialQueue.h"

#include "platform/foundation/DispatchQueue.h"

#include <deque>
#include <mutex>
#include <utility>

namespace exifcard {

struct SerialQueue::State {
    std::mutex mutex;
    std::deque<std::function<void()>> waiting; // Guarded by mutex.
    bool isRunning = false;                    // Guarded by mutex.

    /// The next block, or an empty one, after which nothing runs any more.
    std::function<void()> next() {
        const std::scoped_lock lock(mutex);
        isRunning = !waiting.empty();
        if (!isRunning) {
            return {};
        }
        auto block = std::move(waiting.front());
        waiting.pop_front();
        return block;
    }

    void run() {
        while (const auto block = next()) {
            block();
        }
    }
};

SerialQueue::SerialQueue() : _state(std::make_shared<State>()) {
}

SerialQueue::~SerialQueue() = default;

void SerialQueue::async(std::function<void()> block) {
    {
        const std::scoped_lock lock(_state->mutex);
        _state->waiting.push_back(std::move(block));
        if (std::exchange(_state->isRunning, true)) {
            return;
        }
    }
    DispatchQueue::globalQueue().async([state = _state] { state->run(); });
}

} // namespace exifcard

#include "platform/photos/import/ReadAhead.h"

#include "platform/foundation/MappingBatch.h"

#include <algorithm>
#include <condition_variable>
#include <iterator>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace exifcard {
namespace {

/// Enough for the readers to go on while a transaction is synced to a slow disk.
constexpr std::size_t kMostWaiting = 2'000;

/// Taking some at a time wakes the taking thread less often; more would leave too much to do at the end.
constexpr std::size_t kFewestTaken = 32;

/// What a reader takes at a time, so that the threads seldom meet; few, so that all of them end together.
constexpr std::size_t kMostRead = 8;

class ReadAheadRun {
public:
    ReadAheadRun(const ReadAheadSteps& steps, std::size_t readers) : _steps(steps), _readers(readers) {}

    /// What each reading thread does.
    void readAll() {
        const MappingBatch::Use use;
        Waiting read;
        for (Positions some = next(); some.begin < some.end; some = next()) {
            for (std::size_t position = some.begin; position < some.end; ++position) {
                read.emplace_back(position, _steps.read(position));
            }
            deliver(std::exchange(read, {}));
        }
        const std::scoped_lock lock(_mutex);
        if (--_readers == 0) {
            _hasSome.notify_one();
        }
    }

    /// What the calling thread does.
    void takeAll() {
        for (Waiting taken = takeSome(); !taken.empty(); taken = takeSome()) {
            for (auto& [position, group] : taken) {
                _steps.take(position, std::move(group));
            }
        }
    }

private:
    using Waiting = std::vector<std::pair<std::size_t, ReadGroup>>;

    struct Positions {
        std::size_t begin = 0;
        std::size_t end = 0;
    };

    Positions next() {
        const std::scoped_lock lock(_mutex);
        if (_steps.isStopped()) {
            return {};
        }
        const std::size_t begin = _next;
        _next = std::min(_steps.count, begin + kMostRead);
        return {begin, _next};
    }

    void deliver(Waiting read) {
        std::unique_lock lock(_mutex);
        _hasRoom.wait(lock, [this] { return _waiting.size() < kMostWaiting; });
        const bool wereFew = _waiting.size() < kFewestTaken;
        std::ranges::move(read, std::back_inserter(_waiting));
        if (wereFew && _waiting.size() >= kFewestTaken) {
            _hasSome.notify_one();
        }
    }

    /// What waits, when it is worth the while; nothing when the readers are done and all was taken.
    Waiting takeSome() {
        std::unique_lock lock(_mutex);
        _hasSome.wait(lock, [this] { return _waiting.size() >= kFewestTaken || _readers == 0; });
        _hasRoom.notify_all();
        return std::exchange(_waiting, {});
    }

    const ReadAheadSteps& _steps;
    std::mutex _mutex;
    std::condition_variable _hasRoom;
    std::condition_variable _hasSome;
    std::size_t _next = 0; // Guarded by _mutex.
    Waiting _waiting;      // Guarded by _mutex.
    std::size_t _readers;  // Guarded by _mutex.
};

} // namespace

void readAhead(unsigned jobs, const ReadAheadSteps& steps) {
    const std::size_t readers = std::min<std::size_t>(jobs, steps.count);
    if (readers < 2) {
        for (std::size_t position = 0; position < steps.count && !steps.isStopped(); ++position) {
            steps.take(position, steps.read(position));
        }
        return;
    }
    ReadAheadRun run(steps, readers);
    std::vector<std::jthread> threads;
    for (std::size_t reader = 0; reader < readers; ++reader) {
        threads.emplace_back([&run] { run.readAll(); });
    }
    run.takeAll();
}

} // namespace exifcard

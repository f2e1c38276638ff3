#include "platform/photos/import/ReadAhead.h"

#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

namespace exifcard {
namespace {

/// Enough for the readers to go on while a transaction is synced to a slow disk.
constexpr std::size_t kMostWaiting = 2'000;

/// Taking a few at a time spares the lock; more would keep the others waiting at the end.
constexpr std::size_t kFewestTaken = 32;

class ReadAheadRun {
public:
    explicit ReadAheadRun(const ReadAheadSteps& steps) : _steps(steps) {}

    /// What an additional thread does.
    void readAll() {
        while (const auto position = next()) {
            ReadGroup group = _steps.read(*position);
            std::unique_lock lock(_mutex);
            _hasChanged.wait(lock, [this] { return _waiting.size() < kMostWaiting; });
            _waiting.emplace_back(*position, std::move(group));
            _hasChanged.notify_all();
        }
        const std::scoped_lock lock(_mutex);
        --_readers;
        _hasChanged.notify_all();
    }

    void addReader() { ++_readers; }

    /// What the calling thread does.
    void takeAll() {
        while (true) {
            if (takeWaiting(kFewestTaken)) {
                continue;
            }
            if (const auto position = next()) {
                _steps.take(*position, _steps.read(*position));
            } else if (!waitForOthers()) {
                return;
            }
        }
    }

private:
    using Waiting = std::vector<std::pair<std::size_t, ReadGroup>>;

    std::optional<std::size_t> next() {
        const std::scoped_lock lock(_mutex);
        if (_next == _steps.count || _steps.isStopped()) {
            return std::nullopt;
        }
        return _next++;
    }

    bool takeWaiting(std::size_t fewest) {
        Waiting taken;
        {
            const std::scoped_lock lock(_mutex);
            if (_waiting.empty() || _waiting.size() < fewest) {
                return false;
            }
            std::swap(taken, _waiting);
            _hasChanged.notify_all();
        }
        for (auto& [position, group] : taken) {
            _steps.take(position, std::move(group));
        }
        return true;
    }

    /// False when the others are done and nothing waits.
    bool waitForOthers() {
        {
            std::unique_lock lock(_mutex);
            _hasChanged.wait(lock, [this] { return !_waiting.empty() || _readers == 0; });
        }
        return takeWaiting(1);
    }

    const ReadAheadSteps& _steps;
    std::mutex _mutex;
    std::condition_variable _hasChanged;
    std::size_t _next = 0; // Guarded by _mutex.
    Waiting _waiting;      // Guarded by _mutex.
    unsigned _readers = 0; // Guarded by _mutex once threads run.
};

} // namespace

void readAhead(unsigned jobs, const ReadAheadSteps& steps) {
    ReadAheadRun run(steps);
    std::vector<std::jthread> threads;
    const std::size_t wanted = std::min<std::size_t>(jobs, steps.count);
    for (std::size_t job = 1; job < wanted; ++job) {
        run.addReader();
    }
    for (std::size_t job = 1; job < wanted; ++job) {
        threads.emplace_back([&run] { run.readAll(); });
    }
    run.takeAll();
}

} // namespace exifcard

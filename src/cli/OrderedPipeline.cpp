#include "cli/OrderedPipeline.h"

#include "platform/foundation/FileHeap.h"
#include "platform/foundation/MappingBatch.h"

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace exifcard {
namespace {

/// How many results a thread may be ahead of the slowest one: enough that a large file among small ones
/// leaves no thread idle, few enough that the waiting results stay below a megabyte or two.
constexpr std::size_t kWaitingResultsPerJob = 64;

class OrderedPipeline {
public:
    OrderedPipeline(unsigned jobs, const PipelineSteps& steps)
        : _steps(steps)
        , _waiting(jobs * kWaitingResultsPerJob) {}

    /// What each thread does, until there is no input left.
    void work() {
        const MappingBatch::Use use;
        while (auto input = takeInput()) {
            deliver(input->number, _steps.work(input->name));
        }
    }

private:
    struct Input {
        std::size_t number = 0;
        std::string name;
    };

    std::optional<Input> takeInput() {
        const std::lock_guard inputLock(_inputMutex);
        if (_isAtEnd) {
            return std::nullopt;
        }
        waitForRoom();
        auto name = _steps.take();
        if (!name) {
            _isAtEnd = true;
            return std::nullopt;
        }
        return Input{_taken++, std::move(*name)};
    }

    /// The thread that works on the oldest result never waits here, so the wait ends.
    void waitForRoom() {
        std::unique_lock outputLock(_outputMutex);
        _roomMade.wait(outputLock, [this] { return _taken < _handed + _waiting.size(); });
    }

    void deliver(std::size_t number, FileResult result) {
        std::unique_lock outputLock(_outputMutex);
        _waiting[number % _waiting.size()] = std::move(result);
        if (_isHandingOn) {
            return; // The thread that does so takes this one along.
        }
        _isHandingOn = true;
        while (auto next = std::exchange(_waiting[_handed % _waiting.size()], std::nullopt)) {
            outputLock.unlock();
            _steps.hand(*next);
            outputLock.lock();
            ++_handed;
            _roomMade.notify_one();
        }
        _isHandingOn = false;
    }

    const PipelineSteps& _steps;

    std::mutex _inputMutex;
    bool _isAtEnd = false;  // Guarded by _inputMutex.
    std::size_t _taken = 0; // Guarded by _inputMutex.

    std::mutex _outputMutex; // Taken after _inputMutex where both are.
    std::condition_variable _roomMade;
    std::vector<std::optional<FileResult>>
        _waiting;              // Guarded by _outputMutex; result n lies at n modulo the size.
    std::size_t _handed = 0;   // Guarded by _outputMutex.
    bool _isHandingOn = false; // Guarded by _outputMutex.
};

} // namespace

void runInOrder(unsigned jobs, const PipelineSteps& steps) {
    keepMemoryBetweenFiles();
    OrderedPipeline pipeline(jobs, steps);
    // Threads of their own instead of a queue: they read and compute side by side for the whole run, and a
    // run over one file starts none.
    std::vector<std::jthread> helpers;
    for (unsigned helper = 1; helper < jobs; ++helper) {
        helpers.emplace_back([&pipeline] { pipeline.work(); });
    }
    pipeline.work();
}

} // namespace exifcard

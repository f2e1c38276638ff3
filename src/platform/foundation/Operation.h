#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

namespace exifcard {

class OperationQueue;
class OperationQueueState;

/// A piece of work for an `OperationQueue`. Safe to use from every thread.
class Operation {
public:
    enum class QueuePriority { VeryLow = -8, Low = -4, Normal = 0, High = 4, VeryHigh = 8 };

    virtual ~Operation();
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;

    /// An operation that has not started is taken off its queue and becomes finished without running, also
    /// when it is added later. A running one goes on: it must ask `isCancelled` by itself.
    void cancel();
    bool isCancelled() const { return _isCancelled; }
    bool isExecuting() const;
    /// It has run, or it was cancelled before it could.
    bool isFinished() const;
    /// Blocks until it is finished; never on the main queue, nor before it is added.
    void waitUntilFinished();

    QueuePriority queuePriority() const { return _priority; }
    /// Counts as long as the operation has not started.
    void setQueuePriority(QueuePriority priority) { _priority = priority; }
    /// Runs once on a background thread after the operation has finished, cancelled or not. One that is set
    /// later than that never runs.
    void setCompletionBlock(std::function<void()> completionBlock);

protected:
    Operation() = default;

    /// The work, on a thread of the pool; what it throws ends the program.
    virtual void main() = 0;

private:
    friend class OperationQueueState;
    enum class State { New, Added, Executing, Finished };

    /// @throws PlatformException when it was added before.
    void joinQueue(const std::shared_ptr<OperationQueueState>& queue);
    /// Runs, unless it was cancelled.
    void run();
    void finish();

    std::atomic<bool> _isCancelled = false;
    std::atomic<QueuePriority> _priority = QueuePriority::Normal;
    mutable std::mutex _mutex;
    std::condition_variable _hasFinished;
    State _state = State::New;                 // Guarded by _mutex.
    std::weak_ptr<OperationQueueState> _queue; // Guarded by _mutex.
    std::function<void()> _completionBlock;    // Guarded by _mutex.
};

/// Runs its blocks at the same time and finishes when the last of them has.
class BlockOperation final : public Operation {
public:
    static std::shared_ptr<BlockOperation> blockOperationWithBlock(std::function<void()> block);

    /// @throws PlatformException when the operation is running or finished.
    void addExecutionBlock(std::function<void()> block);

private:
    BlockOperation() = default;
    void main() override;

    std::mutex _blocksMutex;
    std::vector<std::function<void()>> _blocks; // Guarded by _blocksMutex.
    bool _hasStarted = false;                   // Guarded by _blocksMutex.
};

} // namespace exifcard

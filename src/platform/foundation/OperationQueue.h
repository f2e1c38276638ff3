#pragma once

#include "platform/foundation/Operation.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

namespace exifcard {

/// Runs operations on the shared pool of threads, at most so many at a time: those of a higher priority
/// first, and those of one priority as they came. Safe to use from every thread. What was added is still
/// done when the queue itself is gone.
class OperationQueue {
public:
    /// As many as the pool has threads for.
    static constexpr int kDefaultMaxConcurrentOperationCount = -1;

    /// @param maxConcurrentOperationCount  1 makes a serial queue.
    explicit OperationQueue(int maxConcurrentOperationCount = kDefaultMaxConcurrentOperationCount);
    ~OperationQueue();
    OperationQueue(const OperationQueue&) = delete;
    OperationQueue& operator=(const OperationQueue&) = delete;

    int maxConcurrentOperationCount() const;
    /// A suspended queue starts nothing; what runs goes on.
    void setSuspended(bool isSuspended);

    /// @throws PlatformException when the operation was added to a queue before.
    void addOperation(const std::shared_ptr<Operation>& operation);
    void addOperationWithBlock(std::function<void()> block);
    void cancelAllOperations();

    /// Those that are not finished.
    std::vector<std::shared_ptr<Operation>> operations() const;
    std::size_t operationCount() const { return operations().size(); }
    /// Blocks until none is left; never on the main queue or in an operation of this queue.
    void waitUntilAllOperationsAreFinished();

private:
    const std::shared_ptr<OperationQueueState> _state;
};

} // namespace exifcard

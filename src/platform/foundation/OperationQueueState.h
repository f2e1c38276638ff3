#pragma once

#include "platform/foundation/Operation.h"

#include <condition_variable>
#include <cstddef>
#include <memory>
#include <mutex>
#include <vector>

namespace exifcard {

/// What a queue and its running operations share, so that either may end first.
///
/// A block on the pool, a turn, takes the operation that comes first at that moment, so that the order is
/// right however long the block waited for a thread.
class OperationQueueState : public std::enable_shared_from_this<OperationQueueState> {
public:
    using Operations = std::vector<std::shared_ptr<Operation>>;

    explicit OperationQueueState(int maxConcurrentOperationCount) : _limit(maxConcurrentOperationCount) {}

    int limit() const { return _limit; }
    void setSuspended(bool isSuspended);
    void add(const std::shared_ptr<Operation>& operation);
    /// Finishes the operation here and now if it has not started.
    void withdraw(const Operation& operation);
    Operations unfinished() const;
    void wait();

private:
    void takeTurns();
    void runTurn();
    std::shared_ptr<Operation> takeFirst();
    void remove(const Operation& operation);

    const int _limit;
    mutable std::mutex _mutex;
    std::condition_variable _isEmpty;
    Operations _waiting;       // In the order in which they came. Guarded by _mutex.
    Operations _unfinished;    // Those and the running ones. Guarded by _mutex.
    std::size_t _coming = 0;   // Turns that wait for a thread. Guarded by _mutex.
    std::size_t _running = 0;  // Turns that run an operation. Guarded by _mutex.
    bool _isSuspended = false; // Guarded by _mutex.
};

} // namespace exifcard

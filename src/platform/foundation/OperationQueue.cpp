#include "platform/foundation/OperationQueue.h"

#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/OperationQueueState.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace exifcard {
namespace {

auto positionOf(OperationQueueState::Operations& operations, const Operation& operation) {
    return std::ranges::find(operations, &operation, &std::shared_ptr<Operation>::get);
}

} // namespace

void OperationQueueState::setSuspended(bool isSuspended) {
    const std::lock_guard lock(_mutex);
    _isSuspended = isSuspended;
    takeTurns();
}

void OperationQueueState::add(const std::shared_ptr<Operation>& operation) {
    operation->joinQueue(shared_from_this());
    {
        const std::lock_guard lock(_mutex);
        _waiting.push_back(operation);
        _unfinished.push_back(operation);
        takeTurns();
    }
    if (operation->isCancelled()) {
        withdraw(*operation);
    }
}

void OperationQueueState::withdraw(const Operation& operation) {
    std::shared_ptr<Operation> withdrawn;
    {
        const std::lock_guard lock(_mutex);
        const auto place = positionOf(_waiting, operation);
        if (place == _waiting.end()) {
            return;
        }
        withdrawn = *place;
        _waiting.erase(place);
    }
    withdrawn->finish();
    remove(*withdrawn);
}

OperationQueueState::Operations OperationQueueState::unfinished() const {
    const std::lock_guard lock(_mutex);
    return _unfinished;
}

void OperationQueueState::wait() {
    std::unique_lock lock(_mutex);
    if (_unfinished.empty()) {
        return;
    }
    const BlockingSection blocking;
    _isEmpty.wait(lock, [this] { return _unfinished.empty(); });
}

void OperationQueueState::takeTurns() {
    const auto limit =
        _limit < 0 ? std::numeric_limits<std::size_t>::max() : static_cast<std::size_t>(_limit);
    while (!_isSuspended && _coming < _waiting.size() && _coming + _running < limit) {
        ++_coming;
        DispatchQueue::globalQueue().async([self = shared_from_this()] { self->runTurn(); });
    }
}

void OperationQueueState::runTurn() {
    auto operation = takeFirst();
    if (!operation) {
        return;
    }
    operation->run();
    operation->finish();
    remove(*operation);
    operation.reset(); // What it holds is let go outside the lock.
    const std::lock_guard lock(_mutex);
    --_running;
    takeTurns();
}

std::shared_ptr<Operation> OperationQueueState::takeFirst() {
    const std::lock_guard lock(_mutex);
    --_coming;
    if (_isSuspended || _waiting.empty()) {
        return nullptr; // Meanwhile suspended, or what was to run is cancelled.
    }
    const auto first = std::ranges::max_element(_waiting, {}, &Operation::queuePriority);
    auto operation = *first;
    _waiting.erase(first);
    ++_running;
    return operation;
}

void OperationQueueState::remove(const Operation& operation) {
    const std::lock_guard lock(_mutex);
    _unfinished.erase(positionOf(_unfinished, operation));
    if (_unfinished.empty()) {
        _isEmpty.notify_all();
    }
}

OperationQueue::OperationQueue(int maxConcurrentOperationCount)
    : _state(std::make_shared<OperationQueueState>(maxConcurrentOperationCount)) {
}

OperationQueue::~OperationQueue() = default;

int OperationQueue::maxConcurrentOperationCount() const {
    return _state->limit();
}

void OperationQueue::setSuspended(bool isSuspended) {
    _state->setSuspended(isSuspended);
}

void OperationQueue::addOperation(const std::shared_ptr<Operation>& operation) {
    _state->add(operation);
}

void OperationQueue::addOperationWithBlock(std::function<void()> block) {
    addOperation(BlockOperation::blockOperationWithBlock(std::move(block)));
}

// NOLINTNEXTLINE(readability-make-member-function-const): the queue changes, through its state.
void OperationQueue::cancelAllOperations() {
    for (const auto& operation : operations()) {
        operation->cancel();
    }
}

std::vector<std::shared_ptr<Operation>> OperationQueue::operations() const {
    return _state->unfinished();
}

void OperationQueue::waitUntilAllOperationsAreFinished() {
    _state->wait();
}

} // namespace exifcard

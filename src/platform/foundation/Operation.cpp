#include "platform/foundation/Operation.h"

#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/OperationQueueState.h"
#include "platform/foundation/PlatformException.h"

#include <utility>

namespace exifcard {
namespace {

constexpr const char* kInvalidArgument = "NSInvalidArgumentException";

} // namespace

Operation::~Operation() = default;

void Operation::cancel() {
    _isCancelled = true;
    std::shared_ptr<OperationQueueState> queue;
    {
        const std::lock_guard lock(_mutex);
        queue = _queue.lock();
    }
    if (queue) {
        queue->withdraw(*this);
    }
}

bool Operation::isExecuting() const {
    const std::lock_guard lock(_mutex);
    return _state == State::Executing;
}

bool Operation::isFinished() const {
    const std::lock_guard lock(_mutex);
    return _state == State::Finished;
}

void Operation::waitUntilFinished() {
    std::unique_lock lock(_mutex);
    if (_state == State::Finished) {
        return;
    }
    const BlockingSection blocking;
    _hasFinished.wait(lock, [this] { return _state == State::Finished; });
}

void Operation::setCompletionBlock(std::function<void()> completionBlock) {
    const std::lock_guard lock(_mutex);
    _completionBlock = std::move(completionBlock);
}

void Operation::joinQueue(const std::shared_ptr<OperationQueueState>& queue) {
    const std::lock_guard lock(_mutex);
    if (_state != State::New) {
        throw PlatformException(kInvalidArgument, "an operation can be added to a queue only once");
    }
    _state = State::Added;
    _queue = queue;
}

void Operation::run() {
    if (_isCancelled) {
        return;
    }
    {
        const std::lock_guard lock(_mutex);
        _state = State::Executing;
    }
    main();
}

void Operation::finish() {
    std::function<void()> completionBlock;
    {
        const std::lock_guard lock(_mutex);
        _state = State::Finished;
        completionBlock.swap(_completionBlock);
        _hasFinished.notify_all();
    }
    if (completionBlock) {
        DispatchQueue::globalQueue().async(std::move(completionBlock));
    }
}

std::shared_ptr<BlockOperation> BlockOperation::blockOperationWithBlock(std::function<void()> block) {
    std::shared_ptr<BlockOperation> operation(new BlockOperation);
    operation->addExecutionBlock(std::move(block));
    return operation;
}

void BlockOperation::addExecutionBlock(std::function<void()> block) {
    const std::lock_guard lock(_blocksMutex);
    if (_hasStarted || isFinished()) {
        throw PlatformException(kInvalidArgument, "a block cannot be added to an operation that has started");
    }
    _blocks.push_back(std::move(block));
}

void BlockOperation::main() {
    std::vector<std::function<void()>> blocks;
    {
        const std::lock_guard lock(_blocksMutex);
        _hasStarted = true;
        blocks.swap(_blocks);
    }
    DispatchGroup others;
    for (std::size_t block = 1; block < blocks.size(); ++block) {
        others.enter();
        DispatchQueue::globalQueue().async([run = std::move(blocks[block]), &others] {
            run();
            others.leave();
        });
    }
    blocks.front()();
    others.wait();
}

} // namespace exifcard

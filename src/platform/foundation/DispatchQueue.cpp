#include "platform/foundation/DispatchQueue.h"

#include "platform/foundation/DispatchThreadPool.h"
#include "platform/foundation/MainQueue.h"

#include <algorithm>
#include <array>
#include <utility>

namespace exifcard {
namespace {

class ConcurrentQueue final : public DispatchQueue {
public:
    ConcurrentQueue(std::string label, Priority priority)
        : DispatchQueue(std::move(label))
        , _priority(priority) {}

    void async(Block block) override { DispatchThreadPool::shared().submit(std::move(block), _priority); }
    Priority priority() const { return _priority; }

private:
    const Priority _priority;
};

struct GlobalQueues {
    std::array<ConcurrentQueue, 4> queues = {{
        {"global.high", DispatchQueue::Priority::High},
        {"global.default", DispatchQueue::Priority::Default},
        {"global.low", DispatchQueue::Priority::Low},
        {"global.background", DispatchQueue::Priority::Background},
    }};
};

} // namespace

DispatchQueue& DispatchQueue::mainQueue() {
    return MainQueue::instance();
}

DispatchQueue& DispatchQueue::globalQueue(Priority priority) {
    static auto& queues = kept(std::make_unique<GlobalQueues>()).queues;
    return *std::ranges::find(queues, priority, &ConcurrentQueue::priority);
}

std::shared_ptr<DispatchQueue> DispatchQueue::makeConcurrent(std::string label) {
    return std::make_shared<ConcurrentQueue>(std::move(label), Priority::Default);
}

void DispatchQueue::sync(const Block& block) {
    if (this == &MainQueue::instance() && MainQueue::isMainThread()) {
        endProgram("sync to the main queue from the main thread waits for ever");
    }
    DispatchSemaphore isDone(0);
    async([&block, &isDone] {
        block();
        isDone.signal();
    });
    isDone.wait();
}

} // namespace exifcard

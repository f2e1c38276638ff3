#include "platform/foundation/DispatchThreadPool.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <system_error>
#include <thread>

#include <sys/resource.h>

namespace exifcard {
namespace {

/// As many as the platform's pool has. Work that blocks more threads than this
/// on blocks that have not started waits for ever.
constexpr std::size_t kMostThreads = 64;
/// Long enough that work which blocks again and again finds its threads alive.
constexpr std::chrono::seconds kKeepIdle(1);

constexpr std::array kPrioritiesInOrder = {DispatchQueue::Priority::High, DispatchQueue::Priority::Default,
    DispatchQueue::Priority::Low, DispatchQueue::Priority::Background};

std::size_t rankOf(DispatchQueue::Priority priority) {
    const auto* const place = std::ranges::find(kPrioritiesInOrder, priority);
    return static_cast<std::size_t>(place - kPrioritiesInOrder.begin());
}

/// Two at least, so that one long block does not hold up all others.
std::size_t widthOfThisMachine() {
    return std::clamp<std::size_t>(std::thread::hardware_concurrency(), 2, kMostThreads);
}

/// Of the processor, each of these steps leaves a thread four fifths of what it had.
constexpr int kStepsToComeLast = 10;

/// A whole process has one niceness elsewhere, but here a thread has its own.
void letOthersGoFirst() {
    const int niceness = getpriority(PRIO_PROCESS, 0);
    setpriority(PRIO_PROCESS, 0, niceness + kStepsToComeLast);
}

/// Where the calling thread works, null outside every pool.
thread_local DispatchThreadPool* poolOfThread = nullptr;
/// Sections that the calling thread is in; only the outermost counts.
thread_local std::size_t blockingDepth = 0;

} // namespace

std::shared_ptr<DispatchThreadPool> DispatchThreadPool::make(const Limits& limits) {
    return std::shared_ptr<DispatchThreadPool>(new DispatchThreadPool(limits));
}

DispatchThreadPool& DispatchThreadPool::shared() {
    static auto& pool = kept(std::make_unique<std::shared_ptr<DispatchThreadPool>>(
        make({.width = widthOfThisMachine(), .mostThreads = kMostThreads, .keepIdle = kKeepIdle})));
    return *pool;
}

struct DispatchThreadPool::Submitted {
    DispatchQueue::Block block;
    std::size_t rank = 0;
    Submitted* earlier = nullptr;
};

void DispatchThreadPool::submit(DispatchQueue::Block block, DispatchQueue::Priority priority) {
    auto* const submitted = new Submitted{std::move(block), rankOf(priority), _submitted.load()};
    while (!_submitted.compare_exchange_weak(submitted->earlier, submitted)) {}
    proceedWithSubmitted();
}

/// Puts those on the lists. Under the lock.
void DispatchThreadPool::takeSubmitted() {
    Submitted* latest = _submitted.exchange(nullptr);
    Submitted* first = nullptr;
    while (latest != nullptr) {
        Submitted* const earlier = std::exchange(latest->earlier, first);
        first = std::exchange(latest, earlier);
    }
    while (first != nullptr) {
        const std::unique_ptr<Submitted> submitted(first);
        first = submitted->earlier;
        _waiting.at(submitted->rank).push_back(std::move(submitted->block));
    }
}

/// Where another thread has the lock, that one does this when it gives it back.
void DispatchThreadPool::proceedWithSubmitted() {
    while (_submitted.load() != nullptr && _mutex.try_lock()) {
        takeSubmitted();
        letWorkProceed();
        _mutex.unlock();
    }
}

std::size_t DispatchThreadPool::threadCount() {
    std::size_t count = 0;
    {
        const std::lock_guard lock(_mutex);
        count = _threads;
    }
    proceedWithSubmitted();
    return count;
}

bool DispatchThreadPool::mayTakeBlock() const {
    return _computing < _limits.width &&
           std::ranges::any_of(_waiting, [](const auto& blocks) { return !blocks.empty(); });
}

std::optional<DispatchQueue::Block> DispatchThreadPool::takeBlock() {
    takeSubmitted();
    if (!mayTakeBlock()) {
        return std::nullopt;
    }
    auto& blocks = *std::ranges::find_if(_waiting, [](const auto& waiting) { return !waiting.empty(); });
    DispatchQueue::Block block = std::move(blocks.front());
    blocks.pop_front();
    ++_computing;
    // One thread is woken at a time; the next one by the first that takes its block.
    letWorkProceed();
    return block;
}

void DispatchThreadPool::letWorkProceed() {
    if (!mayTakeBlock()) {
        return;
    }
    if (_idle > 0) {
        _workOrTurn.wake();
    } else if (_threads < _limits.mostThreads) {
        startThread();
    }
}

void DispatchThreadPool::startThread() {
    try {
        std::thread([self = shared_from_this()] { self->work(); }).detach();
    } catch (const std::system_error& error) {
        if (_threads == 0) {
            endProgram(fmt::format("no thread can be started: {}", error.what()));
        }
        return; // Those that there are do the work.
    }
    ++_threads;
    ++_computing;
}

void DispatchThreadPool::work() {
    poolOfThread = this;
    if (_comesLast) {
        letOthersGoFirst();
    }
    std::unique_lock lock(_mutex);
    --_computing;
    while (true) {
        while (auto block = takeBlock()) {
            lock.unlock();
            proceedWithSubmitted();
            runDispatchedBlock(*block);
            block.reset(); // What it holds is let go outside the lock.
            lock.lock();
            --_computing;
        }
        if (!waitForBlock(lock)) {
            --_threads;
            lock.unlock();
            proceedWithSubmitted();
            return;
        }
    }
}

/// Whether one came before the thread has been idle for too long.
bool DispatchThreadPool::waitForBlock(std::unique_lock<std::mutex>& lock) {
    const auto end = std::chrono::steady_clock::now() + _limits.keepIdle;
    bool isInTime = true;
    ++_idle;
    while (isInTime && !mayTakeBlock()) {
        lock.unlock();
        proceedWithSubmitted();
        isInTime = _workOrTurn.waitUntil(end);
        lock.lock();
    }
    --_idle;
    return mayTakeBlock();
}

void DispatchThreadPool::beginBlocking() {
    {
        const std::lock_guard lock(_mutex);
        --_computing;
        letWorkProceed();
    }
    proceedWithSubmitted();
}

void DispatchThreadPool::endBlocking() {
    {
        const std::lock_guard lock(_mutex);
        ++_computing;
    }
    proceedWithSubmitted();
}

BlockingSection::BlockingSection() {
    if (poolOfThread != nullptr && blockingDepth == 0) {
        poolOfThread->beginBlocking();
    }
    ++blockingDepth;
}

BlockingSection::~BlockingSection() {
    --blockingDepth;
    if (poolOfThread != nullptr && blockingDepth == 0) {
        poolOfThread->endBlocking();
    }
}

void runDispatchedBlock(const DispatchQueue::Block& block) noexcept {
    try {
        block();
    } catch (const std::exception& exception) {
        endProgram(fmt::format("a block on a queue threw: {}", exception.what()));
    } catch (...) {
        endProgram("a block on a queue threw something that is no exception");
    }
}

void endProgram(std::string_view message) {
    std::fputs(fmt::format("exifcard: {}\n", message).c_str(), stderr);
    std::abort();
}

} // namespace exifcard

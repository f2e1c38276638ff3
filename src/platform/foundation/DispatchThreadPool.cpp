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

void DispatchThreadPool::submit(DispatchQueue::Block block, DispatchQueue::Priority priority) {
    const std::lock_guard lock(_mutex);
    _waiting.at(rankOf(priority)).push_back(std::move(block));
    letWorkProceed();
}

std::size_t DispatchThreadPool::threadCount() const {
    const std::lock_guard lock(_mutex);
    return _threads;
}

bool DispatchThreadPool::mayTakeBlock() const {
    return _computing < _limits.width &&
           std::ranges::any_of(_waiting, [](const auto& blocks) { return !blocks.empty(); });
}

std::optional<DispatchQueue::Block> DispatchThreadPool::takeBlock() {
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
        _workOrTurn.notify_one();
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
            runDispatchedBlock(*block);
            block.reset(); // What it holds is let go outside the lock.
            lock.lock();
            --_computing;
        }
        ++_idle;
        const bool isWanted = _workOrTurn.wait_for(lock, _limits.keepIdle, [this] { return mayTakeBlock(); });
        --_idle;
        if (!isWanted) {
            --_threads;
            return;
        }
    }
}

void DispatchThreadPool::beginBlocking() {
    const std::lock_guard lock(_mutex);
    --_computing;
    letWorkProceed();
}

void DispatchThreadPool::endBlocking() {
    const std::lock_guard lock(_mutex);
    ++_computing;
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

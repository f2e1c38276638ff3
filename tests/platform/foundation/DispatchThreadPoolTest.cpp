#include "platform/foundation/DispatchThreadPool.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <thread>
#include <vector>

#include <sys/resource.h>

namespace exifcard {
namespace {

using Priority = DispatchQueue::Priority;

/// One thread that computes, so that what starts after what is certain.
std::shared_ptr<DispatchThreadPool> poolOfWidthOne() {
    return DispatchThreadPool::make(
        {.width = 1, .mostThreads = 64, .keepIdle = std::chrono::milliseconds(0)});
}

TEST(DispatchThreadPoolTest, StartsHigherPrioritiesFirstAndEachInOrder) {
    const auto pool = poolOfWidthOne();
    std::promise<void> gate;
    std::vector<std::string> started;
    DispatchSemaphore isDone(0);
    // Waits without telling the pool, so the only turn stays taken.
    pool->submit([opened = gate.get_future().share()] { opened.wait(); }, Priority::Default);
    constexpr std::pair<std::string_view, Priority> blocks[] = {{"background", Priority::Background},
        {"low", Priority::Low}, {"default 1", Priority::Default}, {"high", Priority::High},
        {"default 2", Priority::Default}};
    for (const auto& [name, priority] : blocks) {
        pool->submit(
            [name = name, &started, &isDone] {
                started.emplace_back(name);
                isDone.signal();
            },
            priority);
    }
    gate.set_value();
    for ([[maybe_unused]] const auto& block : blocks) {
        isDone.wait();
    }
    EXPECT_EQ(started, (std::vector<std::string>{"high", "default 1", "default 2", "low", "background"}));
}

TEST(DispatchThreadPoolTest, RunsEveryBlockWhileItsThreadsComeAndGo) {
    const auto pool =
        DispatchThreadPool::make({.width = 2, .mostThreads = 4, .keepIdle = std::chrono::milliseconds(0)});
    constexpr int kSubmitters = 4;
    constexpr int kBlocks = 5000;
    DispatchGroup group;
    std::atomic<int> count = 0;
    for (int submitter = 0; submitter < kSubmitters; ++submitter) {
        group.enter();
        std::thread([&] {
            for (int number = 0; number < kBlocks; ++number) {
                group.enter();
                pool->submit(
                    [&] {
                        ++count;
                        group.leave();
                    },
                    number % 2 == 0 ? Priority::Default : Priority::High);
                if (number % 50 == 0) {
                    std::this_thread::yield(); // The pool runs dry now and then.
                }
            }
            group.leave();
        }).detach();
    }
    group.wait();
    EXPECT_EQ(count, kSubmitters * kBlocks);
}

TEST(DispatchThreadPoolTest, ThreadsThatComeLastLeaveTheProcessorToOthers) {
    const auto pool = poolOfWidthOne();
    pool->comeLast();
    std::promise<int> niceness;
    pool->submit([&niceness] { niceness.set_value(getpriority(PRIO_PROCESS, 0)); }, Priority::High);
    EXPECT_GT(niceness.get_future().get(), getpriority(PRIO_PROCESS, 0));
}

TEST(DispatchThreadPoolTest, ASemaphoreWakesTheLongestWaitingFirst) {
    const auto pool = poolOfWidthOne();
    constexpr int kWaiters = 20;
    DispatchSemaphore gate(0);
    DispatchSemaphore isReady(0);
    DispatchSemaphore hasWoken(0);
    std::vector<int> woken;
    // With one turn, a block starts only once the one before it waits.
    for (int waiter = 0; waiter < kWaiters; ++waiter) {
        pool->submit(
            [&gate, &hasWoken, &woken, waiter] {
                gate.wait();
                woken.push_back(waiter);
                hasWoken.signal();
            },
            Priority::Default);
    }
    pool->submit([&isReady] { isReady.signal(); }, Priority::Default);
    isReady.wait();
    std::vector<int> expected;
    for (int waiter = 0; waiter < kWaiters; ++waiter) {
        expected.push_back(waiter);
        gate.signal();
        hasWoken.wait();
    }
    EXPECT_EQ(woken, expected);
}

TEST(DispatchThreadPoolTest, EndsTheThreadsThatItNoLongerNeeds) {
    const auto pool = poolOfWidthOne();
    DispatchSemaphore gate(0);
    DispatchSemaphore isReady(0);
    constexpr std::size_t kBlocked = 30;
    for (std::size_t block = 0; block < kBlocked; ++block) {
        pool->submit([&gate] { gate.wait(); }, Priority::Default);
    }
    pool->submit([&isReady] { isReady.signal(); }, Priority::Default);
    isReady.wait();
    EXPECT_GE(pool->threadCount(), kBlocked);
    for (std::size_t block = 0; block < kBlocked; ++block) {
        gate.signal();
    }
    while (pool->threadCount() > 0) { // The test's time limit is the failure.
        std::this_thread::yield();
    }
}

TEST(DispatchThreadPoolTest, ANestedBlockingSectionGivesAwayOneTurnOnly) {
    const auto pool = poolOfWidthOne();
    std::atomic<int> computing = 0;
    std::atomic<int> mostComputing = 0;
    DispatchGroup group;
    const auto compute = [&computing, &mostComputing, &group] {
        const int now = ++computing;
        mostComputing = std::max(mostComputing.load(), now);
        std::this_thread::yield();
        --computing;
        group.leave();
    };
    for (int block = 0; block < 200; ++block) {
        group.enter();
    }
    pool->submit(
        [&pool, &compute] {
            const BlockingSection outer;
            const BlockingSection inner;
            for (int block = 0; block < 200; ++block) {
                pool->submit(compute, Priority::Default);
            }
        },
        Priority::Default);
    group.wait();
    EXPECT_EQ(mostComputing, 1);
}

} // namespace
} // namespace exifcard

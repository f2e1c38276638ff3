#include "platform/foundation/DispatchQueue.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <numeric>
#include <stdexcept>
#include <thread>
#include <vector>

namespace exifcard {
namespace {

using Priority = DispatchQueue::Priority;

class DispatchQueueDeathTest : public testing::Test {
protected:
    void SetUp() override { testing::GTEST_FLAG(death_test_style) = "threadsafe"; }
};

/// Blocks number of links threads, each on a semaphore that the next block signals, on two queues in turn.
void runChain(int links, const std::shared_ptr<DispatchQueue>& named, DispatchSemaphore& isDone) {
    if (links == 0) {
        isDone.signal();
        return;
    }
    DispatchQueue& queue = links % 2 == 0 ? *named : DispatchQueue::globalQueue(Priority::High);
    queue.async([links, named, &isDone] {
        DispatchSemaphore nextIsDone(0);
        runChain(links - 1, named, nextIsDone);
        nextIsDone.wait();
        isDone.signal();
    });
}

TEST(DispatchQueueTest, BlocksThatWaitForOneAnotherNeverStarveThePool) {
    const auto named = DispatchQueue::makeConcurrent("org.exifcard.chain");
    EXPECT_EQ(named->label(), "org.exifcard.chain");
    DispatchSemaphore isDone(0);
    runChain(63, named, isDone); // One short of the most threads.
    EXPECT_EQ(isDone.wait(), 0);
}

TEST(DispatchQueueTest, SyncRunsTheBlockBeforeItReturns) {
    bool hasRun = false;
    DispatchQueue::globalQueue(Priority::Background).sync([&hasRun] { hasRun = true; });
    EXPECT_TRUE(hasRun);
}

TEST(DispatchQueueTest, ASemaphoreLetsAsManyInAsItsValue) {
    constexpr int kBlocks = 200;
    DispatchSemaphore places(3);
    std::atomic<int> inside = 0;
    std::atomic<bool> isOverfull = false;
    DispatchGroup group;
    for (int block = 0; block < kBlocks; ++block) {
        group.enter();
        DispatchQueue::globalQueue().async([&] {
            places.wait();
            isOverfull = isOverfull || ++inside > 3;
            std::this_thread::yield();
            --inside;
            places.signal();
            group.leave();
        });
    }
    group.wait();
    EXPECT_FALSE(isOverfull);
}

TEST(DispatchQueueTest, AGroupNotifiesWhenTheLastHasLeft) {
    constexpr int kBlocks = 50;
    DispatchGroup group;
    DispatchSemaphore isNotified(0);
    std::atomic<int> left = 0;
    std::atomic<int> leftWhenNotified = -1;
    for (int block = 0; block < kBlocks; ++block) {
        group.enter();
    }
    auto named = DispatchQueue::makeConcurrent("org.exifcard.notified");
    group.notify(*named, [&] {
        leftWhenNotified = left.load();
        isNotified.signal();
    });
    named.reset(); // The group keeps it.
    for (int block = 0; block < kBlocks; ++block) {
        DispatchQueue::globalQueue().async([&group, &left] {
            ++left;
            group.leave();
        });
    }
    isNotified.wait();
    EXPECT_EQ(leftWhenNotified, kBlocks);
}

TEST(DispatchQueueTest, AGroupNotifiesOnceAndLaterThanTheCall) {
    DispatchGroup group;
    int notifications = 0;
    group.notify(DispatchQueue::mainQueue(), [&notifications] { ++notifications; });
    EXPECT_EQ(notifications, 0);
    MainRunLoop::drain();
    EXPECT_EQ(notifications, 1) << "though nobody ever entered";
    group.enter();
    group.leave();
    MainRunLoop::drain();
    EXPECT_EQ(notifications, 1);
}

TEST(DispatchQueueTest, TheMainQueueRunsInOrderUntilAStopAmongItsBlocks) {
    std::vector<int> ran;
    DispatchQueue::mainQueue().async([&ran] {
        ran.push_back(1);
        DispatchQueue::mainQueue().async([&ran] { ran.push_back(3); });
    });
    DispatchQueue::mainQueue().async([&ran] { ran.push_back(2); });
    MainRunLoop::stop(); // Before anybody runs it.
    MainRunLoop::runUntilStopped();
    EXPECT_EQ(ran, (std::vector<int>{1, 2}));
    MainRunLoop::drain();
    EXPECT_EQ(ran, (std::vector<int>{1, 2, 3}));

    DispatchQueue::mainQueue().async([] { MainRunLoop::stop(); });
    MainRunLoop::runUntilStopped();
}

TEST(DispatchQueueTest, ADrainLeavesWhatItsBlocksPutOnTheQueue) {
    int runs = 0;
    std::function<void()> again = [&again, &runs] {
        ++runs;
        DispatchQueue::mainQueue().async(again);
    };
    DispatchQueue::mainQueue().async(again);
    MainRunLoop::drain();
    EXPECT_EQ(runs, 1);
    again = [] {};
    MainRunLoop::drain(); // The one that it left.
    MainRunLoop::drain();
    EXPECT_EQ(runs, 2);
}

TEST(DispatchQueueTest, AToolkitIsWokenOnceUntilItDrains) {
    std::atomic<int> wakes = 0;
    DispatchQueue::mainQueue().async([] {});
    MainRunLoop::setWakeHandler([&wakes] { ++wakes; });
    EXPECT_EQ(wakes, 1) << "for what waited already";
    DispatchQueue::globalQueue().sync([] { DispatchQueue::mainQueue().async([] {}); });
    EXPECT_EQ(wakes, 1);
    DispatchQueue::mainQueue().async([] { DispatchQueue::mainQueue().async([] {}); });
    MainRunLoop::drain();
    EXPECT_EQ(wakes, 2) << "for what a block put on the queue";
    MainRunLoop::drain();
    MainRunLoop::setWakeHandler(nullptr);
    DispatchQueue::mainQueue().async([] {});
    EXPECT_EQ(wakes, 2);
    MainRunLoop::drain();
}

TEST_F(DispatchQueueDeathTest, ProgrammingErrorsEndTheProgramWithTheirName) {
    struct Case {
        std::string_view message;
        std::function<void()> error;
    };
    const Case cases[] = {
        {"a block on a queue threw: the reason",
            [] { DispatchQueue::globalQueue().sync([] { throw std::runtime_error("the reason"); }); }},
        {"a block on a queue threw: the main reason",
            [] {
                DispatchQueue::mainQueue().async([] { throw std::runtime_error("the main reason"); });
                MainRunLoop::drain();
            }},
        {"main thread waits for ever", [] { DispatchQueue::mainQueue().sync([] {}); }},
        {"left more often than entered", [] { DispatchGroup().leave(); }},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.message);
        EXPECT_DEATH(c.error(), std::string(c.message));
    }
}

TEST_F(DispatchQueueDeathTest, AProgramThatNamesQueuesStartsNoThread) {
    EXPECT_EXIT(
        {
            const auto named = DispatchQueue::makeConcurrent("org.exifcard.idle");
            DispatchQueue::globalQueue(Priority::High);
            DispatchQueue::mainQueue().async([] {});
            MainRunLoop::drain();
            const auto tasks = std::filesystem::directory_iterator("/proc/self/task");
            std::exit(static_cast<int>(std::distance(begin(tasks), end(tasks))));
        },
        testing::ExitedWithCode(1), "");
}

TEST_F(DispatchQueueDeathTest, AProgramEndsWhateverItsThreadsAreDoing) {
    EXPECT_EXIT(
        {
            DispatchSemaphore never(0);
            DispatchSemaphore hasStarted(0);
            for (int block = 0; block < 10; ++block) {
                DispatchQueue::globalQueue().async([&never, &hasStarted] {
                    hasStarted.signal();
                    never.wait();
                });
                hasStarted.wait();
            }
            DispatchQueue::globalQueue().sync([] {}); // Its thread idles now.
            std::exit(7);
        },
        testing::ExitedWithCode(7), "");
}

} // namespace
} // namespace exifcard

#include "platform/foundation/OperationQueue.h"

#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/PlatformException.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace exifcard {
namespace {

using Priority = Operation::QueuePriority;

/// A list that many threads add to.
class Notes {
public:
    void add(std::string note) {
        const std::lock_guard lock(_mutex);
        _notes.push_back(std::move(note));
    }
    std::vector<std::string> all() const {
        const std::lock_guard lock(_mutex);
        return _notes;
    }

private:
    mutable std::mutex _mutex;
    std::vector<std::string> _notes; // Guarded by _mutex.
};

std::shared_ptr<BlockOperation> noting(Notes& notes, std::string note, Priority priority = Priority::Normal) {
    auto operation = BlockOperation::blockOperationWithBlock([&notes, note] { notes.add(note); });
    operation->setQueuePriority(priority);
    return operation;
}

TEST(OperationQueueTest, RunsAtMostAsManyAtATimeAsItsLimit) {
    for (const int limit : {1, 3, OperationQueue::kDefaultMaxConcurrentOperationCount}) {
        SCOPED_TRACE(limit);
        OperationQueue queue(limit);
        std::atomic<int> running = 0;
        std::atomic<int> mostRunning = 0;
        std::atomic<int> done = 0;
        for (int operation = 0; operation < 200; ++operation) {
            queue.addOperationWithBlock([&running, &mostRunning, &done] {
                const int now = ++running;
                int most = mostRunning;
                while (now > most && !mostRunning.compare_exchange_weak(most, now)) {}
                std::this_thread::yield();
                --running;
                ++done;
            });
        }
        queue.waitUntilAllOperationsAreFinished();
        EXPECT_EQ(done, 200);
        EXPECT_EQ(queue.operationCount(), 0U);
        if (limit > 0) {
            EXPECT_LE(mostRunning, limit);
        }
    }
}

TEST(OperationQueueTest, UsesItsWholeLimitWhileOperationsBlock) {
    OperationQueue queue(5);
    std::atomic<int> arrived = 0;
    DispatchSemaphore gate(0);
    for (int operation = 0; operation < 5; ++operation) {
        queue.addOperationWithBlock([&arrived, &gate] {
            if (++arrived == 5) { // Only then can any of them end.
                for (int waiting = 0; waiting < 4; ++waiting) {
                    gate.signal();
                }
                return;
            }
            gate.wait();
        });
    }
    queue.waitUntilAllOperationsAreFinished();
    EXPECT_EQ(arrived, 5);
}

TEST(OperationQueueTest, StartsByPriorityThenInOrder) {
    Notes notes;
    OperationQueue queue(1);
    queue.setSuspended(true);
    queue.addOperation(noting(notes, "low", Priority::Low));
    queue.addOperation(noting(notes, "normal 1"));
    queue.addOperation(noting(notes, "very high", Priority::VeryHigh));
    queue.addOperation(noting(notes, "normal 2"));
    const auto raised = noting(notes, "raised", Priority::VeryLow);
    queue.addOperation(raised);
    raised->setQueuePriority(Priority::High);
    queue.setSuspended(false);
    queue.waitUntilAllOperationsAreFinished();
    EXPECT_EQ(notes.all(), (std::vector<std::string>{"very high", "raised", "normal 1", "normal 2", "low"}));
}

TEST(OperationQueueTest, ACancelledOperationThatWaitsIsFinishedWithoutRunning) {
    Notes notes;
    OperationQueue queue(1);
    queue.setSuspended(true);
    const auto cancelled = noting(notes, "cancelled");
    std::promise<void> completed;
    cancelled->setCompletionBlock([&completed] { completed.set_value(); });
    queue.addOperation(cancelled);
    queue.addOperation(noting(notes, "kept"));
    cancelled->cancel();
    EXPECT_TRUE(cancelled->isFinished());
    EXPECT_EQ(queue.operationCount(), 1U);
    completed.get_future().wait();
    queue.setSuspended(false);
    queue.waitUntilAllOperationsAreFinished();
    EXPECT_EQ(notes.all(), (std::vector<std::string>{"kept"}));
}

TEST(OperationQueueTest, AnOperationCancelledBeforeItIsAddedNeverRuns) {
    Notes notes;
    OperationQueue queue;
    const auto operation = noting(notes, "cancelled");
    operation->cancel();
    EXPECT_FALSE(operation->isFinished());
    queue.addOperation(operation);
    operation->waitUntilFinished();
    queue.waitUntilAllOperationsAreFinished();
    EXPECT_TRUE(notes.all().empty());
}

TEST(OperationQueueTest, ARunningOperationIsOnlyToldThatItIsCancelled) {
    OperationQueue queue(1);
    Notes notes;
    DispatchSemaphore hasStarted(0);
    DispatchSemaphore mayEnd(0);
    std::weak_ptr<Operation> running;
    const auto operation = BlockOperation::blockOperationWithBlock([&] {
        hasStarted.signal();
        mayEnd.wait();
        notes.add(running.lock()->isCancelled() ? "told" : "not told");
    });
    running = operation;
    queue.addOperation(operation);
    queue.addOperation(noting(notes, "never run"));
    hasStarted.wait();
    EXPECT_TRUE(operation->isExecuting());
    queue.cancelAllOperations();
    EXPECT_FALSE(operation->isFinished());
    EXPECT_EQ(queue.operationCount(), 1U);
    mayEnd.signal();
    queue.waitUntilAllOperationsAreFinished();
    EXPECT_TRUE(operation->isFinished());
    EXPECT_EQ(notes.all(), (std::vector<std::string>{"told"}));
}

TEST(OperationQueueTest, AnOperationIsAddedOnlyOnce) {
    Notes notes;
    OperationQueue queue;
    OperationQueue another;
    const auto operation = noting(notes, "once");
    queue.addOperation(operation);
    EXPECT_THROW(another.addOperation(operation), PlatformException);
    operation->waitUntilFinished();
    EXPECT_THROW(queue.addOperation(operation), PlatformException);
    EXPECT_THROW(operation->addExecutionBlock([] {}), PlatformException);
    queue.waitUntilAllOperationsAreFinished();
    EXPECT_EQ(notes.all(), (std::vector<std::string>{"once"}));
}

TEST(OperationQueueTest, ABlockOperationFinishesWhenAllItsBlocksHave) {
    OperationQueue queue(1);
    std::atomic<int> done = 0;
    const auto operation = BlockOperation::blockOperationWithBlock([&done] { ++done; });
    for (int block = 0; block < 20; ++block) {
        operation->addExecutionBlock([&done] { ++done; });
    }
    std::promise<int> doneAtCompletion;
    operation->setCompletionBlock([&done, &doneAtCompletion] { doneAtCompletion.set_value(done); });
    queue.addOperation(operation);
    EXPECT_EQ(doneAtCompletion.get_future().get(), 21);
}

TEST(OperationQueueTest, WhatWasAddedIsDoneWhenTheQueueIsGone) {
    std::promise<void> done;
    {
        OperationQueue queue(1);
        queue.addOperationWithBlock([] { std::this_thread::yield(); });
        queue.addOperationWithBlock([&done] { done.set_value(); });
    }
    done.get_future().wait();
}

TEST(OperationQueueTest, EveryOperationFinishesWhileOthersCancelAndAdd) {
    OperationQueue queue(4);
    std::atomic<int> ran = 0;
    std::atomic<int> completed = 0;
    constexpr int kAdders = 4;
    constexpr int kOperations = 200;
    DispatchGroup adders;
    DispatchGroup completions;
    for (int adder = 0; adder < kAdders; ++adder) {
        adders.enter();
        DispatchQueue::globalQueue().async([&] {
            for (int number = 0; number < kOperations; ++number) {
                auto operation = BlockOperation::blockOperationWithBlock([&ran] { ++ran; });
                completions.enter();
                operation->setCompletionBlock([&completed, &completions] {
                    ++completed;
                    completions.leave();
                });
                queue.addOperation(operation);
                if (number % 2 == 0) {
                    operation->cancel();
                }
            }
            adders.leave();
        });
    }
    adders.wait();
    queue.waitUntilAllOperationsAreFinished();
    completions.wait();
    EXPECT_EQ(completed, kAdders * kOperations);
    EXPECT_GE(ran, kAdders * kOperations / 2);
    EXPECT_EQ(queue.operationCount(), 0U);
}

} // namespace
} // namespace exifcard

#include "cli/OrderedPipeline.h"

#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <string>
#include <vector>

namespace exifcard {
namespace {

/// Answers "0", "1", … up to `count` of them.
std::function<std::optional<std::string>()> numbersUpTo(int count) {
    return [count, next = 0]() mutable {
        return next < count ? std::optional(std::to_string(next++)) : std::nullopt;
    };
}

TEST(OrderedPipelineTest, HandsEveryResultOnInTheOrderOfTheInput) {
    for (const unsigned jobs : {1U, 2U, 7U}) {
        SCOPED_TRACE(jobs);
        constexpr int kCount = 2000; // Many times what may wait.
        std::vector<std::string> handed;
        runInOrder(jobs,
            {.take = numbersUpTo(kCount),
                .work =
                    [](const std::string& name) { return FileResult{.output = name + "!", .failure = {}}; },
                .hand = [&handed](const FileResult& result) { handed.push_back(result.output); }});
        ASSERT_EQ(handed.size(), kCount);
        for (int index = 0; index < kCount; ++index) {
            ASSERT_EQ(handed[static_cast<std::size_t>(index)], std::to_string(index) + "!");
        }
    }
}

TEST(OrderedPipelineTest, WithoutInputHandsNothingOn) {
    int handed = 0;
    runInOrder(3, {.take = numbersUpTo(0),
                      .work = [](const std::string&) { return FileResult{}; },
                      .hand = [&](const FileResult&) { ++handed; }});
    EXPECT_EQ(handed, 0);
}

TEST(OrderedPipelineTest, ASlowFirstFileHoldsBackABoundedNumberOfResults) {
    constexpr int kMost = 2 * 64; // What two jobs may have waiting.
    std::mutex mutex;
    std::condition_variable changed;
    int finished = 0; // Guarded by mutex.
    std::atomic<int> handed = 0;
    std::atomic<int> taken = 0;
    runInOrder(2, {.take =
                          [&, numbers = numbersUpTo(1000)]() mutable {
                              EXPECT_LE(taken - handed, kMost);
                              ++taken;
                              return numbers();
                          },
                      .work =
                          [&](const std::string& name) {
                              std::unique_lock lock(mutex);
                              if (name == "0") { // Ends only when the other thread has done all that it may.
                                  changed.wait(lock, [&] { return finished == kMost - 1; });
                              }
                              ++finished;
                              changed.notify_all();
                              return FileResult{};
                          },
                      .hand = [&](const FileResult&) { ++handed; }});
    EXPECT_EQ(handed, 1000);
}

} // namespace
} // namespace exifcard

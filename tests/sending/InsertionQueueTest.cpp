#include "sending/InsertionQueue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace exifcard {
namespace {

using testing::ElementsAre;

TEST(InsertionQueueTest, LetsInsertionsOfOneConversationInOneAfterTheOther) {
    std::vector<std::string> begun;
    const auto insert = [&begun](const std::string& conversation, const std::string& name) {
        InsertionQueue::wait(conversation, [&begun, name] { begun.push_back(name); });
    };
    for (int round = 0; round < 2; ++round) { // The second begins where nothing waits any more.
        begun.clear();
        insert("Ada", "first");
        insert("Ada", "second");
        insert("Ben", "another");
        EXPECT_THAT(begun, ElementsAre("first", "another"));
        InsertionQueue::ended("Ada");
        EXPECT_THAT(begun, ElementsAre("first", "another", "second"));
        InsertionQueue::ended("Ada");
        InsertionQueue::ended("Ben");
    }
}

TEST(InsertionQueueTest, GoesOnAfterOneThatEndsAtOnce) {
    int count = 0;
    const auto endAtOnce = [&count] {
        ++count;
        InsertionQueue::ended("Ada");
    };
    InsertionQueue::wait("Ada", [] {});
    InsertionQueue::wait("Ada", endAtOnce);
    InsertionQueue::wait("Ada", endAtOnce);
    EXPECT_EQ(count, 0);
    InsertionQueue::ended("Ada");
    EXPECT_EQ(count, 2);
    InsertionQueue::wait("Ada", endAtOnce);
    EXPECT_EQ(count, 3);
}

} // namespace
} // namespace exifcard

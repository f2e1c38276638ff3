#include "platform/foundation/NotificationCenter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace exifcard {
namespace {

using Observation = NotificationCenter::Observation;

TEST(NotificationCenterTest, TellsWhomNameAndSenderMatch) {
    NotificationCenter center;
    const int sender = 0;
    const int stranger = 0;
    std::string told;
    const auto add = [&](std::string_view name, const void* object, char mark) {
        return center.addObserver(name, object, [&told, mark](const Notification&) { told += mark; });
    };
    const Observation observations[] = {
        add("event", nullptr, 'a'), add("event", &sender, 'b'), add("other", nullptr, 'c')};

    struct Case {
        std::string_view name;
        const void* object;
        std::string_view told;
    };
    const Case cases[] = {
        {"event", &sender, "ab"},
        {"event", &stranger, "a"},
        {"event", nullptr, "a"},
        {"other", &sender, "c"},
        {"unknown", &sender, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        told.clear();
        center.postNotificationName(c.name, c.object);
        std::ranges::sort(told);
        EXPECT_EQ(told, c.told);
    }
}

TEST(NotificationCenterTest, ADroppedObserverIsNotCalledAgain) {
    NotificationCenter center;
    std::vector<int> calls(5);
    std::vector<Observation> observations;
    for (int& count : calls) {
        observations.push_back(
            center.addObserver("event", nullptr, [&count](const Notification&) { ++count; }));
    }
    observations.erase(observations.begin() + 1); // Moves the later ones down.
    center.postNotificationName("event", nullptr);
    EXPECT_EQ(calls, (std::vector<int>{1, 0, 1, 1, 1}));
    observations.erase(observations.begin() + 2, observations.end());
    center.postNotificationName("event", nullptr);
    EXPECT_EQ(calls, (std::vector<int>{2, 0, 2, 1, 1}));
}

TEST(NotificationCenterTest, AHandlerMayAddAndDropObserversDuringAPost) {
    NotificationCenter center;
    int count = 0;
    std::vector<Observation> observations(2);
    Observation late;
    for (Observation& own : observations) {
        own = center.addObserver("event", nullptr, [&](const Notification&) {
            ++count;
            observations.clear(); // Whichever runs first ends both.
            late = center.addObserver("event", nullptr, [&](const Notification&) { count += 10; });
        });
    }
    center.postNotificationName("event", nullptr);
    EXPECT_EQ(count, 1);
    center.postNotificationName("event", nullptr);
    EXPECT_EQ(count, 11);
}

} // namespace
} // namespace exifcard

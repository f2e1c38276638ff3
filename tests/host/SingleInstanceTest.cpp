#include "host/SingleInstance.h"

#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>

#include <future>

namespace exifcard {
namespace {

class SingleInstanceTest : public ::testing::Test {
protected:
    /// What a second start answers and the first one hears.
    static bool startAgain(const QStringList& wishes) {
        auto answer = std::async(std::launch::async, [wishes] { return SingleInstance().handOver(wishes); });
        const auto isThere = [&answer] {
            return answer.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
        };
        return QTest::qWaitFor(isThere, 10'000) && answer.get();
    }

    TemporaryHome _home;
};

TEST_F(SingleInstanceTest, HandsTheWishesOfEachLaterStartToTheFirst) {
    const QStringList none = {QString(), QString()};
    const QStringList some = {QStringLiteral("Holiday in Łódź"), QString(30'000, QChar(u'x'))};
    SingleInstance first;
    EXPECT_FALSE(first.handOver(some)) << "there is none yet";
    first.listen();
    const QSignalSpy heard(&first, &SingleInstance::startedAgain);
    EXPECT_TRUE(startAgain(some));
    EXPECT_TRUE(startAgain(none));
    EXPECT_EQ(heard, QList<QVariantList>({{some}, {none}}));
    EXPECT_FALSE(startAgain({QString(200'000, QChar(u'x'))})) << "more than anybody wishes";
}

TEST_F(SingleInstanceTest, TakesThePlaceOfAProgramThatWasKilled) {
    auto* const killed = new SingleInstance; // Its socket stays as long as it lives.
    killed->listen();
    SingleInstance next;
    next.listen();
    const QSignalSpy heard(&next, &SingleInstance::startedAgain);
    EXPECT_TRUE(startAgain({QStringLiteral("My notes")}));
    EXPECT_EQ(heard.size(), 1);
    delete killed;
}

} // namespace
} // namespace exifcard

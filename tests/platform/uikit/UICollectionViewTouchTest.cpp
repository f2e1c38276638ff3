#include "ListFixture.h"

#include <QCoreApplication>
#include <QPointingDevice>
#include <QPushButton>
#include <QSignalSpy>
#include <QWheelEvent>

namespace exifcard {
namespace {

class UICollectionViewTouchTest : public ListFixture {
protected:
    static bool comesTrue(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, 5000); }

    /// A finger that goes from one height to another within some hundredths of a second.
    void drag(int from, int to, bool isLetGo = true) {
        QTest::touchEvent(list.viewport(), finger.get()).press(0, {150, from});
        constexpr int kSteps = 8;
        for (int step = 1; step <= kSteps; ++step) {
            const int y = from + (to - from) * step / kSteps;
            QTest::qWait(10); // The scroller reads speeds from the events' times.
            QTest::touchEvent(list.viewport(), finger.get()).move(0, {150, y});
        }
        if (isLetGo) {
            letGo(to);
        }
    }
    void letGo(int y) { QTest::touchEvent(list.viewport(), finger.get()).release(0, {150, y}); }
    void touchTap(QPoint place) {
        QTest::touchEvent(list.viewport(), finger.get()).press(0, place);
        QTest::touchEvent(list.viewport(), finger.get()).release(0, place);
    }
    UIRefreshControl& addRefreshControl() {
        list.setRefreshControl(std::make_unique<UIRefreshControl>());
        return *list.refreshControl();
    }
    void turnWheelUp(int notches) {
        QWheelEvent event({100, 100}, list.viewport()->mapToGlobal(QPointF(100, 100)), {}, {0, notches * 120},
            {}, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(list.viewport(), &event);
    }

    std::unique_ptr<QPointingDevice> finger{QTest::createTouchDevice()};
};

TEST_F(UICollectionViewTouchTest, FliesOnAfterAFlingAndStopsByItself) {
    showRows(1000);
    source->takeRecord();
    drag(500, 200);
    const double atRelease = list.contentOffset().y;
    EXPECT_GT(atRelease, 200);
    EXPECT_TRUE(comesTrue([&] { return list.contentOffset().y > atRelease + 200; }));
    double before = -1;
    EXPECT_TRUE(comesTrue([&] { return std::exchange(before, list.contentOffset().y) == before; }));
    EXPECT_TRUE(source->takeRecord("didSelect").empty()) << "a fling is no tap";
}

TEST_F(UICollectionViewTouchTest, TakesATouchWithoutMovementForATap) {
    showRows(10);
    auto* const button = new QPushButton(list.cellForItemAtIndexPath({0, 2}));
    button->setGeometry(10, 10, 60, 60);
    button->show();
    QSignalSpy clicks(button, &QPushButton::clicked);
    source->takeRecord();
    touchTap(middleOf(1));
    EXPECT_THAT(source->takeRecord("didSelect"), testing::ElementsAre("didSelect 0/1"));
    touchTap(button->mapTo(list.viewport(), QPoint(30, 30)));
    EXPECT_EQ(clicks.count(), 1);
    EXPECT_THAT(source->takeRecord("didSelect"), testing::IsEmpty());
}

TEST_F(UICollectionViewTouchTest, SendsOnceWhenItIsPulledPastTheTrigger) {
    UIRefreshControl& control = addRefreshControl();
    QSignalSpy sent(&control, &UIRefreshControl::valueChanged);
    showRows(3); // Shorter than the list.
    drag(100, 180);
    EXPECT_EQ(sent.count(), 0);
    EXPECT_TRUE(comesTrue([this] { return list.contentOffset().y == 0; }));
    drag(100, 400);
    EXPECT_EQ(sent.count(), 1);
    EXPECT_TRUE(control.isRefreshing());
    EXPECT_TRUE(comesTrue([this] { return list.contentOffset().y == -60; }))
        << "rests with the control in sight";
    EXPECT_EQ(sent.count(), 1);
    control.endRefreshing();
    control.endRefreshing();
    EXPECT_TRUE(comesTrue([this] { return list.contentOffset().y == 0; }));
}

TEST_F(UICollectionViewTouchTest, RefreshesByCodeWithoutSendingOrScrolling) {
    UIRefreshControl& control = addRefreshControl();
    QSignalSpy sent(&control, &UIRefreshControl::valueChanged);
    showRows(100);
    control.beginRefreshing();
    control.beginRefreshing();
    EXPECT_EQ(list.contentOffset().y, 0);
    list.setContentOffset({0, -60}, /*animated=*/true);
    EXPECT_TRUE(comesTrue([this] { return list.contentOffset().y == -60; }));
    list.reloadData();
    list.layoutIfNeeded();
    EXPECT_EQ(list.contentOffset().y, -60);
    EXPECT_EQ(control.geometry(), QRect(0, 0, 375, 60));
    control.endRefreshing();
    EXPECT_TRUE(comesTrue([this] { return list.contentOffset().y == 0; }));
    EXPECT_EQ(sent.count(), 0);
}

TEST_F(UICollectionViewTouchTest, PullsByTheWheelOnlyWhenItTurnsAtTheTop) {
    UIRefreshControl& control = addRefreshControl();
    QSignalSpy sent(&control, &UIRefreshControl::valueChanged);
    showRows(100);
    list.setContentOffset({0, 100}, /*animated=*/false);
    for (int turn = 0; turn < 10; ++turn) {
        turnWheelUp(1);
    }
    EXPECT_EQ(list.contentOffset().y, 0) << "a turn that began below stops at the top";
    EXPECT_EQ(sent.count(), 0);
}

TEST_F(UICollectionViewTouchTest, RefreshesWhenTheWheelPullsFarEnough) {
    UIRefreshControl& control = addRefreshControl();
    QSignalSpy sent(&control, &UIRefreshControl::valueChanged);
    showRows(100);
    turnWheelUp(2);
    EXPECT_EQ(sent.count(), 0);
    turnWheelUp(2);
    turnWheelUp(2);
    EXPECT_EQ(sent.count(), 1);
    EXPECT_TRUE(comesTrue([this] { return list.contentOffset().y == -60; }));
    control.endRefreshing();
    EXPECT_TRUE(comesTrue([this] { return list.contentOffset().y == 0; }));
}

} // namespace
} // namespace exifcard

#include "platform/uikit/LOTAnimationView.h"

#include <gtest/gtest.h>

#include <QTest>

#include <vector>

namespace exifcard {
namespace {

/// The cloud's animation, 60 frames a second from 0 on, and what its playing told.
struct Playing {
    std::unique_ptr<LOTAnimationView> view = LOTAnimationView::animationNamed("cloud_download");
    std::vector<bool> told;

    LOTAnimationView::CompletionBlock note() {
        return [this](bool isFinished) { told.push_back(isFinished); };
    }
    void show() const {
        view->resize(60, 60);
        view->show();
    }
    /// Whether its frame changes within the time in which it would several times.
    bool isMoving() const {
        const double before = view->currentFrame();
        return QTest::qWaitFor([&] { return view->currentFrame() != before; }, 300);
    }
    bool waitUntilTold() {
        return QTest::qWaitFor([this] { return !told.empty(); }, 5000);
    }
};

TEST(LOTAnimationViewTest, PlaysToAFrameAndTellsItOnceAndLater) {
    Playing playing;
    playing.view->playFromFrame(61, 67, playing.note());
    playing.view->setCompletionBlock(playing.note()); // The same again.
    EXPECT_TRUE(playing.told.empty());
    EXPECT_EQ(playing.view->currentFrame(), 61);
    EXPECT_EQ(playing.view->targetFrame(), 67);
    EXPECT_TRUE(playing.waitUntilTold());
    EXPECT_EQ(playing.view->currentFrame(), 67);
    playing.view->stop();
    EXPECT_EQ(playing.told, std::vector{true});
    EXPECT_EQ(playing.view->currentFrame(), playing.view->startFrame());
}

TEST(LOTAnimationViewTest, TellsAPlayingThatIsReplacedOrStoppedThatItDidNotEnd) {
    Playing playing;
    playing.view->playFromFrame(1, 60, playing.note());
    playing.view->playToFrame(0, playing.note());
    EXPECT_EQ(playing.told, std::vector{false});
    playing.view->stop();
    EXPECT_EQ(playing.told, (std::vector{false, false}));
}

TEST(LOTAnimationViewTest, LoopsUntilItIsToldNotTo) {
    Playing playing;
    playing.show();
    playing.view->setAnimationSpeed(20);
    playing.view->setLoopAnimation(true);
    playing.view->playFromFrame(1, 13, playing.note()); // 10 ms a round.
    bool hasGoneBack = false;
    double latest = 0;
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            hasGoneBack = hasGoneBack || playing.view->currentFrame() < latest;
            latest = playing.view->currentFrame();
            return hasGoneBack;
        },
        5000));
    EXPECT_TRUE(playing.told.empty());
    playing.view->setLoopAnimation(false);
    EXPECT_TRUE(playing.waitUntilTold());
    EXPECT_EQ(playing.told, std::vector{true});
}

TEST(LOTAnimationViewTest, RestsWhileItIsNotSeen) {
    UIView window;
    window.resize(100, 100);
    Playing playing;
    playing.view->setParent(&window);
    playing.view->resize(60, 60);
    playing.view->setLoopAnimation(true);
    playing.view->playFromFrame(1, 60, playing.note());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !playing.isMoving(); }, 5000)) << "not shown yet";
    window.show();
    EXPECT_TRUE(playing.isMoving());
    playing.view->move(0, 200); // Scrolled out.
    EXPECT_TRUE(QTest::qWaitFor([&] { return !playing.isMoving(); }, 5000));
    playing.view->move(0, 20);
    EXPECT_TRUE(playing.isMoving());
    playing.view->hide();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !playing.isMoving(); }, 5000));
    EXPECT_TRUE(playing.told.empty());
    playing.view->setLoopAnimation(false);
    EXPECT_TRUE(playing.waitUntilTold()) << "the last round ends, seen or not";
    playing.view->setParent(nullptr);
}

TEST(LOTAnimationViewTest, StaysWithinTheFramesOfItsScene) {
    Playing playing;
    playing.view->setAnimationSpeed(1e6);
    playing.view->playFromFrame(-5, 1e9, playing.note());
    EXPECT_EQ(playing.view->currentFrame(), 0);
    EXPECT_EQ(playing.view->targetFrame(), 121);
    EXPECT_TRUE(playing.waitUntilTold());
}

TEST(LOTAnimationViewTest, DrawsTheFrameItShows) {
    Playing playing;
    playing.view->resize(60, 60);
    const QImage idle = playing.view->grab().toImage();
    playing.view->playFromFrame(121, 121, playing.note());
    EXPECT_TRUE(playing.waitUntilTold());
    EXPECT_NE(playing.view->grab().toImage(), idle);
}

TEST(LOTAnimationViewTest, AnUnknownNameShowsNothingAndEndsAtOnce) {
    Playing playing;
    playing.view = LOTAnimationView::animationNamed("no such animation");
    playing.view->playFromFrame(1, 60, playing.note());
    EXPECT_EQ(playing.told, std::vector{false});
}

} // namespace
} // namespace exifcard

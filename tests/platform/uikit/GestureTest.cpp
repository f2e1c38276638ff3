#include "platform/uikit/GestureRecognizers.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMouseEvent>
#include <QPointingDevice>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <memory>
#include <vector>

namespace exifcard {
namespace {

using State = UIGestureRecognizerState;

/// A view on screen with a button in its upper left, and the mouse over it.
struct Surface {
    QWidget view;
    QPushButton* const button = new QPushButton(&view);
    quint64 time = 1000; ///< Of the next event, in milliseconds.

    Surface() {
        view.setGeometry(0, 0, 400, 400);
        button->setGeometry(0, 0, 100, 100);
        view.show();
    }

    template<typename Recognizer, typename... Arguments>
    Recognizer& add(std::vector<State>& states, Arguments... arguments) {
        auto recognizer = std::make_unique<Recognizer>(arguments...);
        Recognizer& added = *recognizer;
        added.addTarget([&states](UIGestureRecognizer& told) { states.push_back(told.state()); });
        addGestureRecognizer(view, std::move(recognizer));
        return added;
    }

    void mouse(QEvent::Type type, QPoint place, Qt::MouseButton button_ = Qt::LeftButton) {
        QWidget* const below = view.childAt(place);
        QWidget* const target = below ? below : &view;
        const bool isMove = type == QEvent::MouseMove;
        const bool isRelease = type == QEvent::MouseButtonRelease;
        QMouseEvent event(type, target->mapFrom(&view, place), view.mapToGlobal(place),
            isMove ? Qt::NoButton : button_, isRelease ? Qt::NoButton : button_, Qt::NoModifier);
        event.setTimestamp(time);
        QApplication::sendEvent(target, &event);
        time += 10;
    }
    void press(QPoint place) { mouse(QEvent::MouseButtonPress, place); }
    void move(QPoint place) { mouse(QEvent::MouseMove, place); }
    void release(QPoint place) { mouse(QEvent::MouseButtonRelease, place); }
    void click(QPoint place) {
        press(place);
        release(place);
    }
    /// In steps, as a mouse does.
    void drag(QPoint from, QPoint to, int steps = 10) {
        press(from);
        for (int step = 1; step <= steps; ++step) {
            move(from + (to - from) * step / steps);
        }
        release(to);
    }
};

TEST(GestureTest, ATapIsAShortTouchThatStaysInItsPlace) {
    Surface surface;
    std::vector<State> states;
    auto& tap = surface.add<UITapGestureRecognizer>(states);
    surface.click({200, 200});
    EXPECT_EQ(states, std::vector{State::Ended});
    EXPECT_EQ(tap.state(), State::Possible);
    EXPECT_EQ(tap.locationInView(surface.view), (CGPoint{200, 200}));
    surface.drag({200, 200}, {220, 200});
    EXPECT_EQ(states.size(), 1U);
    surface.mouse(QEvent::MouseButtonPress, {200, 200}, Qt::RightButton);
    surface.mouse(QEvent::MouseButtonRelease, {200, 200}, Qt::RightButton);
    EXPECT_EQ(states.size(), 1U);
}

TEST(GestureTest, ADoubleTapIsTwoSoonAndCloseTogether) {
    Surface surface;
    std::vector<State> once;
    std::vector<State> twice;
    surface.add<UITapGestureRecognizer>(once);
    surface.add<UITapGestureRecognizer>(twice, 2);
    surface.click({200, 200});
    surface.time += 600;
    surface.click({200, 200});
    surface.click({300, 300});
    EXPECT_TRUE(twice.empty());
    surface.mouse(QEvent::MouseButtonDblClick, {305, 300});
    surface.release({305, 300});
    EXPECT_EQ(twice, std::vector{State::Ended});
    EXPECT_EQ(once.size(), 4U);
}

TEST(GestureTest, ATapOnAButtonIsTheButtons) {
    Surface surface;
    std::vector<State> states;
    surface.add<UITapGestureRecognizer>(states);
    const QSignalSpy clicked(surface.button, &QPushButton::clicked);
    surface.click({50, 50});
    EXPECT_TRUE(states.empty());
    EXPECT_EQ(clicked.count(), 1);
}

TEST(GestureTest, ASwipeIsQuickAndInItsDirection) {
    using Direction = UISwipeGestureRecognizerDirection;
    struct Case {
        Direction direction;
        QPoint way;
    };
    const Case cases[] = {
        {Direction::Right, {120, 10}},
        {Direction::Left, {-120, 10}},
        {Direction::Up, {10, -120}},
        {Direction::Down, {10, 120}},
    };
    for (const Case& c : cases) {
        for (const Case& stroke : cases) {
            SCOPED_TRACE(testing::Message()
                         << static_cast<int>(c.direction) << " for " << static_cast<int>(stroke.direction));
            Surface surface;
            std::vector<State> states;
            surface.add<UISwipeGestureRecognizer>(states, c.direction);
            surface.drag({200, 200}, QPoint(200, 200) + stroke.way);
            const bool isIt = c.direction == stroke.direction;
            EXPECT_EQ(states, isIt ? std::vector{State::Ended} : std::vector<State>{});
        }
    }
    Surface surface;
    std::vector<State> states;
    surface.add<UISwipeGestureRecognizer>(states, Direction::Right);
    surface.press({100, 200});
    surface.time += 600;
    surface.move({250, 200});
    surface.release({250, 200});
    surface.drag({100, 200}, {200, 290});
    EXPECT_TRUE(states.empty());
}

TEST(GestureTest, APanTellsHowFarAndHowFastTheFingerMoves) {
    Surface surface;
    std::vector<State> states;
    auto& pan = surface.add<UIPanGestureRecognizer>(states);
    CGPoint translation;
    CGPoint velocity;
    pan.addTarget([&](UIGestureRecognizer& told) {
        if (told.state() == State::Ended) {
            translation = pan.translation();
            velocity = pan.velocity();
        }
    });
    surface.drag({100, 100}, {200, 150}, 5);
    EXPECT_EQ(states, (std::vector{State::Began, State::Changed, State::Changed, State::Changed,
                          State::Changed, State::Ended}));
    EXPECT_EQ(translation, (CGPoint{100, 50}));
    EXPECT_NEAR(velocity.x, 100 / 0.06, 1);
    EXPECT_NEAR(velocity.y, 50 / 0.06, 1);
    states.clear();
    surface.drag({200, 200}, {205, 205});
    EXPECT_TRUE(states.empty());
}

TEST(GestureTest, AFingerThatRestsBeforeItLiftsHasNoVelocity) {
    Surface surface;
    std::vector<State> states;
    auto& pan = surface.add<UIPanGestureRecognizer>(states);
    surface.press({100, 100});
    surface.move({200, 100});
    surface.time += 300;
    surface.release({200, 100});
    EXPECT_EQ(pan.velocity(), (CGPoint{0, 0}));
}

TEST(GestureTest, ALongPressBeginsAfterHalfASecondInOnePlace) {
    Surface surface;
    std::vector<State> states;
    surface.add<UILongPressGestureRecognizer>(states);
    surface.click({200, 200});
    surface.drag({200, 200}, {300, 200});
    EXPECT_TRUE(states.empty());
    surface.press({200, 200});
    EXPECT_TRUE(QTest::qWaitFor([&states] { return !states.empty(); }, 5000));
    surface.move({300, 200});
    surface.release({300, 200});
    EXPECT_EQ(states, (std::vector{State::Began, State::Changed, State::Ended}));
}

TEST(GestureTest, AGestureThatBeginsEndsThePressBelowIt) {
    Surface surface;
    std::vector<State> states;
    surface.add<UIPanGestureRecognizer>(states);
    const QSignalSpy clicked(surface.button, &QPushButton::clicked);
    surface.press({20, 50});
    EXPECT_TRUE(surface.button->isDown());
    surface.move({60, 50});
    EXPECT_FALSE(surface.button->isDown());
    surface.move({70, 50});
    EXPECT_FALSE(surface.button->isDown());
    surface.release({70, 50});
    EXPECT_EQ(clicked.count(), 0);
    surface.click({50, 50});
    EXPECT_EQ(clicked.count(), 1);
}

class Say : public UIGestureRecognizerDelegate {
public:
    bool gestureRecognizerShouldBegin(UIGestureRecognizer&) override { return mayBegin; }
    bool shouldReceiveTouch(UIGestureRecognizer&) override { return mayReceive; }
    bool shouldRecognizeSimultaneouslyWithGestureRecognizer(
        UIGestureRecognizer&, UIGestureRecognizer&) override {
        return mayBoth;
    }
    bool mayBegin = true;
    bool mayReceive = true;
    bool mayBoth = false;
};

TEST(GestureTest, TwoGesturesAreNotRecognizedTogetherUnlessADelegateAllowsIt) {
    for (const bool mayBoth : {false, true}) {
        SCOPED_TRACE(mayBoth);
        Surface surface;
        std::vector<State> panStates;
        std::vector<State> swipeStates;
        const auto say = std::make_shared<Say>();
        say->mayBoth = mayBoth;
        surface.add<UIPanGestureRecognizer>(panStates).setDelegate(say);
        surface.add<UISwipeGestureRecognizer>(swipeStates, UISwipeGestureRecognizerDirection::Right);
        surface.drag({200, 200}, {300, 200});
        EXPECT_FALSE(panStates.empty());
        EXPECT_EQ(!swipeStates.empty(), mayBoth);
    }
}

TEST(GestureTest, TheDelegateAndTheSwitchKeepAGestureFromBeginning) {
    Surface surface;
    std::vector<State> states;
    const auto say = std::make_shared<Say>();
    auto& pan = surface.add<UIPanGestureRecognizer>(states);
    pan.setDelegate(say);
    say->mayBegin = false;
    surface.drag({200, 200}, {300, 200});
    say->mayBegin = true;
    say->mayReceive = false;
    surface.drag({200, 200}, {300, 200});
    say->mayReceive = true;
    pan.setEnabled(false);
    surface.drag({200, 200}, {300, 200});
    EXPECT_TRUE(states.empty());
    pan.setEnabled(true);
    surface.press({200, 200});
    surface.move({300, 200});
    pan.setEnabled(false);
    surface.move({310, 200});
    surface.release({310, 200});
    EXPECT_EQ(states, (std::vector{State::Began, State::Cancelled}));
}

TEST(GestureTest, AGestureMayDestroyItsView) {
    auto surface = std::make_unique<Surface>();
    QPointer<QWidget> inner = new QWidget(&surface->view);
    inner->setGeometry(200, 200, 100, 100);
    inner->show();
    auto tap = std::make_unique<UITapGestureRecognizer>();
    tap->addTarget([&inner](UIGestureRecognizer&) { inner->deleteLater(); });
    addGestureRecognizer(*inner, std::move(tap));
    surface->click({250, 250});
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(inner.isNull());
    surface->click({250, 250});
}

TEST(GestureTest, AFingerDoesWhatTheMouseDoes) {
    Surface surface;
    std::vector<State> panStates;
    std::vector<State> tapStates;
    surface.add<UIPanGestureRecognizer>(panStates);
    surface.add<UITapGestureRecognizer>(tapStates);
    const QSignalSpy clicked(surface.button, &QPushButton::clicked);
    const std::unique_ptr<QPointingDevice> screen(QTest::createTouchDevice());
    const auto touch = [&surface, &screen] { return QTest::touchEvent(&surface.view, screen.get()); };
    touch().press(0, QPoint(200, 200), &surface.view);
    touch().release(0, QPoint(200, 200), &surface.view);
    EXPECT_EQ(tapStates, std::vector{State::Ended});

    touch().press(0, QPoint(20, 50), &surface.view);
    touch().move(0, QPoint(60, 50), &surface.view);
    touch().release(0, QPoint(60, 50), &surface.view);
    EXPECT_EQ(panStates, (std::vector{State::Began, State::Ended}));
    EXPECT_EQ(clicked.count(), 0);
    EXPECT_FALSE(surface.button->isDown());

    touch().press(0, QPoint(50, 50), &surface.view);
    touch().release(0, QPoint(50, 50), &surface.view);
    EXPECT_EQ(clicked.count(), 1);
    EXPECT_EQ(tapStates.size(), 1U);
}

} // namespace
} // namespace exifcard

#include "platform/uikit/UINavigationController.h"

#include "platform/uikit/RecordingScreen.h"
#include "platform/uikit/UITraitCollection.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>
#include <QTest>

namespace exifcard {
namespace {

using Record = RecordingScreen::Record;

/// A stack of one screen, on screen.
struct Stack {
    Record record;
    std::shared_ptr<RecordingScreen> root = std::make_shared<RecordingScreen>("root", record);
    std::shared_ptr<RecordingScreen> next = std::make_shared<RecordingScreen>("next", record);
    std::shared_ptr<UINavigationController> stack = std::make_shared<UINavigationController>(root);

    Stack() {
        root->setTitle("Albums");
        stack->beginAppearanceTransition(/*isAppearing=*/true, /*animated=*/false);
        stack->view().resize(320, 240);
        stack->view().show();
        stack->endAppearanceTransition();
        next->setTitle("Holidays");
    }

    QAbstractButton* backButton() const {
        for (auto* const button : stack->view().findChildren<QAbstractButton*>()) {
            if (button->accessibleName() == QStringLiteral("Back") && button->isVisible()) {
                return button;
            }
        }
        return nullptr;
    }
    QString shownTitle() const { return stack->view().findChild<QLabel*>()->text(); }
};

TEST(UINavigationControllerTest, ShowsItsLowestScreenBelowTheBar) {
    const Stack scene;
    EXPECT_TRUE(scene.root->isViewInWindow());
    EXPECT_EQ(scene.root->view().geometry(), QRect(0, 44, 320, 196));
    EXPECT_EQ(scene.shownTitle(), QStringLiteral("Albums"));
    EXPECT_EQ(scene.backButton(), nullptr);
    EXPECT_EQ(scene.root->navigationController(), scene.stack);
    scene.stack->setNavigationBarHidden(true);
    EXPECT_EQ(scene.root->view().geometry(), QRect(0, 0, 320, 240));
}

TEST(UINavigationControllerTest, PushAndPopCallBackInThePlatformsOrder) {
    Stack scene;
    scene.record.clear();
    scene.stack->pushViewController(scene.next, /*animated=*/false);
    EXPECT_EQ(takeWithoutLayout(scene.record),
        (Record{"next willMoveToParent", "next viewDidLoad", "root viewWillDisappear", "next viewWillAppear",
            "root viewDidDisappear", "next viewDidAppear", "next didMoveToParent"}));
    EXPECT_EQ(scene.next->view().geometry(), QRect(0, 44, 320, 196));
    EXPECT_EQ(scene.shownTitle(), QStringLiteral("Holidays"));

    EXPECT_EQ(scene.stack->popViewControllerAnimated(/*animated=*/false), scene.next);
    EXPECT_EQ(takeWithoutLayout(scene.record),
        (Record{"next willMoveToNoParent", "next viewWillDisappear", "root viewWillAppear",
            "next viewDidDisappear", "root viewDidAppear", "next didMoveToNoParent"}));
    EXPECT_EQ(scene.stack->popViewControllerAnimated(/*animated=*/false), nullptr);
}

TEST(UINavigationControllerTest, AnAnimatedPushAppearsAtItsEnd) {
    for (const bool isMotionReduced : {false, true}) {
        SCOPED_TRACE(isMotionReduced);
        UITraitCollection traits;
        traits.isMotionReduced = isMotionReduced;
        UITraitCollection::setCurrentTraitCollection(traits);
        Stack scene;
        scene.stack->pushViewController(scene.next, /*animated=*/true);
        EXPECT_FALSE(scene.next->isViewInWindow());
        EXPECT_TRUE(QTest::qWaitFor([&] { return scene.next->isViewInWindow(); }, 3000));
        EXPECT_FALSE(scene.root->view().isVisible());
    }
    UITraitCollection::setCurrentTraitCollection({});
}

TEST(UINavigationControllerTest, OneMovementEndsTheOneBefore) {
    Stack scene;
    scene.stack->pushViewController(scene.next, /*animated=*/true);
    scene.record.clear();
    EXPECT_EQ(scene.stack->popViewControllerAnimated(/*animated=*/true), scene.next);
    EXPECT_EQ(takeWithoutLayout(scene.record),
        (Record{"root viewDidDisappear", "next viewDidAppear", "next didMoveToParent",
            "next willMoveToNoParent", "next viewWillDisappear", "root viewWillAppear"}));
    EXPECT_TRUE(QTest::qWaitFor([&] { return scene.root->isViewInWindow(); }, 3000));
}

TEST(UINavigationControllerTest, PopsSeveralScreensAndAnswersThemFromTheBottom) {
    Stack scene;
    const auto top = std::make_shared<RecordingScreen>("top", scene.record);
    scene.stack->pushViewController(scene.next, /*animated=*/false);
    scene.stack->pushViewController(top, /*animated=*/false);
    EXPECT_TRUE(scene.stack->popToViewController(top, /*animated=*/false).empty());
    const auto stranger = std::make_shared<UIViewController>();
    EXPECT_TRUE(scene.stack->popToViewController(stranger, /*animated=*/false).empty());
    const auto popped = scene.stack->popToViewController(scene.root, /*animated=*/false);
    EXPECT_EQ(popped, (std::vector<std::shared_ptr<UIViewController>>{scene.next, top}));
    EXPECT_EQ(scene.stack->topViewController(), scene.root);
    EXPECT_EQ(scene.stack->childViewControllers().size(), 1U);
    EXPECT_TRUE(scene.root->isViewInWindow());
}

TEST(UINavigationControllerTest, GoesBackByItsButtonUnlessTheScreenHasOneOfItsOwn) {
    Stack scene;
    scene.stack->pushViewController(scene.next, /*animated=*/false);
    ASSERT_NE(scene.backButton(), nullptr);
    auto own = std::make_unique<QPushButton>();
    scene.next->navigationItem().setLeftBarButton(std::move(own));
    EXPECT_EQ(scene.backButton(), nullptr);
    EXPECT_TRUE(scene.next->navigationItem().leftBarButton()->isVisible());
    scene.next->navigationItem().setLeftBarButton(nullptr);
    ASSERT_NE(scene.backButton(), nullptr);
    scene.backButton()->click();
    EXPECT_EQ(scene.stack->topViewController(), scene.root);
}

TEST(UINavigationControllerTest, GoesBackByEscapeAndLeavesItAloneOnTheLowestScreen) {
    Stack scene;
    scene.stack->pushViewController(scene.next, /*animated=*/false);
    const auto isEscapeTaken = [](QWidget& top) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QCoreApplication::sendEvent(&top, &press);
        return press.isAccepted();
    };
    EXPECT_TRUE(isEscapeTaken(scene.next->view()));
    EXPECT_EQ(scene.stack->topViewController(), scene.root);
    EXPECT_FALSE(isEscapeTaken(scene.root->view()));
}

TEST(UINavigationControllerTest, MirrorsItsBarWhereTheLanguageRunsFromTheRight) {
    UITraitCollection traits;
    traits.isRightToLeft = true;
    UITraitCollection::setCurrentTraitCollection(traits);
    {
        const Stack scene;
        scene.stack->pushViewController(scene.next, /*animated=*/false);
        EXPECT_GT(scene.backButton()->x(), 320 / 2);
    }
    UITraitCollection::setCurrentTraitCollection({});
    const Stack scene;
    scene.stack->pushViewController(scene.next, /*animated=*/false);
    EXPECT_LT(scene.backButton()->x(), 320 / 2);
}

TEST(UINavigationControllerTest, CutsALongTitleAndShowsItWholeInTheTooltip) {
    const Stack scene;
    const std::string title(200, 'W');
    scene.root->setTitle(title);
    EXPECT_LT(scene.shownTitle().size(), 50);
    EXPECT_EQ(scene.stack->view().findChild<QLabel*>()->toolTip().toStdString(), title);
}

} // namespace
} // namespace exifcard

#include "platform/uikit/UICollectionView.h"

#include "ListFixture.h"
#include "platform/foundation/PlatformException.h"
#include "platform/uikit/GestureRecognizers.h"
#include "platform/uikit/UITraitCollection.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace exifcard {
namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

/// A source whose items have names.
class NamedSource : public RecordingSource {
public:
    std::vector<std::string> models;

    std::optional<std::string> modelIdentifierForElementAtIndexPath(IndexPath indexPath) const override {
        return indexPath.item < models.size() ? std::optional(models[indexPath.item]) : std::nullopt;
    }
    std::optional<IndexPath> indexPathForElementWithModelIdentifier(
        const std::string& identifier) const override {
        const auto found = std::ranges::find(models, identifier);
        return found == models.end()
                   ? std::nullopt
                   : std::optional(IndexPath{0, static_cast<std::size_t>(found - models.begin())});
    }
};

class UICollectionViewTest : public ListFixture {
protected:
    /// Turns of the main queue until the condition holds; at most five seconds of them.
    static bool comesTrue(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, 5000); }
    void scrollTo(double y) { list.setContentOffset({0, y}, /*animated=*/false); }
    /// Turns of the main queue until nothing is left to prepare.
    void settle() {
        for (int turn = 0; turn < 20; ++turn) {
            QCoreApplication::processEvents();
        }
    }
};

TEST_F(UICollectionViewTest, AsksTellsAndShowsInOrder) {
    showRows(100);
    EXPECT_THAT(
        source->takeRecord(), ElementsAre("cell 0/0", "willDisplay 0/0", "cell 0/1", "willDisplay 0/1",
                                  "cell 0/2", "willDisplay 0/2", "cell 0/3", "willDisplay 0/3", "cell 0/4",
                                  "willDisplay 0/4", "cell 0/5", "willDisplay 0/5"));
    EXPECT_EQ(list.visibleCells().size(), 6U);
    EXPECT_EQ(list.cellForItemAtIndexPath({0, 6}), nullptr);
    scrollTo(1000); // Beyond all that was seen.
    const auto record = source->takeRecord();
    EXPECT_EQ(record.front(), "didEnd 0/0");
    EXPECT_EQ(record.back(), "willDisplay 0/15");
    EXPECT_EQ(source->cellsMade, 6U) << "all six cells are used again";
    EXPECT_EQ(list.cellForItemAtIndexPath({0, 10})->geometry().top(), 0);
}

TEST_F(UICollectionViewTest, TellsACellItsSizesBeforeItIsSeen) {
    list.registerClass("cell", [] {
        auto cell = std::make_unique<UICollectionViewCell>();
        auto* const layout = new QVBoxLayout(cell.get());
        layout->setContentsMargins(10, 10, 10, 10);
        layout->addWidget(new UIView);
        return cell;
    });
    std::vector<CGSize> inner;
    source->onDisplay = [&inner](UICollectionViewCell& cell) {
        inner.push_back(cell.findChild<UIView*>()->bounds().size);
    };
    showRows(3);
    EXPECT_THAT(inner, ElementsAre(CGSize{280, 80}, CGSize{280, 80}, CGSize{280, 80}));
}

TEST_F(UICollectionViewTest, MakesCellsAheadAndTellsOfThemWhenTheyAreSeen) {
    showRows(100);
    settle();
    auto record = source->takeRecord();
    EXPECT_THAT(record, Contains("cell 0/6"));
    EXPECT_THAT(record, testing::Not(Contains("willDisplay 0/6")));
    EXPECT_EQ(list.cellForItemAtIndexPath({0, 6}), nullptr);
    scrollTo(50);
    EXPECT_THAT(source->takeRecord(), ElementsAre("willDisplay 0/6"));
    scrollTo(150); // The first row is passed, but not far.
    EXPECT_THAT(source->takeRecord("didEnd"), ElementsAre("didEnd 0/0"));
    scrollTo(50);
    EXPECT_THAT(source->takeRecord("willDisplay"), ElementsAre("willDisplay 0/0"));
}

TEST_F(UICollectionViewTest, TellsWhatComesUpAndTakesItBackWhenTheDirectionChanges) {
    showRows(100);
    settle();
    const auto told = source->takeRecord("prefetch");
    EXPECT_EQ(told.front(), "prefetch 0/6");
    EXPECT_EQ(told.back(), "prefetch 0/11");
    scrollTo(200);
    settle();
    EXPECT_THAT(source->takeRecord("prefetch"), ElementsAre("prefetch 0/12", "prefetch 0/13"));
    scrollTo(150);
    settle();
    const auto cancelled = source->takeRecord("cancel");
    EXPECT_EQ(cancelled.front(), "cancel 0/8");
    EXPECT_EQ(cancelled.back(), "cancel 0/13");
}

TEST_F(UICollectionViewTest, UsesItsCellsAgainThroughTwoThousandRows) {
    showRows(2000);
    for (double y = 0; y < 2000 * 100 - 600; y += 37) {
        scrollTo(y);
        ASSERT_LE(list.visibleCells().size(), 7U);
        ASSERT_GE(list.visibleCells().size(), 6U);
    }
    EXPECT_LE(source->cellsMade, 10U);
    EXPECT_EQ(list.indexPathsForVisibleItems().back(), (IndexPath{0, 1999}));
}

TEST_F(UICollectionViewTest, TakesBackWhatItToldAheadWhenItReloads) {
    showRows(100);
    settle();
    const auto told = source->takeRecord("prefetch");
    ASSERT_EQ(told.size(), 6U);
    list.reloadData();
    list.layoutIfNeeded();
    const auto cancelled = source->takeRecord("cancel");
    ASSERT_EQ(cancelled.size(), 6U);
    EXPECT_EQ(cancelled.front(), "cancel 0/6");
    settle();
    EXPECT_EQ(source->takeRecord("prefetch"), told);
}

TEST_F(UICollectionViewTest, KeepsItsCellsWhenItIsGivenTheSameDataSourceAgain) {
    showRows(10);
    source->takeRecord();
    list.setDataSource(source);
    list.layoutIfNeeded();
    EXPECT_THAT(source->takeRecord("cell"), IsEmpty());
    const auto other = std::make_shared<RecordingSource>();
    list.setDataSource(other);
    list.layoutIfNeeded();
    EXPECT_THAT(list.visibleCells(), IsEmpty());
}

TEST_F(UICollectionViewTest, SizesItsItemsAnewWhenItsHeightAloneTurnsItAround) {
    source->sizeOfItem = [this](IndexPath) {
        return CGSize{list.width() < list.height() ? 300.0 : 150.0, 100};
    };
    showRows(4);
    EXPECT_EQ(frameOfItem(1).size.width, 300);
    list.resize(375, 200);
    list.layoutIfNeeded();
    EXPECT_EQ(frameOfItem(1).size.width, 150);
}

TEST_F(UICollectionViewTest, SendsATapToWhatWasPressedWhereverAReloadMovesIt) {
    const auto named = std::make_shared<NamedSource>();
    source = named;
    list.setDataSource(named);
    list.setDelegate(named);
    named->models = {"a", "b", "c"};
    showRows(3);
    const QPoint place = middleOf(1);
    const auto pressAndReloadWith = [&](std::vector<std::string> models) {
        QTest::mousePress(list.viewport(), Qt::LeftButton, {}, place);
        source->counts = {models.size()};
        named->models = std::move(models);
        list.reloadData();
        list.layoutIfNeeded();
    };
    pressAndReloadWith({"b", "c"});
    EXPECT_TRUE(list.cellForItemAtIndexPath({0, 0})->highlighted());
    QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, place);
    EXPECT_THAT(source->takeRecord("didSelect"), ElementsAre("didSelect 0/0"));
    EXPECT_FALSE(list.cellForItemAtIndexPath({0, 0})->highlighted());
    pressAndReloadWith({"a", "b"}); // Without the pressed one.
    QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, place);
    EXPECT_THAT(source->takeRecord("didSelect"), IsEmpty());
}

TEST_F(UICollectionViewTest, ReloadsOnceInTheNextPassAndDropsTheSelection) {
    showRows(10);
    list.selectItemAtIndexPath({0, 1}, false, UICollectionViewScrollPosition::None);
    source->takeRecord();
    source->counts = {3};
    list.reloadData();
    list.reloadData();
    EXPECT_THAT(source->takeRecord(), IsEmpty());
    EXPECT_EQ(list.numberOfItemsInSection(0), 10U);
    EXPECT_THAT(list.indexPathsForSelectedItems(), IsEmpty());
    QCoreApplication::processEvents();
    EXPECT_EQ(list.numberOfItemsInSection(0), 3U);
    EXPECT_THAT(source->takeRecord("cell"), ElementsAre("cell 0/0", "cell 0/1", "cell 0/2"));
    EXPECT_FALSE(list.cellForItemAtIndexPath({0, 1})->selected());
    EXPECT_EQ(source->cellsMade, 6U) << "the cells that were seen are used again";
}

TEST_F(UICollectionViewTest, MakesItemsThatHaveComeOnceWhenTheyAreReloaded) {
    showRows(2);
    source->takeRecord();
    source->counts = {10};
    scrollTo(0);
    list.layoutIfNeeded();
    EXPECT_EQ(list.numberOfItemsInSection(0), 2U);
    EXPECT_THAT(source->takeRecord("cell"), IsEmpty());
    list.reloadData();
    settle();
    EXPECT_EQ(list.numberOfItemsInSection(0), 10U);
    EXPECT_THAT(source->takeRecord("cell").front(), "cell 0/0");
}

TEST_F(UICollectionViewTest, StaysWithinContentThatShrinks) {
    showRows(100);
    scrollTo(5000);
    source->counts = {8};
    list.reloadData();
    list.layoutIfNeeded();
    EXPECT_EQ(list.contentOffset().y, 200);
    EXPECT_EQ(list.indexPathsForVisibleItems().back(), (IndexPath{0, 7}));
}

TEST_F(UICollectionViewTest, SurvivesADataSourceThatShrinksWithoutAWord) {
    showRows(100);
    scrollTo(5000);
    source->counts = {20};
    scrollTo(5100);
    EXPECT_EQ(list.numberOfItemsInSection(0), 20U);
    source->onCell = [this](IndexPath) { source->counts = {7}; }; // In the middle of a pass.
    scrollTo(0);
    settle();
    EXPECT_EQ(list.numberOfItemsInSection(0), 7U);
    source->counts = {};
    settle();
    list.layoutIfNeeded();
    EXPECT_THAT(list.visibleCells(), IsEmpty());
}

TEST_F(UICollectionViewTest, ReloadsWhileItScrolls) {
    showRows(1000);
    source->onScroll = [this] {
        source->counts = {list.contentOffset().y > 500 ? 900U : 950U};
        list.reloadData();
    };
    for (int step = 1; step < 40; ++step) {
        scrollTo(step * 50);
        QCoreApplication::processEvents();
        ASSERT_EQ(list.visibleCells().size(), step % 2 == 0 ? 6U : 7U);
    }
}

TEST_F(UICollectionViewTest, IsEmptyWithoutItsDataSource) {
    showRows(100);
    source.reset();
    scrollTo(120);
    EXPECT_THAT(list.visibleCells(), IsEmpty());
    EXPECT_EQ(list.numberOfSections(), 0U);
}

TEST_F(UICollectionViewTest, RefusesAnIdentifierThatIsNotRegistered) {
    EXPECT_THROW(list.dequeueReusableCellWithReuseIdentifier("other", {0, 0}), PlatformException);
}

TEST_F(UICollectionViewTest, SelectsOneAtATimeByDefault) {
    showRows(10);
    source->takeRecord();
    tap(1);
    tap(2);
    tap(2);
    EXPECT_THAT(
        source->takeRecord(), ElementsAre("shouldSelect 0/1", "didSelect 0/1", "shouldSelect 0/2",
                                  "didDeselect 0/1", "didSelect 0/2", "shouldSelect 0/2", "didSelect 0/2"));
    EXPECT_FALSE(list.cellForItemAtIndexPath({0, 1})->selected());
    EXPECT_TRUE(list.cellForItemAtIndexPath({0, 2})->selected());
    source->isSelectionAllowed = false;
    tap(3);
    EXPECT_THAT(list.indexPathsForSelectedItems(), ElementsAre(IndexPath{0, 2}));
}

TEST_F(UICollectionViewTest, SelectsAndDeselectsSeveral) {
    showRows(10);
    list.setAllowsMultipleSelection(true);
    source->takeRecord();
    list.selectItemAtIndexPath({0, 4}, false, UICollectionViewScrollPosition::None);
    EXPECT_THAT(source->takeRecord(), IsEmpty()) << "by code, without the delegate";
    tap(1);
    tap(4);
    EXPECT_THAT(source->takeRecord(),
        ElementsAre("shouldSelect 0/1", "didSelect 0/1", "shouldDeselect 0/4", "didDeselect 0/4"));
    EXPECT_THAT(list.indexPathsForSelectedItems(), ElementsAre(IndexPath{0, 1}));
    scrollTo(400);
    scrollTo(0);
    EXPECT_TRUE(list.cellForItemAtIndexPath({0, 1})->selected());
}

TEST_F(UICollectionViewTest, ShowsAPressAndTakesOnlyTapsOfTheLeftButton) {
    showRows(10);
    source->takeRecord();
    QWidget* const viewport = list.viewport();
    UICollectionViewCell& cell = *list.cellForItemAtIndexPath({0, 1});
    QTest::mousePress(viewport, Qt::LeftButton, {}, middleOf(1));
    EXPECT_TRUE(cell.highlighted());
    QTest::mouseMove(viewport, middleOf(1) + QPoint(0, 40));
    EXPECT_FALSE(cell.highlighted());
    QTest::mouseRelease(viewport, Qt::LeftButton, {}, middleOf(1) + QPoint(0, 40));
    QTest::mouseClick(viewport, Qt::RightButton, {}, middleOf(1));
    QTest::mouseClick(viewport, Qt::MiddleButton, {}, middleOf(1));
    list.setUserInteractionEnabled(false);
    tap(2);
    EXPECT_THAT(source->takeRecord(), IsEmpty());
}

TEST_F(UICollectionViewTest, MovesTheFocusedItemByKeys) {
    layout().itemSize = {121, 133};
    layout().sectionInset = {4, 4, 4, 4};
    layout().minimumInteritemSpacing = layout().minimumLineSpacing = 2;
    source->counts = {50, 2};
    list.show();
    list.setFocus();
    EXPECT_EQ(list.focusedIndexPath(), std::nullopt);
    struct Step {
        Qt::Key key;
        IndexPath item;
    };
    const Step steps[] = {
        {Qt::Key_Down, {0, 0}}, // The first key finds the first item.
        {Qt::Key_Down, {0, 3}},
        {Qt::Key_Right, {0, 4}},
        {Qt::Key_Up, {0, 1}},
        {Qt::Key_Up, {0, 1}},
        {Qt::Key_Left, {0, 0}},
        {Qt::Key_Left, {0, 0}},
        {Qt::Key_PageDown, {0, 9}},
        {Qt::Key_PageUp, {0, 0}},
        {Qt::Key_End, {1, 1}},
        {Qt::Key_Up, {0, 49}},
        {Qt::Key_Up, {0, 46}},
        {Qt::Key_Down, {0, 49}},
        {Qt::Key_Right, {1, 0}},
        {Qt::Key_Home, {0, 0}},
    };
    for (const Step& step : steps) {
        QTest::keyClick(&list, step.key);
        ASSERT_EQ(list.focusedIndexPath(), step.item) << "after key " << step.key;
        const CGRect frame = frameOfItem(step.item.item, step.item.section);
        EXPECT_GE(frame.origin.y, list.contentOffset().y);
        EXPECT_LE(frame.origin.y + frame.size.height, list.contentOffset().y + 600);
    }
    source->takeRecord();
    QTest::keyClick(&list, Qt::Key_Return);
    QTest::keyClick(&list, Qt::Key_Space);
    EXPECT_THAT(source->takeRecord("didSelect"), ElementsAre("didSelect 0/0", "didSelect 0/0"));
    list.setLayoutDirection(Qt::RightToLeft);
    QTest::keyClick(&list, Qt::Key_Left);
    EXPECT_EQ(list.focusedIndexPath(), (IndexPath{0, 1}));
}

TEST_F(UICollectionViewTest, LetsTabLeaveTheList) {
    QWidget window;
    QVBoxLayout rows(&window);
    rows.addWidget(&list);
    QLineEdit after;
    rows.addWidget(&after);
    showRows(10);
    new QLineEdit(list.cellForItemAtIndexPath({0, 0}));
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_Tab);
    EXPECT_TRUE(after.hasFocus());
    list.setParent(nullptr);
    after.setParent(nullptr);
}

TEST_F(UICollectionViewTest, ScrollsByWheelWithinItsContent) {
    showRows(10);
    const auto turn = [this](int notches) {
        QWheelEvent event({100, 100}, list.viewport()->mapToGlobal(QPointF(100, 100)), {}, {0, notches * 120},
            {}, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(list.viewport(), &event);
        return event.isAccepted();
    };
    EXPECT_FALSE(turn(1)) << "already at the top";
    EXPECT_TRUE(turn(-2));
    EXPECT_EQ(list.contentOffset().y, 120);
    EXPECT_TRUE(turn(-20));
    EXPECT_EQ(list.contentOffset().y, 400);
    list.setScrollEnabled(false);
    EXPECT_FALSE(turn(2));
    EXPECT_EQ(list.contentOffset().y, 400);
}

TEST_F(UICollectionViewTest, AnimatesItsOffsetUnlessMotionIsReduced) {
    showRows(100);
    list.setContentOffset({0, 1000}, /*animated=*/true);
    EXPECT_EQ(list.contentOffset().y, 0);
    EXPECT_TRUE(comesTrue([this] { return list.contentOffset().y == 1000; }));
    UITraitCollection traits;
    traits.isMotionReduced = true;
    UITraitCollection::setCurrentTraitCollection(traits);
    list.setContentOffset({0, 200}, /*animated=*/true);
    EXPECT_EQ(list.contentOffset().y, 200);
    UITraitCollection::setCurrentTraitCollection({});
}

TEST_F(UICollectionViewTest, RepaintsForAnotherAppearanceWithoutMakingCellsAnew) {
    showRows(100);
    settle();
    source->takeRecord();
    const auto edge = [this] { return list.grab().toImage().pixelColor(2, 2); };
    EXPECT_EQ(edge(), QColor(Qt::white));
    UITraitCollection traits;
    traits.userInterfaceStyle = UIUserInterfaceStyle::Dark;
    UITraitCollection::setCurrentTraitCollection(traits);
    settle();
    EXPECT_EQ(edge(), QColor(Qt::black));
    EXPECT_THAT(source->takeRecord(), IsEmpty());
    UITraitCollection::setCurrentTraitCollection({});
}

TEST_F(UICollectionViewTest, LetsGesturesGoOnWhileTheyKeepTheListStill) {
    showRows(10);
    auto pan = std::make_unique<UIPanGestureRecognizer>();
    std::vector<UIGestureRecognizerState> states;
    pan->addTarget([&](UIGestureRecognizer& recognizer) {
        states.push_back(recognizer.state());
        list.setUserInteractionEnabled(recognizer.state() == UIGestureRecognizerState::Ended);
    });
    addGestureRecognizer(list, std::move(pan));
    source->takeRecord();
    const QPoint start = middleOf(2);
    QTest::mousePress(list.viewport(), Qt::LeftButton, {}, start);
    for (int step = 1; step <= 4; ++step) {
        QTest::mouseMove(list.viewport(), start + QPoint(20 * step, 0));
    }
    QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, start + QPoint(80, 0));
    EXPECT_THAT(states, Contains(UIGestureRecognizerState::Changed));
    EXPECT_EQ(states.back(), UIGestureRecognizerState::Ended);
    EXPECT_THAT(source->takeRecord("shouldSelect"), IsEmpty());
    tap(2);
    EXPECT_THAT(source->takeRecord("didSelect"), ElementsAre("didSelect 0/2"));
}

TEST_F(UICollectionViewTest, ShowsItsCellsAloneToReaders) {
    showRows(100);
    scrollTo(250);
    QAccessibleInterface* const interface = QAccessible::queryAccessibleInterface(&list);
    ASSERT_NE(interface, nullptr);
    EXPECT_EQ(interface->role(), QAccessible::List);
    ASSERT_EQ(interface->childCount(), 7);
    EXPECT_EQ(interface->child(0)->role(), QAccessible::ListItem);
    EXPECT_EQ(interface->child(0)->object(), list.cellForItemAtIndexPath({0, 2}));
    EXPECT_EQ(interface->child(0)->parent(), interface);
    list.selectItemAtIndexPath({0, 3}, false, UICollectionViewScrollPosition::None);
    EXPECT_TRUE(interface->child(1)->state().selected);
    EXPECT_FALSE(interface->child(0)->state().selected);
}

TEST_F(UICollectionViewTest, ShowsReadersWhatLiesOverAnEmptyList) {
    auto* const text = new QLabel(QStringLiteral("No photos yet"), &list);
    auto* const hidden = new QLabel(QStringLiteral("Not now"), &list);
    hidden->hide();
    showRows(0);
    QAccessibleInterface* const interface = QAccessible::queryAccessibleInterface(&list);
    ASSERT_EQ(interface->childCount(), 1);
    EXPECT_EQ(interface->child(0)->object(), text);
    EXPECT_EQ(interface->indexOfChild(interface->child(0)), 0);
}

TEST_F(UICollectionViewTest, LetsReadersPressAnItem) {
    showRows(100);
    scrollTo(250);
    QAccessibleActionInterface* const actions =
        QAccessible::queryAccessibleInterface(list.cellForItemAtIndexPath({0, 2}))->actionInterface();
    ASSERT_TRUE(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
    actions->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_THAT(source->record, Contains("didSelect 0/2"));
}

} // namespace
} // namespace exifcard

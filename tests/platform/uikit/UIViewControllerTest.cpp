#include "platform/foundation/DispatchQueue.h"
#include "platform/messages/MSConversation.h"
#include "platform/uikit/MSMessagesAppViewController.h"
#include "platform/uikit/RecordingScreen.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIStoryboard.h"
#include "platform/uikit/UITraitCollection.h"
#include "platform/uikit/UIView.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEvent>
#include <QPointer>

namespace exifcard {
namespace {

using Record = RecordingScreen::Record;

void appear(UIViewController& screen) {
    screen.beginAppearanceTransition(/*isAppearing=*/true, /*animated=*/false);
    screen.view().show();
    screen.endAppearanceTransition();
}

void disappear(UIViewController& screen) {
    screen.beginAppearanceTransition(/*isAppearing=*/false, /*animated=*/false);
    screen.endAppearanceTransition();
}

struct Family {
    Record record;
    std::shared_ptr<RecordingScreen> parent = std::make_shared<RecordingScreen>("parent", record);
    std::shared_ptr<RecordingScreen> child = std::make_shared<RecordingScreen>("child", record);

    void embed() const {
        parent->addChildViewController(child);
        child->view().setParent(&parent->view());
        child->didMoveToParentViewController(parent);
    }
};

TEST(UIViewControllerTest, CallsBackInThePlatformsOrder) {
    Record record;
    const auto screen = std::make_shared<RecordingScreen>("it", record);
    EXPECT_FALSE(screen->isViewLoaded());
    appear(*screen);
    disappear(*screen);
    EXPECT_EQ(record, (Record{"it viewDidLoad", "it viewWillAppear", "it updateViewConstraints",
                          "it viewWillLayoutSubviews", "it viewDidLayoutSubviews", "it viewDidAppear",
                          "it viewWillDisappear", "it viewDidDisappear"}));
}

TEST(UIViewControllerTest, LaysOutAgainWheneverItsViewOnScreenIsResized) {
    Record record;
    const auto screen = std::make_shared<RecordingScreen>("it", record);
    screen->view().resize(50, 50);
    appear(*screen);
    record.clear();
    screen->view().resize(60, 50);
    EXPECT_EQ(record,
        (Record{"it updateViewConstraints", "it viewWillLayoutSubviews", "it viewDidLayoutSubviews"}));
    disappear(*screen);
    record.clear();
    screen->view().resize(70, 50);
    EXPECT_EQ(record, Record{});
}

TEST(UIViewControllerTest, ToldTwiceItAppearsOnce) {
    Record record;
    const auto screen = std::make_shared<RecordingScreen>("it", record);
    appear(*screen);
    record.clear();
    appear(*screen);
    screen->endAppearanceTransition();
    EXPECT_EQ(record, Record{});
    EXPECT_TRUE(screen->isViewInWindow());
}

TEST(UIViewControllerTest, ChildrenAppearWithTheScreenTheyStandIn) {
    Family family;
    family.embed();
    EXPECT_EQ(family.record, (Record{"child willMoveToParent", "child viewDidLoad", "parent viewDidLoad",
                                 "child didMoveToParent"}));
    family.record.clear();
    appear(*family.parent);
    disappear(*family.parent);
    EXPECT_EQ(takeWithoutLayout(family.record),
        (Record{"parent viewWillAppear", "child viewWillAppear", "parent viewDidAppear",
            "child viewDidAppear", "parent viewWillDisappear", "child viewWillDisappear",
            "parent viewDidDisappear", "child viewDidDisappear"}));
}

TEST(UIViewControllerTest, AChildAddedToAScreenThatIsThereAppearsAtOnce) {
    Family family;
    appear(*family.parent);
    family.record.clear();
    family.embed();
    EXPECT_EQ(takeWithoutLayout(family.record),
        (Record{"child willMoveToParent", "child viewDidLoad", "child didMoveToParent",
            "child viewWillAppear", "child viewDidAppear"}));
    EXPECT_TRUE(family.child->view().isVisible());

    family.child->willMoveToParentViewController(nullptr);
    family.child->removeViewFromSuperview();
    family.child->removeFromParentViewController();
    EXPECT_EQ(takeWithoutLayout(family.record), (Record{"child willMoveToNoParent", "child viewWillDisappear",
                                                    "child viewDidDisappear", "child didMoveToNoParent"}));
    EXPECT_EQ(family.child->parentViewController(), nullptr);
    EXPECT_TRUE(family.parent->childViewControllers().empty());
}

TEST(UIViewControllerTest, AHiddenChildDoesNotAppear) {
    Family family;
    family.embed();
    family.child->view().hide();
    family.record.clear();
    appear(*family.parent);
    EXPECT_EQ(takeWithoutLayout(family.record), (Record{"parent viewWillAppear", "parent viewDidAppear"}));
}

TEST(UIViewControllerTest, OnlyLoadedScreensHearOfTraitsAndEachOnce) {
    Family family;
    family.embed();
    const auto unloaded = std::make_shared<RecordingScreen>("unloaded", family.record);
    family.parent->addChildViewController(unloaded);
    family.record.clear();
    UITraitCollection traits;
    traits.isMotionReduced = true;
    UITraitCollection::setCurrentTraitCollection(traits);
    UITraitCollection::setCurrentTraitCollection(traits);
    const Record once{"parent traitCollectionDidChange", "child traitCollectionDidChange"};
    EXPECT_EQ(family.record, once);
    UITraitCollection::setCurrentTraitCollection({});
}

TEST(UIViewControllerTest, EveryScreenHearsThatMemoryIsShort) {
    Family family;
    family.embed();
    family.record.clear();
    UIApplication::postMemoryWarning();
    EXPECT_EQ(family.record, (Record{"parent didReceiveMemoryWarning", "child didReceiveMemoryWarning"}));
}

TEST(UIViewControllerTest, ItsViewGoesWithIt) {
    Record record;
    auto screen = std::make_shared<RecordingScreen>("it", record);
    UIView superview;
    const QPointer<QWidget> view = &screen->view();
    view->setParent(&superview);
    screen.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(view.isNull());
}

TEST(UIStoryboardTest, MakesANewScreenForEveryCallAndNoneForAnUnknownScene) {
    Record record;
    UIStoryboard::registerScene(
        "Details", "Viewer", [&record] { return std::make_shared<RecordingScreen>("it", record); });
    const auto storyboard = UIStoryboard::storyboardWithName("Details");
    const auto first = storyboard.instantiateViewControllerWithIdentifier("Viewer");
    EXPECT_NE(first, nullptr);
    EXPECT_NE(first, storyboard.instantiateViewControllerWithIdentifier("Viewer"));
    EXPECT_EQ(storyboard.instantiateViewControllerWithIdentifier("Other"), nullptr);
    EXPECT_EQ(
        UIStoryboard::storyboardWithName("Other").instantiateViewControllerWithIdentifier("Viewer"), nullptr);
    UIStoryboard::registerScene("Details", "Viewer", {});
    EXPECT_EQ(storyboard.instantiateViewControllerWithIdentifier("Viewer"), nullptr);
}

using Style = MSMessagesAppPresentationStyle;

class RecordingHost : public MSMessagesAppHost {
public:
    void presentationStyleRequested(Style presentationStyle) override {
        requested.push_back(presentationStyle);
    }
    std::vector<Style> requested;
};

class RecordingExtension : public MSMessagesAppViewController {
public:
    void willTransitionToPresentationStyle(Style) override { styles.push_back(presentationStyle()); }
    void didTransitionToPresentationStyle(Style) override { styles.push_back(presentationStyle()); }
    void willBecomeActiveWithConversation(const std::shared_ptr<MSConversation>&) override { noteActive(); }
    void didResignActiveWithConversation(const std::shared_ptr<MSConversation>&) override { noteActive(); }

    std::vector<Style> styles;
    std::vector<bool> hadConversation;

private:
    void noteActive() { hadConversation.push_back(activeConversation() != nullptr && isViewLoaded()); }
};

TEST(MSMessagesAppViewControllerTest, ItsStyleIsTheOldOneUntilTheTransitionEnds) {
    RecordingExtension extension;
    extension.becomeActive(nullptr, Style::Compact);
    extension.beginTransition(Style::Expanded);
    extension.finishTransition();
    EXPECT_EQ(extension.styles, (std::vector{Style::Compact, Style::Expanded}));
}

TEST(MSMessagesAppViewControllerTest, HasAConversationWhileItIsActiveAndInItsCallbacks) {
    RecordingExtension extension;
    const auto some = std::make_shared<MSConversation>("Ada", MSConversation::PictureEncoder());
    extension.becomeActive(some, Style::Compact);
    EXPECT_EQ(extension.activeConversation(), some);
    extension.resignActive();
    EXPECT_EQ(extension.hadConversation, (std::vector{true, true}));
    EXPECT_EQ(extension.activeConversation(), nullptr);
}

TEST(MSMessagesAppViewControllerTest, AsksTheHostLaterAndOnlyForAnotherStyle) {
    RecordingExtension extension;
    const auto host = std::make_shared<RecordingHost>();
    extension.setHost(host);
    extension.becomeActive(nullptr, Style::Compact);
    extension.requestPresentationStyle(Style::Compact);
    extension.requestPresentationStyle(Style::Transcript);
    extension.requestPresentationStyle(Style::Expanded);
    EXPECT_TRUE(host->requested.empty());
    MainRunLoop::drain();
    EXPECT_EQ(host->requested, std::vector{Style::Expanded});
}

} // namespace
} // namespace exifcard

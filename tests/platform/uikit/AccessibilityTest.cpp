#include "platform/uikit/Accessibility.h"

#include "platform/uikit/GestureRecognizers.h"
#include "platform/uikit/UICollectionReusableView.h"
#include "platform/uikit/UIView.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QLabel>
#include <QPushButton>

namespace exifcard {
namespace {

QAccessibleInterface& seen(QWidget& view) {
    return *QAccessible::queryAccessibleInterface(&view);
}

TEST(AccessibilityTest, AViewBecomesAnElementByItsLabel) {
    UIView view;
    EXPECT_FALSE(isAccessibilityElement(view));
    setAccessibilityLabel(view, QStringLiteral("DSC_0001.JPG"));
    setAccessibilityValue(view, QStringLiteral("favourite"));
    setAccessibilityHint(view, QStringLiteral("f/2.8, 1/250"));
    EXPECT_TRUE(isAccessibilityElement(view));
    EXPECT_EQ(seen(view).text(QAccessible::Name), QStringLiteral("DSC_0001.JPG"));
    EXPECT_EQ(seen(view).text(QAccessible::Value), QStringLiteral("favourite"));
    EXPECT_EQ(seen(view).text(QAccessible::Description), QStringLiteral("f/2.8, 1/250"));
    setIsAccessibilityElement(view, false);
    EXPECT_FALSE(isAccessibilityElement(view));
}

TEST(AccessibilityTest, TraitsGiveRoleAndState) {
    struct Case {
        UIAccessibilityTraits traits;
        QAccessible::Role role;
    };
    const Case cases[] = {
        {kUIAccessibilityTraitNone, QAccessible::StaticText},
        {kUIAccessibilityTraitButton, QAccessible::Button},
        {kUIAccessibilityTraitImage, QAccessible::Graphic},
        {kUIAccessibilityTraitImage | kUIAccessibilityTraitButton, QAccessible::Button},
        {kUIAccessibilityTraitStaticText, QAccessible::StaticText},
        {kUIAccessibilityTraitHeader, QAccessible::Heading},
    };
    UIView view;
    setAccessibilityLabel(view, QStringLiteral("label"));
    for (const Case& c : cases) {
        SCOPED_TRACE(c.traits);
        setAccessibilityTraits(view, c.traits);
        EXPECT_EQ(seen(view).role(), c.role);
        EXPECT_FALSE(seen(view).state().selected);
    }
    setAccessibilityTraits(view, kUIAccessibilityTraitSelected | kUIAccessibilityTraitNotEnabled);
    EXPECT_TRUE(seen(view).state().selected);
    EXPECT_TRUE(seen(view).state().disabled);
}

TEST(AccessibilityTest, AnElementHidesItsChildrenAndHiddenViewsAreNotFound) {
    UIView view;
    auto* const label = new QLabel(QStringLiteral("text"), &view);
    auto* const pooled = new UICollectionViewCell(&view);
    auto* const button = new QPushButton(&view);
    pooled->hide();
    EXPECT_EQ(seen(view).childCount(), 2);
    EXPECT_EQ(seen(view).child(0)->object(), label);
    EXPECT_EQ(seen(view).child(1)->object(), button);
    EXPECT_EQ(seen(view).child(2), nullptr);
    EXPECT_EQ(seen(view).child(-1), nullptr);
    EXPECT_EQ(seen(view).indexOfChild(&seen(*button)), 1);
    EXPECT_EQ(seen(view).indexOfChild(&seen(*pooled)), -1);
    setAccessibilityLabel(view, QStringLiteral("one element"));
    EXPECT_EQ(seen(view).childCount(), 0);
}

TEST(AccessibilityTest, ANamedViewThatIsNoElementIsAGroupOrADialog) {
    QWidget window;
    QWidget sheet(&window);
    QPushButton button(&sheet);
    setAccessibilityLabel(sheet, QStringLiteral("Where are your photos?"));
    EXPECT_EQ(seen(sheet).childCount(), 0);
    setIsAccessibilityElement(sheet, false);
    EXPECT_EQ(seen(sheet).childCount(), 1);
    EXPECT_EQ(seen(sheet).role(), QAccessible::Grouping);
    EXPECT_FALSE(seen(sheet).state().modal);
    setAccessibilityViewIsModal(sheet, true);
    EXPECT_EQ(seen(sheet).role(), QAccessible::Dialog);
    EXPECT_TRUE(seen(sheet).state().modal);
    EXPECT_EQ(seen(button).role(), QAccessible::Button) << "what the toolkit knows stays its own";
}

TEST(AccessibilityTest, ALabelIsReadAsItsTextUnlessItHasAnotherName) {
    QLabel label(QStringLiteral("12.5 M…"));
    EXPECT_EQ(seen(label).text(QAccessible::Name), QStringLiteral("12.5 M…"));
    setAccessibilityLabel(label, QStringLiteral("12.5 MB"));
    EXPECT_EQ(seen(label).text(QAccessible::Name), QStringLiteral("12.5 MB"));
}

TEST(AccessibilityTest, AWindowIsReadByItsTitle) {
    UIView window;
    window.setWindowTitle(QStringLiteral("Ada"));
    EXPECT_EQ(seen(window).text(QAccessible::Name), QStringLiteral("Ada"));
}

TEST(AccessibilityTest, ACellIsAnItemOfAListAndTellsWhetherItIsSelected) {
    UICollectionViewCell cell;
    setAccessibilityLabel(cell, QStringLiteral("DSC_0001.JPG"));
    EXPECT_EQ(seen(cell).role(), QAccessible::ListItem);
    EXPECT_FALSE(seen(cell).state().selected);
    cell.setSelected(true);
    EXPECT_TRUE(seen(cell).state().selected);
}

TEST(AccessibilityTest, AReaderPressesAViewThatIsAButton) {
    UIView view;
    view.resize(20, 20);
    view.show();
    int taps = 0;
    auto tap = std::make_unique<UITapGestureRecognizer>();
    tap->addTarget([&taps](UIGestureRecognizer&) { ++taps; });
    addGestureRecognizer(view, std::move(tap));
    setAccessibilityLabel(view, QStringLiteral("Play"));
    QAccessibleActionInterface* const actions = seen(view).actionInterface();
    EXPECT_FALSE(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
    setAccessibilityTraits(view, kUIAccessibilityTraitButton);
    EXPECT_TRUE(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
    actions->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(taps, 1);
}

TEST(AccessibilityTest, AnAnnouncementIsAnAlertWithTheLatestText) {
    UIView window;
    UIView inner(&window);
    announce(inner, QStringLiteral("First message"));
    announce(inner, QStringLiteral("Second message"));
    EXPECT_EQ(seen(window).childCount(), 2);
    QAccessibleInterface* const alert = seen(window).child(1);
    EXPECT_EQ(alert->role(), QAccessible::AlertMessage);
    EXPECT_EQ(alert->text(QAccessible::Name), QStringLiteral("Second message"));
}

} // namespace
} // namespace exifcard

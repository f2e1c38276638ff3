#include "platform/uikit/UIAppearance.h"

#include "platform/uikit/UICollectionView.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UITraitCollection.h"
#include "platform/uikit/UIView.h"

#include <gtest/gtest.h>

#include <QLabel>

namespace exifcard {
namespace {

const UIColor kRedOrBlue(RGBA{1, 0, 0, 1}, RGBA{0, 0, 1, 1});

class UIAppearanceTest : public ::testing::Test {
protected:
    ~UIAppearanceTest() override {
        installAppearanceDefaults({});
        UITraitCollection::setCurrentTraitCollection({});
    }
};

QColor textColorOf(const QLabel& label) {
    return label.palette().color(label.foregroundRole());
}

TEST_F(UIAppearanceTest, ListsMadeAfterwardsTakeTheirBackground) {
    installAppearanceDefaults({{"UICollectionView", "backgroundColor", UIColor::blackColor()},
        {"UICollectionView", "backgroundColor", kRedOrBlue}});
    const UICollectionView list;
    installAppearanceDefaults({});
    EXPECT_EQ(static_cast<UIView*>(list.viewport())->backgroundColor(), kRedOrBlue);
    const UICollectionView other;
    EXPECT_EQ(static_cast<UIView*>(other.viewport())->backgroundColor(),
        UIColor(RGBA{1, 1, 1, 1}, RGBA{0, 0, 0, 1}));
}

TEST_F(UIAppearanceTest, BarsMadeAfterwardsTakeTheirColoursAndFontAndFollowTheAppearance) {
    installAppearanceDefaults({{"UINavigationBar", "barTintColor", UIColor::darkGrayColor()},
        {"UINavigationBar", "titleTextAttributes.foregroundColor", kRedOrBlue},
        {"UINavigationBar", "titleTextAttributes.font", UIFont{"AvenirNext-Bold", 19}}});
    const auto stack = std::make_shared<UINavigationController>(std::make_shared<UIViewController>());
    const QLabel& title = *stack->view().findChild<QLabel*>();
    EXPECT_EQ(qobject_cast<UIView*>(title.parentWidget())->backgroundColor(), UIColor::darkGrayColor());
    EXPECT_EQ(title.font().pixelSize(), 19);
    EXPECT_EQ(title.font().weight(), QFont::Bold);
    EXPECT_EQ(textColorOf(title), QColor(Qt::red));
    UITraitCollection::setCurrentTraitCollection({.userInterfaceStyle = UIUserInterfaceStyle::Dark});
    EXPECT_EQ(textColorOf(title), QColor(Qt::blue));
}

TEST_F(UIAppearanceTest, LabelsTakeTheirTextColourFromThePalette) {
    installAppearanceDefaults({{"UILabel", "textColor", kRedOrBlue}});
    const QLabel label;
    EXPECT_EQ(textColorOf(label), QColor(Qt::red));
    UITraitCollection::setCurrentTraitCollection({.userInterfaceStyle = UIUserInterfaceStyle::Dark});
    EXPECT_EQ(textColorOf(label), QColor(Qt::blue));
}

} // namespace
} // namespace exifcard

#include "appearance/Apperance.h"
#include "appearance/UIColor+Hex.h"
#include "appearance/uikit/Apperance+Defaults.h"
#include "appearance/uikit/Apperance+Fonts.h"
#include "appearance/uikit/Apperance+Views.h"
#include "appearance/uikit/UIAppearance+Shadow.h"
#include "appearance/uikit/UITextField+Font.h"
#include "platform/uikit/NavigationBar.h"
#include "platform/uikit/UIAppearance.h"
#include "platform/uikit/UICollectionView.h"
#include "platform/uikit/UIColor+Qt.h"
#include "platform/uikit/UITraitCollection.h"
#include "platform/uikit/UIView.h"
#include "platform/uivalues/UIDevice.h"
#include "settings/PersistanceManager.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <QFontInfo>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>

namespace exifcard {
namespace {

class ApperanceViewsTest : public ::testing::Test {
protected:
    ApperanceViewsTest() { PersistanceManager::forgetSharedInstance(); }
    ~ApperanceViewsTest() override {
        setSystemVersion("13.0");
        UITraitCollection::setCurrentTraitCollection({});
        PersistanceManager::forgetSharedInstance();
    }

    static void setStyle(UIUserInterfaceStyle style) {
        UITraitCollection::setCurrentTraitCollection({.userInterfaceStyle = style});
    }

    const TemporaryHome home;
};

const UIColor kBlackOrWhite(RGBA{0, 0, 0, 1}, RGBA{1, 1, 1, 1});
const UIColor kWhiteOrBlack(RGBA{1, 1, 1, 1}, RGBA{0, 0, 0, 1});

TEST_F(ApperanceViewsTest, ViewsFollowTheAppearance) {
    UIView view;
    setAppearanceOnView(view, 0.67);
    EXPECT_EQ(view.backgroundColor(), kWhiteOrBlack.withAlpha(0.67));
    setAppearanceOnView(view);
    EXPECT_EQ(view.backgroundColor(), kWhiteOrBlack);

    QLabel label;
    QWidget control;
    setAppearanceTextColorOnLabel(label);
    setAppearanceTextColorOnLabel(label); // As cells do at each use.
    setAppearanceTintColorOnView(control);
    for (const auto style :
        {UIUserInterfaceStyle::Light, UIUserInterfaceStyle::Dark, UIUserInterfaceStyle::Light}) {
        setStyle(style);
        const QColor expected = style == UIUserInterfaceStyle::Dark ? Qt::white : Qt::black;
        EXPECT_EQ(label.palette().color(QPalette::WindowText), expected);
        EXPECT_EQ(label.palette().color(QPalette::Text), expected);
        EXPECT_EQ(control.palette().color(QPalette::ButtonText), expected);
    }
}

TEST_F(ApperanceViewsTest, AShadowIsCastByTheBoundsOfItsMoment) {
    CALayer layer;
    layer.bounds = {{0, 0}, {30, 40}};
    setShadowEffectForLayer(layer);
    layer.bounds = {{0, 0}, {300, 400}};
    EXPECT_EQ(layer.shadowPath, (CGRect{{0, 0}, {30, 40}}));
    EXPECT_EQ(layer.shadowOffset, (CGSize{0, 0}));
    EXPECT_EQ(layer.shadowRadius, 2);
    EXPECT_EQ(layer.shadowOpacity, 0.5);
    EXPECT_EQ(layer.shadowColor.resolved(UIUserInterfaceStyle::Light), (RGBA{0, 0, 0, 1}));
    EXPECT_EQ(layer.shadowColor.resolved(UIUserInterfaceStyle::Dark), UIColor::lightGrayColor().resolved({}));

    setSystemVersion("12.4");
    setShadowEffectForLayer(layer);
    EXPECT_EQ(layer.shadowColor, UIColor::blackColor());
    PersistanceManager::sharedInstance().setIsDarkModeOn(true);
    setShadowEffectForLayer(layer);
    const bool isDark = PersistanceManager::sharedInstance().isDarkModeOn();
    EXPECT_EQ(layer.shadowColor, isDark ? UIColor::lightGrayColor() : UIColor::blackColor());
}

TEST_F(ApperanceViewsTest, FontsScaleWithTheContentSizeUpToALimit) {
    const auto font = UIFont::fontWithName("AvenirNext-Medium", 13);
    EXPECT_EQ(scaledFontForBodyMetricsWithFont(std::nullopt), std::nullopt);
    EXPECT_EQ(scaledFontForCalloutMetricsWithFont(std::nullopt, 17), std::nullopt);
    EXPECT_EQ(scaledFontForBodyMetricsWithFont(font)->pointSize, 13);
    EXPECT_EQ(scaledFontForBodyMetricsWithFont(font, 12)->pointSize, 12);

    UITraitCollection traits;
    traits.preferredContentSizeCategory = UIContentSizeCategory::AccessibilityExtraExtraExtraLarge;
    UITraitCollection::setCurrentTraitCollection(traits);
    EXPECT_GT(scaledFontForBodyMetricsWithFont(font)->pointSize, 24);
    EXPECT_EQ(scaledFontForBodyMetricsWithFont(font, 20)->pointSize, 20);
    EXPECT_EQ(scaledFontForCalloutMetricsWithFont(font, 17)->pointSize, 17);

    auto& settings = PersistanceManager::sharedInstance();
    for (const bool isLight : {true, false}) {
        settings.setIsUsingLightFontOnExifDetailsScreen(isLight);
        const auto rows = fontStyleWithCurrentSettingsMaximumSize();
        const bool isRegular = settings.isUsingLightFontOnExifDetailsScreen();
        EXPECT_EQ(rows->fontName, isRegular ? "AvenirNext-Regular" : "AvenirNext-Medium");
        EXPECT_EQ(rows->pointSize, 24);
    }
}

TEST_F(ApperanceViewsTest, DefaultsAreSetInOrderAndTheLastOneStands) {
    updateAppApperance();
    std::vector<std::string> names;
    for (const AppearanceDefault& entry : appearanceDefaults()) {
        std::string name(entry.view);
        name += " ";
        name += entry.property;
        names.push_back(name);
    }
    EXPECT_EQ(names,
        (std::vector<std::string>{"UINavigationBar barTintColor", "UINavigationBar tintColor",
            "UINavigationBar backgroundColor", "UICollectionView backgroundColor",
            "UITableView backgroundColor", "UITableViewCell backgroundColor", "UILabel textColor",
            "UILabel in UIViewController textColor", "UILabel in UIButton textColor",
            "UISegmentedControl tintColor", "UISegmentedControl titleTextAttributes.selected.foregroundColor",
            "UISegmentedControl selectedSegmentTintColor", "UISegmentedControl selectedSegmentTintColor",
            "UINavigationBar titleTextAttributes.foregroundColor", "UINavigationBar titleTextAttributes.font",
            "UIBarButtonItem backButtonTitlePositionAdjustment"}));
    EXPECT_EQ(defaultColor("UILabel in UIButton", "textColor"), kWhiteOrBlack);
    EXPECT_EQ(defaultColor("UINavigationBar", "tintColor"), kBlackOrWhite);
    EXPECT_EQ(defaultColor("UISegmentedControl", "selectedSegmentTintColor"),
        UIColor(RGBA{0, 0, 0, 1}, Apperance::yellowColor().resolved({})));
    EXPECT_EQ(defaultColor("UISwitch", "tintColor"), std::nullopt);
    EXPECT_EQ(std::get<UIFont>(appearanceDefaults()[14].value), (UIFont{"AvenirNext-Regular", 17}));
    EXPECT_EQ(std::get<CGPoint>(appearanceDefaults()[15].value), (CGPoint{-500, 0}));

    setSystemVersion("12.4");
    updateAppApperance();
    EXPECT_EQ(defaultColor("UISegmentedControl", "selectedSegmentTintColor"), std::nullopt);
    EXPECT_EQ(defaultColor("UINavigationBar", "barTintColor"), UIColor::whiteColor());
}

TEST_F(ApperanceViewsTest, ViewsMadeAfterwardsHaveTheDefaults) {
    updateAppApperance();
    for (const auto style : {UIUserInterfaceStyle::Dark, UIUserInterfaceStyle::Light}) {
        setStyle(style);
        const auto shown = [](std::string_view view, std::string_view property) {
            return qColor(defaultColor(view, property).value()).name();
        };
        const QLabel label;
        EXPECT_EQ(label.palette().color(QPalette::WindowText).name(), shown("UILabel", "textColor"));
        const QTableView table;
        EXPECT_EQ(table.palette().color(QPalette::Base).name(), shown("UITableView", "backgroundColor"));
        UICollectionView list;
        EXPECT_EQ(qColor(static_cast<UIView*>(list.viewport())->backgroundColor()).name(),
            shown("UICollectionView", "backgroundColor"));

        NavigationBar bar;
        EXPECT_EQ(qColor(bar.backgroundColor()).name(), shown("UINavigationBar", "backgroundColor"));
        const QLabel& title = *bar.findChild<QLabel*>();
        EXPECT_EQ(title.palette().color(QPalette::WindowText).name(),
            shown("UINavigationBar", "titleTextAttributes.foregroundColor"));
        EXPECT_EQ(title.font(), qFont(std::get<UIFont>(appearanceDefaults()[14].value)));
    }
}

TEST_F(ApperanceViewsTest, ATextFieldsTagChoosesItsFace) {
    struct Case {
        int tag;
        std::optional<QFont::Weight> weight;
    };
    constexpr Case cases[] = {
        {kRegularTextFieldTag, QFont::Normal}, {kMediumTextFieldTag, QFont::Medium}, {7, std::nullopt}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.tag);
        QLineEdit field;
        QFont font(QStringLiteral("Noto Sans"));
        font.setPixelSize(19);
        field.setFont(font);
        field.setProperty("tag", c.tag);
        field.setPlaceholderText(QStringLiteral("Search"));
        awakeTextFieldFromNib(field);
        EXPECT_EQ(QFontInfo(field.font()).pixelSize(), 19);
        EXPECT_EQ(field.font().family() == font.family(), !c.weight.has_value());
        if (c.weight) {
            EXPECT_EQ(field.font().weight(), *c.weight);
        }
        EXPECT_EQ(field.palette().color(QPalette::PlaceholderText).name(), QStringLiteral("#908c8c"));
    }
}

} // namespace
} // namespace exifcard

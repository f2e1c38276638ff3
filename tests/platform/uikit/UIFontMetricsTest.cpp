#include "platform/uikit/UIFontMetrics.h"

#include "platform/uikit/UITraitCollection.h"
#include "platform/uivalues/UIScreen.h"

#include <gtest/gtest.h>

#include <QFont>
#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>

#include <cmath>

namespace exifcard {
namespace {

/// Makes a category current, and the default one again at its end.
class Category {
public:
    explicit Category(std::string_view name) {
        UITraitCollection traits;
        traits.preferredContentSizeCategory = contentSizeCategoryNamed(name);
        UITraitCollection::setCurrentTraitCollection(traits);
    }
    ~Category() { UITraitCollection::setCurrentTraitCollection({}); }
    Category(const Category&) = delete;
    Category& operator=(const Category&) = delete;
};

TEST(UIFontMetricsTest, ScalesByTheRatioOfLeadingsAndRoundsToPixels) {
    struct Case {
        UIFontTextStyle style;
        std::string_view category;
        double value;
        double scaled;
    };
    // The screen has three pixels a point.
    constexpr Case cases[] = {
        {UIFontTextStyle::Body, "M", 17, 49.0 / 3},
        {UIFontTextStyle::Callout, "XXXL", 13, 52.0 / 3},
        {UIFontTextStyle::Body, "XS", 17, 44.0 / 3},
        {UIFontTextStyle::Body, "AccessibilityXXXL", 17, 144.0 / 3},
        {UIFontTextStyle::Callout, "AccessibilityXXXL", 13, 111.0 / 3},
        {UIFontTextStyle::Body, "L", 13.21, 13.21},
        {UIFontTextStyle::Body, "no category", 13.21, 13.21},
        {UIFontTextStyle::Callout, "XL", 0, 0},
    };
    ASSERT_EQ(UIScreen::mainScreen().scale, 3);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.category);
        const Category current(c.category);
        EXPECT_NEAR(UIFontMetrics(c.style).scaledValueForValue(c.value), c.scaled, 1e-9);
    }
}

TEST(UIFontMetricsTest, AFontNeverExceedsTheMaximumAndKeepsItsName) {
    const Category current("AccessibilityXXXL");
    const UIFont font{"AvenirNext-Medium", 13};
    const UIFontMetrics metrics(UIFontTextStyle::Callout);
    EXPECT_EQ(metrics.scaledFontForFont(font, 17), (UIFont{"AvenirNext-Medium", 17}));
    EXPECT_EQ(metrics.scaledFontForFont(font, 10).pointSize, 10);
    EXPECT_GT(metrics.scaledFontForFont(font).pointSize, 17);
}

TEST(UIFontMetricsTest, ALargerCategoryNeverGivesASmallerFont) {
    for (const auto style : {UIFontTextStyle::Body, UIFontTextStyle::Callout}) {
        double previous = 0;
        for (const auto* name : {"XS", "S", "M", "L", "XL", "XXL", "XXXL", "AccessibilityM"}) {
            SCOPED_TRACE(name);
            const Category current(name);
            const double scaled = UIFontMetrics(style).scaledValueForValue(17);
            EXPECT_GT(scaled, previous);
            previous = scaled;
        }
    }
}

TEST(UIFontTest, KnowsItsFourNamesAndNoOther) {
    for (const auto* name :
        {"AvenirNext-Regular", "AvenirNext-Medium", "AvenirNext-DemiBold", "AvenirNext-Bold"}) {
        EXPECT_EQ(UIFont::fontWithName(name, 12), (UIFont{name, 12}));
    }
    EXPECT_EQ(UIFont::fontWithName("AvenirNext-Heavy", 12), std::nullopt);
    EXPECT_EQ(UIFont::fontWithName("", 12), std::nullopt);
}

TEST(UIFontTest, IsDrawnInTheBundledFaceAndInFourWeights) {
    double previousWidth = 0;
    for (const auto* name :
        {"AvenirNext-Regular", "AvenirNext-Medium", "AvenirNext-DemiBold", "AvenirNext-Bold"}) {
        SCOPED_TRACE(name);
        const QFont font = qFont({name, 40});
        EXPECT_EQ(QFontInfo(font).family(), QStringLiteral("Manrope"));
        EXPECT_EQ(font.pixelSize(), 40);
        const double width = QFontMetricsF(font).horizontalAdvance(QStringLiteral("Handgloves"));
        EXPECT_GT(width, previousWidth);
        previousWidth = width;
    }
}

} // namespace
} // namespace exifcard

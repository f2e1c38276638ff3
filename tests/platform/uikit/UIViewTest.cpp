#include "platform/uikit/UIView.h"

#include "platform/uikit/NSLayoutConstraint.h"
#include "platform/uikit/UIActivityIndicatorView.h"
#include "platform/uikit/UITraitCollection.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPixmap>

namespace exifcard {
namespace {

QImage picture(QWidget& view) {
    return view.grab().toImage();
}

/// A white view with a box of 40 by 20 at (30, 30) that casts a black shadow of radius 2.
struct ShadowScene {
    UIView superview;
    UIView* const box = new UIView(&superview);

    ShadowScene() {
        superview.resize(100, 80);
        superview.setBackgroundColor(UIColor::whiteColor());
        box->setFrame({{30, 30}, {40, 20}});
        box->setBackgroundColor(UIColor::whiteColor());
        box->layer().shadowColor = UIColor::blackColor();
        box->layer().shadowOpacity = 0.5;
        box->layer().shadowRadius = 2;
    }
};

TEST(UIViewTest, RoundsTheEdgesOfItsFrameAndNotItsSize) {
    EXPECT_EQ(roundedRect({{0.4, 10.5}, {89.75, 20}}), QRect(0, 11, 90, 20));
    // Three equal views beside each other leave no gap and do not overlap.
    const double width = 100.0 / 3;
    int right = 0;
    for (int column = 0; column < 3; ++column) {
        const QRect place = roundedRect({{column * width, 0}, {width, 1}});
        EXPECT_EQ(place.x(), right);
        right = place.x() + place.width();
    }
    EXPECT_EQ(right, 100);
}

TEST(UIViewTest, KeepsItsFrameInFractionsUntilALayoutMovesIt) {
    UIView superview;
    UIView view(&superview);
    view.setFrame({{10.25, 0}, {89.75, 181.875}});
    EXPECT_EQ(view.bounds(), (CGRect{{0, 0}, {89.75, 181.875}}));
    EXPECT_EQ(view.layer().bounds, view.bounds());
    view.setGeometry(1, 2, 3, 4);
    EXPECT_EQ(view.frame(), (CGRect{{1, 2}, {3, 4}}));
    EXPECT_EQ(view.layer().bounds, (CGRect{{0, 0}, {3, 4}}));
}

TEST(UIViewTest, PaintsBackgroundBorderAndRoundCorners) {
    UIView view;
    view.resize(40, 40);
    view.setBackgroundColor(UIColor(RGBA{1, 0, 0, 1}));
    view.layer().borderColor = UIColor(RGBA{0, 0, 1, 1});
    view.layer().borderWidth = 2;
    view.layer().cornerRadius = 10;
    view.setAttribute(Qt::WA_TranslucentBackground);
    QImage image(40, 40, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::green);
    view.render(&image);
    EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::green));
    EXPECT_EQ(image.pixelColor(20, 1), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(20, 2), QColor(Qt::red));
}

TEST(UIViewTest, PaintsTheShadowOfAChildAroundItAndFadingOutward) {
    ShadowScene scene;
    const QImage image = picture(scene.superview);
    int previous = 0;
    for (int y = 29; y > 20; --y) {
        SCOPED_TRACE(y);
        const int lightness = image.pixelColor(50, y).lightness();
        EXPECT_GE(lightness, previous);
        previous = lightness;
    }
    EXPECT_LT(image.pixelColor(50, 29).lightness(), 215);
    EXPECT_EQ(image.pixelColor(50, 20), QColor(Qt::white));
    // Alike on all four sides, whether they are stretched or not.
    const int above = image.pixelColor(50, 28).lightness();
    EXPECT_NEAR(image.pixelColor(50, 51).lightness(), above, 1);
    EXPECT_NEAR(image.pixelColor(28, 40).lightness(), above, 1);
    EXPECT_NEAR(image.pixelColor(71, 40).lightness(), above, 1);
    EXPECT_EQ(image.pixelColor(50, 40), QColor(Qt::white)); // Beneath the box.
}

TEST(UIViewTest, PaintsNoShadowOfAHiddenChild) {
    ShadowScene scene;
    scene.box->hide();
    EXPECT_EQ(picture(scene.superview).pixelColor(50, 29), QColor(Qt::white));
}

TEST(UIViewTest, ResolvesItsColoursWheneverItIsPainted) {
    UIView view;
    view.resize(4, 4);
    view.setBackgroundColor(UIColor(RGBA{1, 1, 1, 1}, RGBA{0, 0, 0, 1}));
    EXPECT_EQ(picture(view).pixelColor(1, 1), QColor(Qt::white));
    UITraitCollection traits;
    traits.userInterfaceStyle = UIUserInterfaceStyle::Dark;
    UITraitCollection::setCurrentTraitCollection(traits);
    EXPECT_EQ(picture(view).pixelColor(1, 1), QColor(Qt::black));
    UITraitCollection::setCurrentTraitCollection({});
}

TEST(NSLayoutConstraintTest, FixesALengthWhileItIsActive) {
    QWidget view;
    NSLayoutConstraint constraint(view, NSLayoutConstraint::Attribute::Height);
    constraint.setConstant(44);
    EXPECT_EQ(view.minimumHeight(), 44);
    EXPECT_EQ(view.maximumHeight(), 44);
    EXPECT_EQ(view.maximumWidth(), QWIDGETSIZE_MAX);
    constraint.setActive(false);
    EXPECT_EQ(view.minimumHeight(), 0);
    EXPECT_EQ(view.maximumHeight(), QWIDGETSIZE_MAX);
}

TEST(NSLayoutConstraintTest, LetsAPinnedViewFollowItsSuperview) {
    QWidget superview;
    QWidget view(&superview);
    superview.resize(10, 20);
    pinToEdges(view, superview);
    EXPECT_EQ(view.geometry(), QRect(0, 0, 10, 20));
    superview.show();
    superview.resize(30, 40);
    EXPECT_EQ(view.geometry(), QRect(0, 0, 30, 40));
}

TEST(UIActivityIndicatorViewTest, IsHiddenWhenItStandsStill) {
    UIView superview;
    UIActivityIndicatorView spinner(&superview);
    superview.show();
    EXPECT_FALSE(spinner.isVisible());
    spinner.startAnimating();
    EXPECT_TRUE(spinner.isVisible());
    EXPECT_TRUE(spinner.isAnimating());
    spinner.stopAnimating();
    EXPECT_FALSE(spinner.isVisible());
}

} // namespace
} // namespace exifcard

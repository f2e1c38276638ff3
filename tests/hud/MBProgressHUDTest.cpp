#include "hud/MBProgressHUD.h"

#include "hud/MBBarProgressView.h"
#include "hud/MBRoundProgressView.h"
#include "platform/uikit/UIActivityIndicatorView.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>
#include <QTest>

namespace exifcard {
namespace {

class MBProgressHUDTest : public ::testing::Test {
protected:
    MBProgressHUDTest() {
        view.resize(320, 240);
        view.show();
    }

    std::size_t overlayCount() const { return view.findChildren<MBProgressHUD*>().size(); }

    QWidget view;
};

TEST_F(MBProgressHUDTest, HidesTheOneOnTopOrAllOfThem) {
    EXPECT_FALSE(MBProgressHUD::hideHUDForView(view, /*animated=*/false));
    MBProgressHUD::showHUDAddedTo(view, /*animated=*/false);
    const QPointer<MBProgressHUD> top = MBProgressHUD::showHUDAddedTo(view, /*animated=*/true);
    MBProgressHUD::showHUDAddedTo(*top, /*animated=*/false); // Of another view.
    EXPECT_TRUE(MBProgressHUD::hideHUDForView(view, /*animated=*/true));
    EXPECT_TRUE(top->isLeaving());
    EXPECT_EQ(MBProgressHUD::hideAllHUDsForView(view, /*animated=*/true), 1U) << "without the leaving one";
    EXPECT_EQ(MBProgressHUD::hideAllHUDsForView(view, /*animated=*/false), 0U);
    ASSERT_TRUE(QTest::qWaitFor([this] { return overlayCount() == 0; }));
}

TEST_F(MBProgressHUDTest, StaysWithoutEffectOnceItHasFadedIn) {
    const auto* const overlay = MBProgressHUD::showHUDAddedTo(view, /*animated=*/true);
    const auto* const box = overlay->findChild<UIView*>(QString(), Qt::FindDirectChildrenOnly);
    EXPECT_NE(box->graphicsEffect(), nullptr);
    ASSERT_TRUE(QTest::qWaitFor([box] { return box->graphicsEffect() == nullptr; }));
    EXPECT_TRUE(overlay->isVisible());
}

TEST_F(MBProgressHUDTest, CoversItsViewAndKeepsTouchesFromIt) {
    QPushButton button(&view);
    button.setGeometry(view.rect());
    button.show();
    int clicks = 0;
    QObject::connect(&button, &QPushButton::clicked, &button, [&clicks] { ++clicks; });
    const auto* const overlay = MBProgressHUD::showHUDAddedTo(view, /*animated=*/false);
    view.resize(500, 300);
    EXPECT_EQ(overlay->geometry(), view.rect());
    for (const QPoint& place : {QPoint(5, 5), QPoint(250, 150)}) {
        QWidget* const hit = view.childAt(place);
        ASSERT_TRUE(hit == overlay || overlay->isAncestorOf(hit));
        QTest::mouseClick(hit, Qt::LeftButton);
    }
    EXPECT_EQ(clicks, 0);
}

TEST_F(MBProgressHUDTest, ShowsTheIndicatorOfItsModeAndItsTexts) {
    auto* const overlay = MBProgressHUD::showHUDAddedTo(view, /*animated=*/false);
    overlay->setProgress(0.25F);
    const auto* const bar = overlay->findChild<MBBarProgressView*>();
    const auto* const disc = overlay->findChild<MBRoundProgressView*>();
    const auto* const spinner = overlay->findChild<UIActivityIndicatorView*>();
    struct Case {
        MBProgressHUDMode mode;
        const QWidget* shown;
        QSize size;
    };
    const Case cases[] = {
        {MBProgressHUDMode::Indeterminate, spinner, {38, 38}},
        {MBProgressHUDMode::Determinate, disc, {44, 44}},
        {MBProgressHUDMode::AnnularDeterminate, disc, {44, 44}},
        {MBProgressHUDMode::DeterminateHorizontalBar, bar, {150, 12}},
        {MBProgressHUDMode::Text, nullptr, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(static_cast<int>(c.mode));
        overlay->setMode(c.mode);
        for (const QWidget* const indicator : {static_cast<const QWidget*>(bar),
                 static_cast<const QWidget*>(disc), static_cast<const QWidget*>(spinner)}) {
            EXPECT_EQ(indicator->isVisible(), indicator == c.shown);
        }
        if (c.shown) {
            EXPECT_EQ(c.shown->size(), c.size);
        }
        EXPECT_EQ(disc->isAnnular(), c.mode == MBProgressHUDMode::AnnularDeterminate);
    }
    EXPECT_EQ(bar->progress(), 0.25F);
    EXPECT_EQ(disc->progress(), 0.25F);

    overlay->setMode(MBProgressHUDMode::DeterminateHorizontalBar);
    EXPECT_EQ(overlay->accessibleName(), QStringLiteral("Loading")) << "as the indicator tells by itself";
    overlay->setLabelText("Downloading photos from iCloud :- 38.00%");
    overlay->setDetailsLabelText("Five of twelve photos are here by now, and the others will follow soon");
    for (const auto* const label : overlay->findChildren<QLabel*>()) {
        EXPECT_TRUE(label->isVisible());
        EXPECT_TRUE(view.rect().contains(QRect(label->mapTo(&view, QPoint()), label->size())));
        EXPECT_GE(label->height(), label->heightForWidth(label->width()));
    }
    EXPECT_EQ(overlay->accessibleName(), QStringLiteral("Downloading photos from iCloud :- 38.00%"));
}

TEST_F(MBProgressHUDTest, StandsStillWhileItsNumberGrows) {
    auto* const overlay = MBProgressHUD::showHUDAddedTo(view, /*animated=*/false);
    const auto* const box = overlay->findChild<UIView*>(QString(), Qt::FindDirectChildrenOnly);
    overlay->setLabelText("At 11.11%");
    const QRect place = box->geometry();
    for (const auto* const label : overlay->findChildren<QLabel*>()) {
        EXPECT_TRUE(label->text().isEmpty() || (label->alignment() & Qt::AlignLeft));
    }
    overlay->setLabelText("At 68.09%");
    EXPECT_EQ(box->geometry(), place);
}

TEST_F(MBProgressHUDTest, FillsAsFarAsTheProgressGoes) {
    MBBarProgressView bar;
    bar.resize(150, 12);
    bar.setProgress(0.5F);
    const auto isWhite = [&bar](int x) {
        QImage image(bar.size(), QImage::Format_ARGB32);
        image.fill(Qt::black);
        bar.render(&image, {}, {}, QWidget::DrawChildren);
        return qGray(image.pixel(x, 6)) > 200;
    };
    EXPECT_TRUE(isWhite(40));
    EXPECT_FALSE(isWhite(110));
    bar.setLayoutDirection(Qt::RightToLeft);
    EXPECT_FALSE(isWhite(40));
    EXPECT_TRUE(isWhite(110));
    bar.setProgress(7);
    EXPECT_TRUE(isWhite(40));
}

} // namespace
} // namespace exifcard

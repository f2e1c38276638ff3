#include "hud/FadeEffect.h"

#include <gtest/gtest.h>

#include <QPaintEvent>
#include <QPainter>
#include <QTest>

namespace exifcard {
namespace {

/// Black, and counts how often it is pictured.
class CountingView : public QWidget {
public:
    using QWidget::QWidget;
    int count = 0;

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        ++count;
        QPainter(this).fillRect(rect(), Qt::black);
    }
};

class FadeEffectTest : public testing::Test {
protected:
    FadeEffectTest() {
        below.resize(100, 100);
        below.setPalette(QPalette(Qt::white));
        faded.setGeometry(20, 20, 60, 60);
        faded.setGraphicsEffect(effect);
        below.show();
    }

    int middleAt(double opacity) {
        effect->setOpacity(opacity);
        return below.grab()
            .toImage()
            .convertToFormat(QImage::Format_Grayscale8)
            .pixelColor(50, 50)
            .lightness();
    }

    QWidget below;
    CountingView faded{&below};
    FadeEffect* effect = new FadeEffect(&faded);
};

TEST_F(FadeEffectTest, ShowsTheViewThroughAsFarAsItIsTold) {
    EXPECT_EQ(middleAt(0), 255);
    EXPECT_NEAR(middleAt(0.25), 191, 2);
    EXPECT_NEAR(middleAt(0.75), 64, 2);
    EXPECT_EQ(middleAt(1), 0);
}

TEST_F(FadeEffectTest, PicturesTheViewOnceAStepHoweverOftenWhatIsBelowIsDrawn) {
    effect->setOpacity(0.5);
    ASSERT_TRUE(QTest::qWaitFor([this] { return faded.count > 0; }));
    const int count = faded.count;
    for (int times = 0; times < 5; ++times) {
        below.repaint();
    }
    EXPECT_EQ(faded.count, count);
    effect->setOpacity(0.6);
    below.repaint();
    EXPECT_EQ(faded.count, count + 1);
}

} // namespace
} // namespace exifcard

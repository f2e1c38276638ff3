#include "platform/uikit/UISwitch.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

namespace exifcard {
namespace {

struct Switch {
    UISwitch control;

    Switch() {
        control.resize(control.sizeHint());
        control.setOn(false, /*animated=*/false);
    }
    /// How far to the right the white knob is, of the row through the middle.
    int knobPlace() {
        const QImage image = control.grab().toImage();
        int sum = 0;
        int count = 0;
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, image.height() / 2) == QColor(Qt::white) && x > 2 &&
                x < image.width() - 3) {
                sum += x;
                ++count;
            }
        }
        return sum / std::max(count, 1);
    }
};

TEST(UISwitchTest, TellsItsValueUnlessTheProgramSetIt) {
    Switch scene;
    QSignalSpy told(&scene.control, &UISwitch::valueChanged);
    scene.control.setOn(true, /*animated=*/false);
    EXPECT_EQ(told.count(), 0);
    scene.control.click();
    scene.control.toggle(); // As a screen reader does.
    ASSERT_EQ(told.count(), 2);
    EXPECT_FALSE(told[0][0].toBool());
    EXPECT_TRUE(told[1][0].toBool());
}

TEST(UISwitchTest, IsACheckBoxToReadersAndKeys) {
    Switch scene;
    QAccessibleInterface* const seen = QAccessible::queryAccessibleInterface(&scene.control);
    EXPECT_EQ(seen->role(), QAccessible::CheckBox);
    EXPECT_FALSE(seen->state().checked);
    QTest::keyClick(&scene.control, Qt::Key_Space);
    EXPECT_TRUE(scene.control.isOn());
    EXPECT_TRUE(seen->state().checked);
}

TEST(UISwitchTest, TakesClicksOnItsWholeTarget) {
    Switch scene;
    const QSignalSpy toggled(&scene.control, &QCheckBox::toggled);
    const QSize size = scene.control.size();
    EXPECT_GE(size.height(), 44);
    for (const QPoint place : {QPoint(1, 1), QPoint(size.width() - 2, size.height() - 2)}) {
        QTest::mouseClick(&scene.control, Qt::LeftButton, Qt::NoModifier, place);
    }
    EXPECT_EQ(toggled.count(), 2);
}

TEST(UISwitchTest, TurnsAmberAndItsKnobGoesToTheFarEnd) {
    Switch scene;
    const int off = scene.knobPlace();
    scene.control.setOn(true, /*animated=*/false);
    EXPECT_GT(scene.knobPlace(), off);
    EXPECT_EQ(scene.control.grab().toImage().pixelColor(8, 22), QColor(0xDC, 0xC6, 0x53));
    scene.control.setLayoutDirection(Qt::RightToLeft);
    EXPECT_NEAR(scene.knobPlace(), off, 1);
}

} // namespace
} // namespace exifcard
